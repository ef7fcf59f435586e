#include "edid/rescue.h"

#include "support/edid_fixture.h"
#include "support/expect_failure.h"
#include "support/file_size_limit.h"
#include "support/other_user.h"
#include "support/protected_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <latch>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::bin_kind;
using test::good_edid;
using test::hex_kind;
using test::some_bytes;
using test::temporary_directory;
using test::window_text_of;

class rescue_test : public test::edid_fixture {
protected:
    std::string rescue() { return rescue_window_texts(view, fields, own.path()); }
    std::string in_own(const std::string& name) const { return utf8_from_path(own / name); }
    std::string kept(const std::string& window, const std::string& name) const {
        return "The EDID of the " + window + " window is kept in the file " + in_own(name) + ".";
    }
    std::string held(const std::string& window, const std::string& name) const {
        return "The EDID of the " + window + " window is in the file " + path(name) + ".";
    }

    temporary_directory own;
};

TEST_F(rescue_test, leaves_empty_windows_alone) {
    EXPECT_EQ(rescue(), "");
    EXPECT_EQ(own.file_count(), 0u);
}

TEST_F(rescue_test, keeps_texts_that_no_file_holds) {
    view.txt_read.text = window_text_of(good_edid());
    view.txt_write.text = window_text_of(some_bytes(256));
    EXPECT_EQ(rescue(), kept("READ", "rescued_read.hex") + "\n" + kept("WRITE", "rescued_write.hex"));
    EXPECT_EQ(own.content("rescued_read.hex"), window_text_of(good_edid()) + "\r\n");
    EXPECT_EQ(own.content("rescued_write.hex"), window_text_of(some_bytes(256)) + "\r\n");
    EXPECT_EQ(own.file_count(), 2u);
}

TEST_F(rescue_test, needs_no_copy_of_a_file_that_was_opened) {
    for (const std::string name : {"a.hex", "a.bin", "a.ddc"}) {
        const std::string data = good_edid();
        open_bytes(name, name == "a.hex" ? window_text_of(data) : name == "a.bin" ? data : "noise" + data);
        ASSERT_EQ(view.txt_write.text.get(), window_text_of(data)) << name;
        EXPECT_EQ(rescue(), held("WRITE", name));
    }
    EXPECT_EQ(own.file_count(), 0u);
}

TEST_F(rescue_test, needs_no_copy_of_a_capture_with_one_block) {
    open_bytes("one.ddc", std::string(200, 'x') + good_edid().substr(0, 128));
    ASSERT_EQ(view.txt_write.text.get(), window_text_of(good_edid().substr(0, 128) + std::string(128, '\xFF')));
    EXPECT_EQ(rescue(), held("WRITE", "one.ddc"));
}

TEST_F(rescue_test, needs_no_copy_of_a_part_of_the_file_that_was_opened) {
    open_bytes("x.hex", "00 11 22\r\n33 X44\r\n");
    ASSERT_EQ(view.txt_write.text.get(), "00 11 22 ");
    EXPECT_EQ(rescue(), held("WRITE", "x.hex"));
}

TEST_F(rescue_test, keeps_what_was_changed_since_it_was_opened) {
    std::string data = good_edid();
    data[127] = static_cast<char>(data[127] + 1);
    open_bytes("a.hex", window_text_of(data));
    m.boxes.answers = {box_answer::yes};
    view.cmd_recover[0].on_click();
    ASSERT_EQ(view.txt_write.text.get(), window_text_of(good_edid()));
    EXPECT_EQ(rescue(), kept("WRITE", "rescued_write.hex"));
    EXPECT_EQ(own.content("rescued_write.hex"), window_text_of(good_edid()) + "\r\n");
}

TEST_F(rescue_test, needs_no_copy_of_what_was_saved) {
    view.txt_read.text = window_text_of(good_edid());
    view.txt_write.text = window_text_of(some_bytes(256));
    save(view.cmd_save_read, "r.hex", hex_kind);
    save(view.cmd_save_write, "w.bin", bin_kind);
    EXPECT_EQ(rescue(), held("READ", "r.hex") + "\n" + held("WRITE", "w.bin"));
    hex_type_choice = 2;
    save(view.cmd_save_read, "c.hex", hex_kind);
    EXPECT_EQ(rescue(), held("READ", "c.hex") + "\n" + held("WRITE", "w.bin"));
    EXPECT_EQ(own.file_count(), 0u);
}

TEST_F(rescue_test, keeps_bytes_lost_by_the_initializer_style) {
    view.txt_read.text = window_text_of(some_bytes(12));
    hex_type_choice = 2;
    save(view.cmd_save_read, "c.hex", hex_kind);
    EXPECT_EQ(rescue(), kept("READ", "rescued_read.hex"));
}

TEST_F(rescue_test, keeps_a_text_that_its_file_no_longer_holds) {
    view.txt_read.text = window_text_of(good_edid());
    save(view.cmd_save_read, "r.hex", hex_kind);
    directory.put("r.hex", window_text_of(some_bytes(256)));
    EXPECT_EQ(rescue(), kept("READ", "rescued_read.hex"));
    std::filesystem::remove(directory / "r.hex");
    std::filesystem::remove(own / "rescued_read.hex");
    EXPECT_EQ(rescue(), kept("READ", "rescued_read.hex"));
    EXPECT_EQ(own.content("rescued_read.hex"), window_text_of(good_edid()) + "\r\n");
}

TEST_F(rescue_test, does_not_wait_for_a_capture_that_has_lost_its_header) {
    open_bytes("a.ddc", good_edid());
    directory.put("a.ddc", some_bytes(256));
    EXPECT_EQ(rescue(), kept("WRITE", "rescued_write.hex"));
}

TEST_F(rescue_test, does_not_keep_a_status_text) {
    for (const char* status :
         {"Reading HDMI/DVI-OUT's edid ...", "Reading VGA(PC/HD-OUT)'s edid ...\r\nLink Error !\r\n",
          "\r\nLink Error !\r\n", "\r\nTimeout ! Read fail !"}) {
        view.txt_read.text = status;
        EXPECT_EQ(rescue(), "") << status;
    }
    EXPECT_EQ(own.file_count(), 0u);
}

TEST_F(rescue_test, leaves_the_lines_of_a_failed_verify_out) {
    const std::string text = window_text_of(good_edid());
    EXPECT_EQ(edid_text_of(text + "\r\nLink Error !\r\n"), text);
    EXPECT_EQ(edid_text_of(text + "\r\nTimeout ! Read fail !"), text);
    EXPECT_EQ(edid_text_of(text + "\r\nLink Error !\r\n\r\nLink Error !\r\n"), text);
    EXPECT_EQ(edid_text_of(window_text_of(some_bytes(128)) + "\r\nLink Error !\r\n"), window_text_of(some_bytes(128)));
    EXPECT_EQ(edid_text_of(text), text);
    view.txt_read.text = text + "\r\nLink Error !\r\n";
    rescue();
    EXPECT_EQ(own.content("rescued_read.hex"), text + "\r\n");
}

TEST_F(rescue_test, renames_the_older_ones_and_keeps_ten_of_them) {
    for (int n = 1; n <= 13; ++n) {
        view.txt_read.text = window_text_of(some_bytes(static_cast<std::size_t>(n)));
        EXPECT_EQ(rescue(), kept("READ", "rescued_read.hex"));
    }
    EXPECT_EQ(own.file_count(), 11u);
    EXPECT_EQ(own.content("rescued_read.hex"), window_text_of(some_bytes(13)) + "\r\n");
    for (int older = 1; older <= 10; ++older)
        EXPECT_EQ(own.content("rescued_read_" + std::to_string(older) + ".hex"),
                  window_text_of(some_bytes(static_cast<std::size_t>(13 - older))) + "\r\n");
}

TEST_F(rescue_test, closes_a_gap_in_the_numbers_before_it_lets_one_go) {
    own.put("rescued_read.hex", "newest");
    own.put("rescued_read_1.hex", "one");
    own.put("rescued_read_3.hex", "three");
    view.txt_read.text = window_text_of(good_edid());
    rescue();
    EXPECT_EQ(own.content("rescued_read_1.hex"), "newest");
    EXPECT_EQ(own.content("rescued_read_2.hex"), "one");
    EXPECT_EQ(own.content("rescued_read_3.hex"), "three");
}

#ifndef _WIN32
class rescue_without_room_test : public rescue_test {
protected:
    rescue_without_room_test() {
        using std::filesystem::perms;
        setenv("TMPDIR", elsewhere.path().c_str(), 1);
        std::filesystem::permissions(elsewhere.path(), perms::all | perms::sticky_bit);
        view.txt_read.text = window_text_of(good_edid());
    }
    ~rescue_without_room_test() override { unsetenv("TMPDIR"); }

    std::string rescue_with_user_folder() {
        return rescue_window_texts(view, fields, own.path(), [this] { return users.path(); });
    }
    static std::string no_file_in(const temporary_directory& folder, const std::string& reason) {
        return "no file can be written in " + utf8_from_path(folder.path()) + ": " + reason;
    }
    static std::string kept_in(const std::filesystem::path& file, const std::string& failed) {
        return "The EDID of the READ window is kept in the file " + utf8_from_path(file) + " (" + failed + ").";
    }

    temporary_directory elsewhere;
    temporary_directory users;
};

TEST_F(rescue_without_room_test, goes_to_the_folder_for_temporary_files) {
    std::filesystem::create_directories(own / "rescued_read.hex" / "in_the_way");
    std::filesystem::create_directories(own / "rescued_read_1.hex" / "in_the_way");
    for (int n = 1; n <= 10; ++n)
        std::filesystem::create_directories(own / ("rescued_read_" + std::to_string(n) + ".hex") / "in_the_way");
    EXPECT_EQ(rescue(), kept_in(elsewhere / "rescued_read.hex", no_file_in(own, "Directory not empty")));
    EXPECT_EQ(elsewhere.content("rescued_read.hex"), window_text_of(good_edid()) + "\r\n");
}

TEST_F(rescue_without_room_test, goes_to_the_users_own_folder_first) {
    std::filesystem::permissions(users.path(), std::filesystem::perms::all);
    {
        const test::protected_folder closed(own.path());
        EXPECT_EQ(rescue_with_user_folder(), kept_in(users / "rescued_read.hex", no_file_in(own, "Permission denied")));
    }
    EXPECT_EQ(users.content("rescued_read.hex"), window_text_of(good_edid()) + "\r\n");
    EXPECT_EQ(elsewhere.file_count(), 0u);
}

TEST_F(rescue_without_room_test, says_which_folders_failed_and_why) {
    const auto no_home = []() -> std::filesystem::path {
        throw runtime_failure(failure::path_file_access_error, "the folder /home/ann can't be created: No home");
    };
    const test::protected_folder closed(own.path());
    EXPECT_EQ(rescue_window_texts(view, fields, own.path(), no_home),
              kept_in(elsewhere / "rescued_read.hex",
                      no_file_in(own, "Permission denied") + "; the folder /home/ann can't be created: No home"));
}

TEST_F(rescue_without_room_test, touches_no_file_of_somebody_else_in_the_folder_for_temporary_files) {
    elsewhere.put("rescued_read.hex", "somebody else's");
    std::filesystem::create_symlink(elsewhere / "target", elsewhere / "rescued_read_1.hex");
    {
        const test::protected_folder closed(own.path());
        EXPECT_EQ(rescue(), kept_in(elsewhere / "rescued_read_2.hex", no_file_in(own, "Permission denied")));
    }
    using std::filesystem::perms;
    EXPECT_EQ(elsewhere.content("rescued_read.hex"), "somebody else's");
    EXPECT_FALSE(elsewhere.has("target"));
    EXPECT_EQ(elsewhere.content("rescued_read_2.hex"), window_text_of(good_edid()) + "\r\n");
    EXPECT_EQ(std::filesystem::status(elsewhere / "rescued_read_2.hex").permissions(),
              perms::owner_read | perms::owner_write);
}

TEST_F(rescue_without_room_test, keeps_the_texts_of_two_users) {
    if (!test::can_be_others()) GTEST_SKIP() << "only root can be other users";
    for (const auto& [who, name] : {std::pair(test::alice, "rescued_read.hex"), {test::bob, "rescued_read_1.hex"}}) {
        EXPECT_EQ(test::as_user(who, [&] { return rescue(); }),
                  kept_in(elsewhere / name, no_file_in(own, "Permission denied")));
        EXPECT_EQ(elsewhere.content(name), window_text_of(good_edid()) + "\r\n");
    }
}

TEST_F(rescue_without_room_test, reports_a_full_disk) {
    view.txt_write.text = window_text_of(good_edid());
    own.put("rescued_read.hex", "older");
    {
        const test::file_size_limit full(100);
        const std::string reasons = " window could not be kept: " + no_file_in(own, "File too large") + "; " +
                                    no_file_in(elsewhere, "File too large") + ".";
        EXPECT_EQ(rescue(), "The EDID of the READ" + reasons + "\nThe EDID of the WRITE" + reasons);
    }
    EXPECT_EQ(own.content("rescued_read_1.hex"), "older");
    EXPECT_EQ(own.file_count(), 1u);
    EXPECT_EQ(elsewhere.file_count(), 0u);
}

TEST_F(rescue_test, loses_no_text_of_desks_that_rescue_at_the_same_time) {
    constexpr int desks = 8;
    std::vector<std::thread> threads;
    std::latch all_ready(desks);
    for (int i = 0; i < desks; ++i) {
        threads.emplace_back([this, i, &all_ready] {
            workbench_frame one;
            all_ready.arrive_and_wait();
            one.txt_read.text = window_text_of(some_bytes(static_cast<std::size_t>(i) + 1));
            EXPECT_EQ(rescue_window_texts(one, {}, own.path()), kept("READ", "rescued_read.hex"));
        });
    }
    for (std::thread& t : threads)
        t.join();
    std::set<std::string> found;
    for (const auto& file : std::filesystem::directory_iterator(own.path()))
        found.insert(own.content(utf8_from_path(file.path().filename())));
    EXPECT_EQ(found.size(), std::size_t{desks});
    EXPECT_EQ(own.file_count(), std::size_t{desks});
}
#endif

} // namespace
} // namespace desk
