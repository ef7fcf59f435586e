#include "runtime/files.h"

#include "runtime/windows_api.h"
#include "runtime/windows_long_path.h"
#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include <aclapi.h>
#include <sddl.h>

namespace desk {
namespace {

namespace fs = std::filesystem;
using test::failure_of;
using test::sentence_of;

/// A file that another program has opened, and what that program lets others do.
class held_file {
public:
    held_file(const fs::path& path, DWORD sharing)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr)) {
        EXPECT_NE(file_, INVALID_HANDLE_VALUE);
    }
    ~held_file() { CloseHandle(file_); }
    held_file(const held_file&) = delete;
    held_file& operator=(const held_file&) = delete;

private:
    HANDLE file_;
};

class windows_files : public testing::Test {
protected:
    windows_files() { directory.put("old.hex", "a long old text"); }

    std::string sentence_of_replacing(const fs::path& file) {
        return sentence_of([&] { replace_whole_file(file, "new"); });
    }
    std::string not_written(const std::string& reason) const {
        return "the file " + utf8_from_path(directory / "old.hex") + " can't be written: " + reason + ".";
    }

    const test::temporary_directory directory;
};

TEST_F(windows_files, that_are_read_only_stay) {
    SetFileAttributesW((directory / "old.hex").c_str(), FILE_ATTRIBUTE_READONLY);
    if (std::ofstream(directory / "old.hex", std::ios::app)) GTEST_SKIP() << "root under Wine can write every file";
    EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), not_written("Permission denied"));
    EXPECT_EQ(failure_of([&] { write_over_file(directory / "old.hex", "new"); }), failure::path_file_access_error);
    SetFileAttributesW((directory / "old.hex").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(directory.content("old.hex"), "a long old text");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST_F(windows_files, that_another_program_protects_from_writing_stay) {
    {
        const held_file held(directory / "old.hex", FILE_SHARE_READ);
        EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), not_written("another program has it open"));
        EXPECT_EQ(failure_of([&] { write_over_file(directory / "old.hex", "new"); }), failure::path_file_access_error);
        EXPECT_EQ(directory.content("old.hex"), "a long old text");
        EXPECT_EQ(directory.file_count(), 1U);
    }
    EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), "");
    EXPECT_EQ(directory.content("old.hex"), "new");
}

TEST_F(windows_files, that_another_program_protects_from_reading_are_not_read) {
    const held_file held(directory / "old.hex", 0);
    EXPECT_EQ(sentence_of([&] { read_whole_file(directory / "old.hex"); }),
              "the file " + utf8_from_path(directory / "old.hex") + " can't be read: another program has it open.");
}

TEST_F(windows_files, that_another_program_keeps_from_being_replaced_are_written_in_place) {
    const held_file held(directory / "old.hex", FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), "");
    EXPECT_EQ(directory.content("old.hex"), "new");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST_F(windows_files, with_two_names_stay_one_file) {
    ASSERT_TRUE(CreateHardLinkW((directory / "second.hex").c_str(), (directory / "old.hex").c_str(), nullptr));
    EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), "");
    EXPECT_EQ(directory.content("second.hex"), "new");
}

/// The entries of a file's access list.
std::string access_list(const fs::path& file) {
    ACL* entries = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(file.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &entries,
                                    nullptr, &descriptor),
              static_cast<DWORD>(ERROR_SUCCESS));
    std::string bytes;
    if (entries != nullptr) bytes.assign(reinterpret_cast<const char*>(entries), entries->AclSize);
    LocalFree(descriptor);
    return bytes;
}

TEST_F(windows_files, keep_their_access_list) {
    const std::string usual = access_list(directory / "old.hex");
    PSECURITY_DESCRIPTOR everyone = nullptr;
    ASSERT_TRUE(
        ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)", SDDL_REVISION_1, &everyone, nullptr));
    ASSERT_TRUE(SetFileSecurityW((directory / "old.hex").c_str(), DACL_SECURITY_INFORMATION, everyone));
    LocalFree(everyone);
    const std::string own = access_list(directory / "old.hex");
    ASSERT_NE(own, usual);
    EXPECT_EQ(sentence_of_replacing(directory / "old.hex"), "");
    EXPECT_EQ(access_list(directory / "old.hex"), own);
    replace_whole_file(directory / "new.hex", "new");
    EXPECT_EQ(access_list(directory / "new.hex"), usual);
    EXPECT_EQ(sentence_of_replacing(directory / "new.hex"), "");
    EXPECT_EQ(access_list(directory / "new.hex"), usual);
}

/// Folders in folders, longer than Windows allows without the prefix.
class long_path : public windows_files {
protected:
    long_path() {
        fs::path folder = L"\\\\?\\" + directory.path().wstring();
        for (int i = 0; i < 4; ++i) {
            folder /= path_from_utf8("Prüfling 電 " + std::string(70, 'x'));
            EXPECT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
            plain_ = directory.path() / fs::path(folder.wstring().substr(directory.path().wstring().size() + 5));
        }
        remove_last_ = folder;
    }
    ~long_path() override {
        for (fs::path folder = remove_last_; folder.wstring().size() > directory.path().wstring().size() + 5;
             folder = folder.parent_path())
            RemoveDirectoryW(folder.c_str());
    }

    void delete_file(const char* name) const {
        EXPECT_TRUE(DeleteFileW((remove_last_ / path_from_utf8(name)).c_str()));
    }

    /// As an operator names it.
    fs::path plain_;

private:
    fs::path remove_last_;
};

TEST_F(long_path, leads_to_a_file_that_is_created_read_and_replaced) {
    const fs::path file = plain_ / path_from_utf8("ü電.hex");
    ASSERT_GT(file.wstring().size(), 300U);
    EXPECT_EQ(type_of_file(plain_), fs::file_type::directory);
    EXPECT_EQ(type_of_file(file), fs::file_type::not_found);
    EXPECT_EQ(failure_of([&] { read_whole_file(file); }), failure::file_not_found);
    replace_whole_file(file, "old text");
    EXPECT_EQ(type_of_file(file), fs::file_type::regular);
    EXPECT_EQ(read_whole_file(file), "old text");
    write_over_file(file, "new");
    EXPECT_EQ(read_whole_file(file), "new text");
    replace_whole_file(file, "new");
    EXPECT_EQ(read_whole_file(file), "new");
    {
        const held_file held(without_length_limit(file), FILE_SHARE_READ);
        EXPECT_EQ(failure_of([&] { replace_whole_file(file, "never"); }), failure::path_file_access_error);
    }
    EXPECT_EQ(read_whole_file(file), "new");
    delete_file("ü電.hex");
    // nothing else was left in the folders, so they can be removed
}

/// The same folder as a network share of this computer.
fs::path on_share(const fs::path& path) {
    return L"\\\\localhost\\" + path.root_name().wstring().substr(0, 1) + L"$" + path.root_directory().wstring() +
           path.relative_path().wstring();
}

TEST_F(windows_files, are_replaced_on_a_share) {
    if (type_of_file(on_share(directory.path())) != fs::file_type::directory)
        GTEST_SKIP() << on_share(directory.path()) << " can't be reached";
    EXPECT_EQ(sentence_of_replacing(on_share(directory / "old.hex")), "");
    EXPECT_EQ(directory.content("old.hex"), "new");
    EXPECT_EQ(sentence_of_replacing(on_share(directory / "ü電.hex")), "");
    EXPECT_EQ(directory.content("ü電.hex"), "new");
    EXPECT_EQ(directory.file_count(), 2U);
}

TEST_F(windows_files, stay_on_a_share_if_another_program_has_them_open) {
    if (type_of_file(on_share(directory.path())) != fs::file_type::directory)
        GTEST_SKIP() << on_share(directory.path()) << " can't be reached";
    const held_file held(directory / "old.hex", FILE_SHARE_READ);
    EXPECT_EQ(failure_of([&] { replace_whole_file(on_share(directory / "old.hex"), "new"); }),
              failure::path_file_access_error);
    EXPECT_EQ(directory.content("old.hex"), "a long old text");
    EXPECT_EQ(directory.file_count(), 1U);
}

TEST_F(long_path, leads_to_a_file_on_a_share) {
    if (type_of_file(on_share(plain_)) != fs::file_type::directory)
        GTEST_SKIP() << on_share(directory.path()) << " can't be reached";
    replace_whole_file(on_share(plain_ / "a.hex"), "new");
    EXPECT_EQ(read_whole_file(plain_ / "a.hex"), "new");
    delete_file("a.hex");
}

TEST(without_length_limit, changes_long_paths_only) {
    const std::wstring long_name(240, L'x');
    EXPECT_EQ(without_length_limit(L"C:\\desk\\a.hex"), L"C:\\desk\\a.hex");
    EXPECT_EQ(without_length_limit(L"a.hex"), L"a.hex");
    EXPECT_EQ(without_length_limit(L"C:\\" + long_name), L"\\\\?\\C:\\" + long_name);
    EXPECT_EQ(without_length_limit(L"C:/desk/../" + long_name), L"\\\\?\\C:\\" + long_name);
    EXPECT_EQ(without_length_limit(L"\\\\server\\share\\" + long_name), L"\\\\?\\UNC\\server\\share\\" + long_name);
    EXPECT_EQ(without_length_limit(L"\\\\?\\C:\\" + long_name), L"\\\\?\\C:\\" + long_name);
    EXPECT_EQ(without_length_limit(long_name), L"\\\\?\\" + (fs::current_path() / long_name).wstring());
}

} // namespace
} // namespace desk
