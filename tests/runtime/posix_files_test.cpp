// What files are read and written, and who can open them: pipes, devices, links, owners, groups, modes, access lists.

#include "runtime/files.h"

#include "support/access_list.h"
#include "support/expect_failure.h"
#include "support/file_size_limit.h"
#include "support/other_user.h"
#include "support/protected_folder.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace desk {
namespace {

namespace fs = std::filesystem;

using test::access_entry;
using test::alice;
using test::bob;
using test::carol;
using test::failure_of;
using test::lab;
using test::sentence_of;

struct stat status_of(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t mode_of(const fs::path& path) { return status_of(path).st_mode & 07777; }

/// Sets the umask for its lifetime.
class file_mask {
public:
    explicit file_mask(mode_t mask) : before_(::umask(mask)) {}
    file_mask(const file_mask&) = delete;
    file_mask& operator=(const file_mask&) = delete;
    ~file_mask() { ::umask(before_); }

private:
    mode_t before_;
};

class files : public testing::Test {
protected:
    void make_pipe(const std::string& name) const { ASSERT_EQ(::mkfifo((directory / name).c_str(), 0666), 0); }
    void make_socket(const std::string& name) const {
        const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = (directory / name).string();
        ASSERT_LT(path.size(), sizeof address.sun_path);
        path.copy(address.sun_path, path.size());
        ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(socket);
    }
    /// Names that lead to no regular file.
    std::vector<std::string> odd_names() const {
        make_pipe("pipe");
        make_socket("socket");
        fs::create_directory(directory / "folder");
        fs::create_symlink("pipe", directory / "link to a pipe");
        fs::create_symlink("/dev/null", directory / "link to a device");
        fs::create_symlink("/dev/zero", directory / "link to an endless device");
        fs::create_symlink("loop", directory / "loop");
        return {"pipe", "socket", "folder", "link to a pipe", "link to a device", "link to an endless device", "loop"};
    }

    test::temporary_directory directory;
};

TEST_F(files, are_regular_if_they_are_read) {
    for (const std::string& name : odd_names())
        EXPECT_EQ(failure_of([&] { read_whole_file(directory / name); }), failure::path_file_access_error) << name;
    EXPECT_EQ(sentence_of([&] { read_whole_file(directory / "pipe"); }),
              "the file " + (directory / "pipe").string() + " can't be read: it is not a regular file.");
    EXPECT_EQ(sentence_of([&] { read_whole_file(directory / "folder"); }),
              "the file " + (directory / "folder").string() + " can't be read: Is a directory.");
}

TEST_F(files, that_are_missing_are_not_found) {
    fs::create_symlink("nowhere", directory / "link to nowhere");
    directory.put("file", "x");
    for (const char* name : {"missing", "link to nowhere", "missing/file", "file/file"})
        EXPECT_EQ(failure_of([&] { read_whole_file(directory / name); }), failure::file_not_found) << name;
}

TEST_F(files, are_read_through_links) {
    directory.put("real", "content");
    fs::create_symlink("real", directory / "first");
    fs::create_symlink("first", directory / "second");
    EXPECT_EQ(read_whole_file(directory / "second"), "content");
    EXPECT_EQ(read_start_of_file(directory / "second", 4), "cont");
}

TEST_F(files, are_regular_if_they_are_written) {
    for (const std::string& name : odd_names()) {
        const fs::file_type before = fs::symlink_status(directory / name).type();
        EXPECT_EQ(failure_of([&] { replace_whole_file(directory / name, "x"); }), failure::path_file_access_error)
            << name;
        EXPECT_EQ(failure_of([&] { write_over_file(directory / name, "x"); }), failure::path_file_access_error) << name;
        EXPECT_EQ(fs::symlink_status(directory / name).type(), before) << name;
    }
    EXPECT_EQ(sentence_of([&] { replace_whole_file(directory / "pipe", "x"); }),
              "the file " + (directory / "pipe").string() + " can't be written: it is not a regular file.");
    EXPECT_EQ(directory.file_count(), 7U);
}

TEST_F(files, send_nothing_into_an_open_pipe) {
    make_pipe("pipe");
    const int reader = ::open((directory / "pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "pipe", "x"); }), failure::path_file_access_error);
    char byte = 0;
    EXPECT_EQ(::read(reader, &byte, 1), 0);
    ::close(reader);
}

TEST_F(files, report_the_systems_reason) {
    if (::geteuid() == 0) GTEST_SKIP() << "root can open every file";
    directory.put("closed", "x");
    ASSERT_EQ(::chmod((directory / "closed").c_str(), 0), 0);
    const std::string file = "the file " + (directory / "closed").string();
    EXPECT_EQ(sentence_of([&] { read_whole_file(directory / "closed"); }), file + " can't be read: Permission denied.");
    EXPECT_EQ(sentence_of([&] { replace_whole_file(directory / "closed", "y"); }),
              file + " can't be written: Permission denied.");
}

TEST_F(files, that_are_replaced_keep_their_mode_whatever_the_mask) {
    for (const mode_t mode : {mode_t{0600}, mode_t{0660}, mode_t{0664}, mode_t{0777}, mode_t{0604}}) {
        for (const mode_t mask : {mode_t{0}, mode_t{077}}) {
            const file_mask limited(mask);
            directory.put("file", "old");
            ASSERT_EQ(::chmod((directory / "file").c_str(), mode), 0);
            const ino_t old = status_of(directory / "file").st_ino;
            replace_whole_file(directory / "file", "new");
            EXPECT_NE(status_of(directory / "file").st_ino, old) << "it was written over in place";
            EXPECT_EQ(mode_of(directory / "file"), mode);
            write_over_file(directory / "file", "N");
            EXPECT_EQ(mode_of(directory / "file"), mode);
            EXPECT_EQ(directory.content("file"), "New");
            fs::remove(directory / "file");
        }
    }
}

TEST_F(files, that_are_new_have_the_mode_of_the_mask) {
    const file_mask limited(027);
    replace_whole_file(directory / "file", "new");
    EXPECT_EQ(mode_of(directory / "file"), mode_t{0640});
}

TEST_F(files, with_two_names_stay_one_file) {
    directory.put("one", "a long old text");
    fs::create_hard_link(directory / "one", directory / "two");
    replace_whole_file(directory / "one", "new");
    EXPECT_EQ(directory.content("two"), "new");
    write_over_file(directory / "two", "N and longer");
    EXPECT_EQ(directory.content("one"), "N and longer");
    EXPECT_EQ(directory.file_count(), 2U);
}

TEST_F(files, with_two_names_keep_the_old_content_on_a_full_disk) {
    for (const std::string& old : {std::string(200, 'o'), std::string(1000, 'o'), std::string()}) {
        directory.put("one", old);
        fs::create_hard_link(directory / "one", directory / "two");
        {
            const test::file_size_limit full(300);
            EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "one", std::string(500, 'x')); }),
                      failure::path_file_access_error);
        }
        EXPECT_EQ(directory.content("two"), old);
        fs::remove(directory / "two");
    }
}

TEST_F(files, are_created_at_the_target_of_a_link) {
    fs::create_directory(directory / "folder");
    fs::create_symlink("folder/real", directory / "link");
    replace_whole_file(directory / "link", "new");
    EXPECT_TRUE(fs::is_symlink(directory / "link"));
    EXPECT_EQ(directory.content("folder/real"), "new");
    fs::create_symlink("missing/real", directory / "bad link");
    EXPECT_EQ(failure_of([&] { replace_whole_file(directory / "bad link", "x"); }), failure::path_file_access_error);
    EXPECT_TRUE(fs::is_symlink(directory / "bad link"));
}

#ifdef __linux__
TEST_F(files, are_read_when_a_file_server_gives_up_its_lease) {
    directory.put("file", "content");
    const auto before = std::signal(SIGIO, SIG_IGN);
    const int server = ::open((directory / "file").c_str(), O_RDWR | O_CLOEXEC);
    if (::fcntl(server, F_SETLEASE, F_WRLCK) != 0) GTEST_SKIP() << "this file system has no leases";
    auto content = std::async(std::launch::async, [&] { return read_whole_file(directory / "file"); });
    while (::fcntl(server, F_GETLEASE) == F_WRLCK)
        std::this_thread::yield();
    EXPECT_EQ(::fcntl(server, F_SETLEASE, F_UNLCK), 0);
    EXPECT_EQ(content.get(), "content");
    ::close(server);
    std::signal(SIGIO, before);
}

class files_with_access_lists : public files {
protected:
    void SetUp() override {
        if (!give_list("probe")) GTEST_SKIP() << "this file system has no access lists";
        fs::remove(directory / "probe");
    }
    bool give_list(const std::string& name, std::uint16_t named = 6) const {
        directory.put(name, "old");
        return test::set_access_list(directory / name, test::access_list_name,
                                     {{access_entry::owner, 6},
                                      {access_entry::user, named, bob.number},
                                      {access_entry::group, 4},
                                      {access_entry::mask, 6},
                                      {access_entry::others, 0}});
    }
    /// New files of the folder are open to everybody.
    bool open_folder() const {
        return test::set_access_list(directory.path(), test::default_list_name,
                                     {{access_entry::owner, 7},
                                      {access_entry::user, 7, bob.number},
                                      {access_entry::group, 7},
                                      {access_entry::mask, 7},
                                      {access_entry::others, 7}});
    }
};

TEST_F(files_with_access_lists, keep_them) {
    ASSERT_TRUE(give_list("file"));
    const std::string list = test::access_list_of(directory / "file");
    for (const bool open : {false, true}) {
        if (open) {
            ASSERT_TRUE(open_folder());
        }
        const ino_t old = status_of(directory / "file").st_ino;
        replace_whole_file(directory / "file", "new");
        EXPECT_NE(status_of(directory / "file").st_ino, old) << "it was written over in place";
        EXPECT_EQ(test::access_list_of(directory / "file"), list);
        EXPECT_EQ(mode_of(directory / "file"), mode_t{0660});
        EXPECT_EQ(directory.content("file"), "new");
    }
}

TEST_F(files_with_access_lists, do_not_inherit_one_when_replaced) {
    directory.put("file", "old");
    ASSERT_EQ(::chmod((directory / "file").c_str(), 0640), 0);
    ASSERT_TRUE(open_folder());
    replace_whole_file(directory / "file", "new");
    EXPECT_EQ(test::access_list_of(directory / "file"), "");
    EXPECT_EQ(mode_of(directory / "file"), mode_t{0640});
    replace_whole_file(directory / "other", "new");
    EXPECT_NE(test::access_list_of(directory / "other"), "");
}
#endif

/// A folder that the lab shares, as its users see it.
class shared_folder : public files {
protected:
    void SetUp() override {
        if (!test::can_be_others()) GTEST_SKIP() << "only root can be other users";
        own(directory.path(), 0, lab, 0770);
    }
    static void own(const fs::path& path, uid_t user, gid_t group, mode_t mode) {
        ASSERT_EQ(::chown(path.c_str(), user, group), 0);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    }
    void put(const std::string& name, uid_t user, gid_t group, mode_t mode) const {
        directory.put(name, "old content");
        own(directory / name, user, group, mode);
    }
    std::string replace_as(const test::user& who, const std::string& name, const std::string& content) const {
        return test::as_user(who, [&] {
            replace_whole_file(directory / name, content);
            return std::string("written");
        });
    }
    void expect_owner(const std::string& name, uid_t user, gid_t group, mode_t mode) const {
        const struct stat status = status_of(directory / name);
        EXPECT_EQ(status.st_uid, user) << name;
        EXPECT_EQ(status.st_gid, group) << name;
        EXPECT_EQ(status.st_mode & 07777, mode) << name;
    }
};

TEST_F(shared_folder, keeps_the_owner_of_a_file_that_another_user_replaces) {
    put("file", 0, lab, 0660);
    for (const test::user& who : {bob, alice, bob}) {
        EXPECT_EQ(replace_as(who, "file", "by " + std::to_string(who.number)), "written");
        expect_owner("file", 0, lab, 0660);
        EXPECT_EQ(directory.content("file"), "by " + std::to_string(who.number));
    }
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST_F(shared_folder, keeps_the_group_of_a_file_that_its_owner_replaces) {
    put("file", alice.number, lab, 0664);
    const ino_t old = status_of(directory / "file").st_ino;
    EXPECT_EQ(replace_as(alice, "file", "new"), "written");
    EXPECT_NE(status_of(directory / "file").st_ino, old) << "it was written over in place";
    expect_owner("file", alice.number, lab, 0664);
    EXPECT_EQ(directory.content("file"), "new");
}

TEST_F(shared_folder, writes_over_a_file_of_a_group_that_its_owner_has_left) {
    put("file", carol.number, lab, 0660);
    own(directory.path(), carol.number, lab, 0770);
    EXPECT_EQ(replace_as(carol, "file", "new"), "written");
    expect_owner("file", carol.number, lab, 0660);
    EXPECT_EQ(directory.content("file"), "new");
}

TEST_F(shared_folder, keeps_the_owner_of_a_users_file_that_root_replaces) {
    put("file", alice.number, alice.group, 0600);
    replace_whole_file(directory / "file", "by root");
    expect_owner("file", alice.number, alice.group, 0600);
    EXPECT_EQ(replace_as(alice, "file", "by alice"), "written");
    EXPECT_EQ(directory.content("file"), "by alice");
}

TEST_F(shared_folder, refuses_a_file_that_the_user_is_not_allowed_to_write) {
    put("file", alice.number, lab, 0640);
    EXPECT_EQ(replace_as(bob, "file", "new"),
              "the file " + (directory / "file").string() + " can't be written: Permission denied");
    EXPECT_EQ(directory.content("file"), "old content");
    expect_owner("file", alice.number, lab, 0640);
}

TEST_F(shared_folder, keeps_the_owner_in_a_sticky_folder) {
    own(directory.path(), 0, lab, 01770);
    put("file", alice.number, lab, 0660);
    EXPECT_EQ(replace_as(bob, "file", "new"), "written");
    expect_owner("file", alice.number, lab, 0660);
    EXPECT_EQ(directory.content("file"), "new");
    EXPECT_EQ(directory.file_count(), 1U);
}

} // namespace
} // namespace desk
