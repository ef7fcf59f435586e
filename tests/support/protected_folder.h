#pragma once

#ifndef _WIN32

#include <gtest/gtest.h>

#include <filesystem>

#include <unistd.h>

namespace desk::test {

/// While it lives, a folder accepts no new files, though its existing files stay writable.
class protected_folder {
public:
    explicit protected_folder(const std::filesystem::path& folder) : folder_(folder) {
        using std::filesystem::perms;
        for (const auto& file : std::filesystem::directory_iterator(folder_))
            std::filesystem::permissions(file, perms::all);
        std::filesystem::permissions(folder_, perms::owner_all | perms::group_all | perms::others_all);
        std::filesystem::permissions(folder_, perms::owner_write | perms::group_write | perms::others_write,
                                     std::filesystem::perm_options::remove);
        // root ignores permissions
        EXPECT_EQ(::seteuid(user_ == 0 ? nobody : user_), 0);
    }
    protected_folder(const protected_folder&) = delete;
    protected_folder& operator=(const protected_folder&) = delete;
    ~protected_folder() {
        EXPECT_EQ(::seteuid(user_), 0);
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
    }

private:
    static constexpr uid_t nobody = 65534;
    std::filesystem::path folder_;
    uid_t user_ = ::geteuid();
};

} // namespace desk::test

#endif
