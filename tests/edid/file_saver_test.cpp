#include "edid/file_saver.h"

#include "edid/format/file_writers.h"
#include "support/edid_fixture.h"
#include "support/file_size_limit.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace desk {
namespace {

using test::bin_kind;
using test::boxes;
using test::good_edid;
using test::hex_kind;
using test::some_bytes;
using test::strings;
using test::window_text_of;

const test::noted_boxes::shown box_write_empty{"WRITE window is empty", box_icon::critical, box_buttons::ok};
const test::noted_boxes::shown box_read_empty{"EDID of Read is empty", box_icon::critical, box_buttons::ok};

class file_saver_test : public test::edid_fixture {
protected:
    file_saver_test() {
        view.txt_write.text = window_text_of(good_edid());
        view.txt_read.text = window_text_of(some_bytes(256));
    }
    std::string title_of(const std::string& name) const { return "VELOTRACE  - " + path(name); }
    test::noted_boxes::shown box_exists(const std::string& name) const {
        return {path(name) + " exists. Overwrite it ?", box_icon::none, box_buttons::yes_no_cancel};
    }
    void save_write(const std::string& name, int kind) { save(view.cmd_save_write, name, kind); }
    void save_over(const std::string& name, int kind) {
        m.boxes.answers = {box_answer::yes};
        save_write(name, kind);
    }
};

TEST_F(file_saver_test, has_nothing_to_save_in_an_empty_window) {
    view.txt_write.text = "";
    view.cmd_save_write.on_click();
    EXPECT_EQ(std::exchange(m.boxes.all, {}), boxes{box_write_empty});
    view.txt_write.text = "w";
    view.txt_read.text = "";
    remember();
    view.cmd_save_read.on_click();
    EXPECT_EQ(m.boxes.all, boxes{box_read_empty});
    EXPECT_EQ(changed(), strings{"boxes"});
    EXPECT_TRUE(m.files.shown.empty());
}

class save_dialog : public file_saver_test {
protected:
    const file_dialog_setup& dialog_shown() {
        view.cmd_save_write.on_click();
        return m.files.shown.back();
    }
};

TEST_F(save_dialog, has_its_title_its_filter_and_the_program_s_folder_at_first) {
    view.dia_file.file_name = "left over";
    view.dia_file.filter_index = 3;
    const file_dialog_setup& shown = dialog_shown();
    EXPECT_EQ(shown.kind, file_dialog_setup::dialog_kind::save);
    EXPECT_EQ(shown.title, "Save EDID file");
    EXPECT_EQ(shown.filter, "*.hex|*.hex|*.bin|*.bin");
    EXPECT_EQ(shown.filter_index, 1);
    EXPECT_EQ(shown.init_dir, "/program");
    EXPECT_EQ(shown.file_name, "");
}

TEST_F(save_dialog, offers_the_last_name_without_its_last_four_characters) {
    const std::vector<std::pair<std::string, std::pair<std::string, std::string>>> cases = {
        {"/edids/some.hex", {"/edids", "some"}}, {"C:\\edids\\some.hex", {"C:\\edids", "some"}},
        {"/edids/abcdefgh", {"/edids", "abcd"}}, {"/edids/äöü€x", {"/edids", "ä"}},
        {"/edids/.hex", {"/edids", ""}},         {"some.hex", {"", "some"}},
    };
    for (const auto& [name, offered] : cases) {
        fields.edid_file_name = name;
        const file_dialog_setup& shown = dialog_shown();
        EXPECT_EQ(shown.init_dir, offered.first) << name;
        EXPECT_EQ(shown.file_name, offered.second) << name;
    }
}

TEST_F(save_dialog, does_not_appear_if_the_last_name_is_too_short) {
    fields.edid_file_name = "/edids/abc";
    remember();
    view.cmd_save_write.on_click();
    view.cmd_save_read.on_click();
    EXPECT_TRUE(m.files.shown.empty());
    EXPECT_EQ(changed(), strings{}) << "it fails in silence";
}

TEST_F(save_dialog, ends_the_action_if_it_is_cancelled_or_empty) {
    remember();
    view.cmd_save_write.on_click();
    m.files.choices = {file_choice{"", 2}};
    view.cmd_save_write.on_click();
    view.cmd_save_read.on_click();
    EXPECT_EQ(m.files.shown.size(), 3U);
    EXPECT_EQ(changed(), strings{});
    EXPECT_EQ(hex_type_questions, 0);
}

class overwriting : public file_saver_test {
protected:
    overwriting() { directory.put("old.bin", "old content"); }
};

TEST_F(overwriting, is_asked_for) {
    save_over("old.bin", bin_kind);
    EXPECT_EQ(m.boxes.all, boxes{box_exists("old.bin")});
    EXPECT_EQ(directory.content("old.bin"), good_edid());
}

TEST_F(overwriting, asks_again_from_the_start_after_no) {
    fields.edid_file_name = "/edids/some.hex";
    m.files.choices = {file_choice{path("old.bin"), 2}, file_choice{path("old.bin"), 2},
                       file_choice{path("new.bin"), 2}};
    m.boxes.answers = {box_answer::no, box_answer::no};
    view.cmd_save_write.on_click();
    ASSERT_EQ(m.files.shown.size(), 3U);
    for (const file_dialog_setup& shown : m.files.shown) {
        EXPECT_EQ(shown.filter_index, 1);
        EXPECT_EQ(shown.file_name, "some");
    }
    EXPECT_EQ(m.boxes.all, (boxes{box_exists("old.bin"), box_exists("old.bin")}));
    EXPECT_EQ(directory.content("new.bin"), good_edid());
    EXPECT_EQ(directory.content("old.bin"), "old content");
}

TEST_F(overwriting, is_not_asked_for_after_a_change_of_the_name) {
    save_write("old.txt", bin_kind);
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(directory.content("old.bin"), good_edid());
    EXPECT_FALSE(directory.has("old.txt"));
}

TEST_F(overwriting, is_asked_for_the_name_before_its_change) {
    directory.put("old.txt", "text");
    save_over("old.txt", bin_kind);
    EXPECT_EQ(m.boxes.all, boxes{box_exists("old.txt")});
    EXPECT_EQ(directory.content("old.txt"), "text");
    EXPECT_EQ(directory.content("old.bin"), good_edid());
}

TEST_F(file_saver_test, fails_in_silence_for_a_name_of_three_characters) {
    for (const int kind : {hex_kind, bin_kind}) {
        remember();
        m.files.choices = {file_choice{"abc", kind}};
        view.cmd_save_write.on_click();
        EXPECT_EQ(changed(), strings{});
    }
    EXPECT_EQ(hex_type_questions, 0);
    EXPECT_EQ(m.files.shown.size(), 2U);
}

class saved_file : public file_saver_test {};

TEST_F(saved_file, is_hex_for_the_first_kind_and_bin_for_any_other) {
    save_write("a.txt", 1);
    EXPECT_EQ(directory.content("a.hex"), window_text_of(good_edid()) + "\r\n");
    EXPECT_EQ(hex_type_questions, 1);
    int count = 0;
    for (const int kind : {2, 3, 0}) {
        const std::string name = std::string(1, static_cast<char>('b' + count++)) + ".bin";
        save_write(name, kind);
        EXPECT_EQ(directory.content(name), good_edid());
    }
    EXPECT_EQ(hex_type_questions, 1) << "no style is asked for";
}

TEST_F(saved_file, has_the_chosen_style) {
    hex_type_choice = 2;
    save_write("a.hex", hex_kind);
    EXPECT_EQ(directory.content("a.hex"), c_language_hex_of(window_text_of(good_edid())));
    EXPECT_TRUE(directory.content("a.hex").starts_with("0x00,0xFF,0xFF,0xFF,0xFF,0xFF,0xFF,0x00, //7\r\n"));
    hex_type_choice = 1;
    save_over("a.hex", hex_kind);
    EXPECT_EQ(directory.content("a.hex"), window_text_of(good_edid()) + "\r\n");
}

TEST_F(saved_file, of_the_write_side_sets_name_title_and_list) {
    view.lab_pre_f[0].caption = path("before.hex");
    fields.edid_file_name = path("before.hex");
    remember();
    save_write("a.txt", bin_kind);
    EXPECT_EQ(fields.edid_file_name, path("a.bin"));
    EXPECT_EQ(form.caption, title_of("a.bin"));
    EXPECT_EQ(view.lab_pre_f[0].caption, path("a.bin"));
    EXPECT_EQ(view.lab_pre_f[1].caption, path("before.hex"));
    EXPECT_EQ(changed(), (strings{"edid_file_name", "file a.bin", "form.caption", "lab_pre_f(0).caption",
                                  "lab_pre_f(1).caption"}));
}

TEST_F(saved_file, of_the_read_side_is_the_one_thing_that_changes) {
    fields.edid_file_name = path("before.hex");
    remember();
    save(view.cmd_save_read, "a.bin", bin_kind);
    EXPECT_EQ(changed(), strings{"file a.bin"});
    EXPECT_EQ(directory.content("a.bin"), some_bytes(256));
}

TEST_F(saved_file, of_any_side_but_the_first_is_that_of_the_read_window) {
    for (const int side : {0, 2, 3}) {
        m.files.choices = {file_choice{path("a.bin"), bin_kind}};
        m.boxes.answers = {box_answer::yes};
        saver.save_file(side);
        EXPECT_EQ(directory.content("a.bin"), some_bytes(256));
        EXPECT_EQ(fields.edid_file_name, "");
    }
    m.files.choices = {file_choice{path("b.bin"), bin_kind}};
    saver.save_file(1);
    EXPECT_EQ(directory.content("b.bin"), good_edid());
}

TEST_F(saved_file, holds_the_text_as_it_is_after_the_question_for_the_style) {
    saver.choose_hex_type = [this] {
        EXPECT_EQ(fields.edid_file_name, "") << "the name is taken over after the question";
        EXPECT_EQ(form.caption, "VELOTRACE ");
        EXPECT_FALSE(directory.has("a.hex"));
        view.txt_write.text = "11 ";
        fields.hex_type = 1;
    };
    save_write("a.hex", hex_kind);
    EXPECT_EQ(directory.content("a.hex"), "11 \r\n");
}

TEST_F(saved_file, holds_the_text_and_not_the_buffer) {
    buffers.write_buff.fill(0x33);
    save_write("a.bin", bin_kind);
    EXPECT_EQ(directory.content("a.bin"), good_edid());
}

TEST_F(saved_file, of_bin_keeps_the_tail_of_a_longer_old_one) {
    directory.put("a.bin", std::string(1024, 'x'));
    save_over("a.bin", bin_kind);
    EXPECT_EQ(directory.content("a.bin"), good_edid() + std::string(768, 'x'));
}

class failing_save : public file_saver_test {
protected:
    /// A save from the WRITE side that can't write has already taken over name, title and list.
    void expect_silent_failure(const std::string& name, int kind) {
        fields.edid_file_name = "";
        form.caption = "VELOTRACE ";
        view.lab_pre_f[0].caption = "";
        view.lab_pre_f[1].caption = "";
        fields.hex_type = hex_type_choice;
        m.boxes.answers = {box_answer::yes};
        remember();
        save(view.cmd_save_read, name, kind);
        EXPECT_EQ(changed_but_for_boxes(), strings{});
        m.boxes.answers = {box_answer::yes};
        save_write(name, kind);
        EXPECT_EQ(changed_but_for_boxes(), (strings{"edid_file_name", "form.caption", "lab_pre_f(0).caption"}));
        EXPECT_EQ(form.caption, title_of(name));
    }
    void expect_number_1_free() {
        open_bytes("next.bin", good_edid());
        EXPECT_EQ(form.caption, title_of("next.bin"));
    }
    strings changed_but_for_boxes() const {
        strings all = changed();
        std::erase(all, "boxes");
        return all;
    }
};

TEST_F(failing_save, into_a_missing_folder_is_silent) {
    for (const char* folder : {"gone", "file"}) {
        directory.put("file", "no folder");
        expect_silent_failure(std::string(folder) + "/a.hex", hex_kind);
        expect_silent_failure(std::string(folder) + "/a.bin", bin_kind);
    }
    EXPECT_TRUE(m.boxes.all.empty());
    expect_number_1_free();
}

#ifndef _WIN32
TEST_F(failing_save, of_hex_half_way_leaves_the_old_file_whole) {
    directory.put("a.hex", "old content");
    const test::file_size_limit disk_is_full(100);
    for (const std::int16_t style : {std::int16_t{1}, std::int16_t{2}}) {
        hex_type_choice = style;
        expect_silent_failure("a.hex", hex_kind);
        EXPECT_EQ(directory.content("a.hex"), "old content");
        EXPECT_EQ(directory.file_count(), 1U);
    }
}

TEST_F(failing_save, of_bin_half_way_leaves_the_old_file_whole) {
    directory.put("a.bin", std::string(1024, 'x'));
    {
        const test::file_size_limit disk_is_full(100);
        save_over("a.bin", bin_kind);
    }
    EXPECT_EQ(directory.content("a.bin"), std::string(1024, 'x'));
    EXPECT_EQ(form.caption, title_of("a.bin"));
    expect_number_1_free();
}

TEST_F(failing_save, onto_a_pipe_is_silent_and_does_not_wait) {
    const test::temporary_directory elsewhere;
    for (const char* name : {"a.bin", "a.hex"}) {
        const std::filesystem::path pipe = elsewhere / name;
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        expect_silent_failure(pipe.string(), name == std::string("a.bin") ? bin_kind : hex_kind);
        EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    }
    expect_number_1_free();
}
#endif

TEST_F(failing_save, after_a_file_that_was_left_open_writes_nothing) {
    directory.put("old.hex", "old content");
    directory.put("old.bin", "old content");
    open_bytes("short.ddc", "x");
    view.txt_write.text = window_text_of(good_edid());
    for (const char* name : {"new.hex", "old.hex"})
        expect_silent_failure(name, hex_kind);
    for (const char* name : {"new.bin", "old.bin"})
        expect_silent_failure(name, bin_kind);
    EXPECT_EQ(directory.file_count(), 3U);
}

TEST_F(failing_save, in_the_question_for_the_style_is_silent_too) {
    saver.choose_hex_type = [] { throw runtime_failure(failure::invalid_property_value, "no such choice"); };
    remember();
    save_write("a.hex", hex_kind);
    EXPECT_EQ(changed(), strings{});
}

} // namespace
} // namespace desk
