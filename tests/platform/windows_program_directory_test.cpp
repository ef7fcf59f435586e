#include "platform/windows_program_directory.h"

#include "platform/program_directory.h"
#include "runtime/failure.h"
#include "runtime/windows_api.h"
#include "support/expect_failure.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace desk {
namespace {

namespace fs = std::filesystem;

/// A user whose folder for local data is `root`/local, and an installed program in `root`/program.
class windows_program : public testing::Test {
protected:
    windows_program() {
        std::wstring before(32767, L'\0');
        before.resize(GetEnvironmentVariableW(L"LOCALAPPDATA", before.data(), static_cast<DWORD>(before.size())));
        before_ = before;
        SetEnvironmentVariableW(L"LOCALAPPDATA", (root / "local").c_str());
        put("program/first_files/marlo_rs232.ini", "first settings");
        put("program/first_files/timing_pattern.ini", "first catalogue");
    }
    ~windows_program() override {
        SetEnvironmentVariableW(L"LOCALAPPDATA", before_.empty() ? nullptr : before_.c_str());
    }

    void put(const std::string& name, const std::string& content) const {
        fs::create_directories((root / name).parent_path());
        root.put(name, content);
    }
    fs::path program() const { return root / "program"; }
    fs::path own() const { return root / "local/VELOTRACE Desk"; }
    std::string own_content(const std::string& name) const { return root.content("local/VELOTRACE Desk/" + name); }

    test::temporary_directory root;

private:
    std::wstring before_;
};

TEST_F(windows_program, works_in_the_users_folder_if_it_is_installed) {
    EXPECT_EQ(own_directory_of(program()), own());
    EXPECT_EQ(own_content("marlo_rs232.ini"), "first settings");
    EXPECT_EQ(own_content("timing_pattern.ini"), "first catalogue");
}

TEST_F(windows_program, keeps_the_users_files) {
    put("local/VELOTRACE Desk/marlo_rs232.ini", "my settings");
    EXPECT_EQ(own_directory_of(program()), own());
    EXPECT_EQ(own_content("marlo_rs232.ini"), "my settings");
    EXPECT_EQ(own_content("timing_pattern.ini"), "first catalogue");
}

TEST_F(windows_program, works_in_its_own_folder_if_it_was_unpacked) {
    fs::remove_all(program() / "first_files");
    EXPECT_EQ(own_directory_of(program()), program());
    EXPECT_FALSE(root.has("local"));
}

TEST_F(windows_program, works_in_its_own_folder_if_its_files_are_there) {
    for (const std::string name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
        put("program/" + name, "portable");
        EXPECT_EQ(own_directory_of(program()), program()) << name;
        fs::remove(program() / name);
    }
    EXPECT_EQ(own_directory_of(program()), own());
}

TEST_F(windows_program, reports_a_folder_that_cannot_be_created) {
    put("local", "a file");
    EXPECT_EQ(test::failure_of([&] { own_directory_of(program()); }), failure::path_file_access_error);
    EXPECT_EQ(root.content("local"), "a file");
}

TEST_F(windows_program, reports_a_user_without_a_folder) {
    SetEnvironmentVariableW(L"LOCALAPPDATA", nullptr);
    EXPECT_EQ(test::failure_of([&] { own_directory_of(program()); }), failure::path_file_access_error);
}

} // namespace
} // namespace desk
