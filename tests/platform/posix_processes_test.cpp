#include "platform/posix_processes.h"

#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace desk {
namespace {

namespace fs = std::filesystem;

/// A simulated /proc.
class process_table_test : public testing::Test {
protected:
    /// A process with this place at a terminal; `terminal` is as the system writes it.
    void add(int id, const std::string& name, int session, const std::string& terminal) const {
        const std::string number = std::to_string(id);
        fs::create_directory(folder / number);
        folder.put(number + "/comm", name + "\n");
        folder.put(number + "/stat", number + " (" + name + ") S 1 " + number + " " + std::to_string(session) + " " +
                                         terminal + " 77 4194304 0 0\n");
    }
    std::string at(dev_t terminal) const {
        const auto found = table.at_terminal(terminal);
        return found ? std::to_string(found->id) + " " + found->name : "";
    }

    test::temporary_directory folder;
    process_table table{folder.path()};
    const std::string user = user_name(::geteuid());
};

TEST_F(process_table_test, finds_the_user_of_a_terminal) {
    add(10, "init", 10, "0");
    add(20, "bash", 20, "34819"); // 136 * 256 + 3
    EXPECT_EQ(at(makedev(136, 3)), "20 bash");
    EXPECT_EQ(table.at_terminal(makedev(136, 3))->text(), "bash (process 20, user " + user + ")");
    EXPECT_EQ(at(makedev(136, 4)), "");
    EXPECT_EQ(at(makedev(4, 67)), "");
    EXPECT_EQ(at(0), "") << "a process without a terminal works at none";
}

TEST_F(process_table_test, knows_terminals_with_large_numbers) {
    add(20, "bash", 20, "1083436"); // minor 300: 0x12c, its upper part above the major number
    EXPECT_EQ(at(makedev(136, 300)), "20 bash");
    EXPECT_EQ(at(makedev(136, 44)), "");
}

TEST_F(process_table_test, names_the_shell_rather_than_its_children) {
    add(5, "make", 20, "34819");
    add(20, "bash", 20, "34819");
    EXPECT_EQ(at(makedev(136, 3)), "20 bash");
    fs::remove_all(folder / "20");
    EXPECT_EQ(at(makedev(136, 3)), "5 make");
}

TEST_F(process_table_test, reads_any_name_of_a_program) {
    add(20, "a) S 1 2 3 (b", 20, "34819");
    EXPECT_EQ(at(makedev(136, 3)), "20 a) S 1 2 3 (b");
    add(20, "\x1B[31mred\x7F", 20, "34819");
    EXPECT_EQ(at(makedev(136, 3)), "20 ?[31mred?") << "it can be shown on a terminal";
}

TEST_F(process_table_test, skips_unreadable_entries) {
    fs::create_directory(folder / "7"); // a process that has just ended
    fs::create_directory(folder / "8");
    folder.put("8/stat", "8 (cut off");
    fs::create_directory(folder / "sys");
    add(20, "bash", 20, "34819");
    EXPECT_EQ(at(makedev(136, 3)), "20 bash");
    EXPECT_FALSE(process_table(folder / "none").at_terminal(makedev(136, 3)));
    EXPECT_FALSE(process_table(folder / "none").holder_of("/dev/null"));
}

TEST_F(process_table_test, skips_a_process_that_ends_while_it_is_read) {
    // a folder opens as a file and can't be read, as the file of a process that has ended
    fs::create_directories(folder / "15/stat");
    fs::create_directory(folder / "15/comm");
    fs::create_directory(folder / "locks");
    add(20, "bash", 20, "34819");
    EXPECT_EQ(at(makedev(136, 3)), "20 bash");
    EXPECT_FALSE(table.holder_of(folder / "15").has_value());
}

TEST_F(process_table_test, finds_the_process_that_has_locked_a_device) {
    struct stat device {};
    ASSERT_EQ(::stat("/dev/null", &device), 0);
    char file[64];
    std::snprintf(file, sizeof file, "%02x:%02x:%lu", major(device.st_dev), minor(device.st_dev), device.st_ino);
    add(20, "velotrace", 20, "0");
    add(21, "velotrace", 21, "0");
    folder.put("locks", std::string("1: FLOCK  ADVISORY  WRITE 21 00:00:1 0 EOF\n2: -> FLOCK  ADVISORY  WRITE 21 ") +
                            file + " 0 EOF\n3: FLOCK  ADVISORY  WRITE 20 " + file + " 0 EOF\n");
    EXPECT_EQ(table.holder_of("/dev/null")->text(), "velotrace (process 20, user " + user + ")");
}

TEST_F(process_table_test, finds_the_process_that_has_a_device_open) {
    add(20, "minicom", 20, "0");
    add(21, "cat", 21, "0");
    fs::create_directory(folder / "21/fd");
    fs::create_symlink("/dev/zero", folder / "21/fd/0");
    EXPECT_FALSE(table.holder_of("/dev/null"));
    fs::create_directory(folder / "20/fd");
    fs::create_symlink("/dev/null", folder / "20/fd/3");
    EXPECT_EQ(table.holder_of("/dev/null")->id, 20);
}

} // namespace
} // namespace desk
