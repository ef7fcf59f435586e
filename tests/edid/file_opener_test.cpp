#include "edid/file_opener.h"

#include "runtime/files.h"
#include "support/expect_failure.h"
#include "support/file_opener_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::checksum_text;
using test::file_opener_test;
using test::good_edid;
using test::joined;
using test::named;
using test::needing_256;
using test::parsed;
using test::sending;
using test::some_bytes;
using test::strings;
using test::window_text_of;

const test::noted_boxes::shown box_data_error{"Data Error !", box_icon::critical, box_buttons::ok};
const test::noted_boxes::shown box_wrong_format{"Wrong file format !", box_icon::critical, box_buttons::ok};

#ifndef _WIN32
TEST_F(file_opener_test, does_not_wait_for_a_pipe_or_read_a_device_or_a_long_file) {
    const test::temporary_directory elsewhere;
    ASSERT_EQ(::mkfifo((elsewhere / "pipe.bin").c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", elsewhere / "zero.bin");
    elsewhere.put("long.bin", "x");
    std::filesystem::resize_file(elsewhere / "long.bin", longest_file + 1);
    for (const char* name : {"pipe.bin", "zero.bin", "long.bin"}) {
        std::string reason;
        m.host.report_silent_failure = [&](std::string_view sentence) { reason = sentence; };
        open((elsewhere / name).string());
        EXPECT_TRUE(reason.starts_with("Opening the EDID file " + (elsewhere / name).string() + ": the file "))
            << reason;
        EXPECT_EQ(form.caption, "VELOTRACE ");
    }
    EXPECT_TRUE(m.boxes.all.empty());
    expect_number_1(false);
}
#endif

TEST_F(file_opener_test, opens_hex_after_a_byte_order_mark) {
    open_bytes("a.hex", "\xEF\xBB\xBF" + window_text_of(good_edid()));
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(good_edid()));
    EXPECT_EQ(buffers.write_buff, buffer_of(good_edid()));
}

TEST_F(file_opener_test, accepts_files_but_not_folders) {
    directory.put("a.hex", "");
    EXPECT_TRUE(file_exists(path("a.hex")));
    EXPECT_FALSE(file_exists(path("none.hex")));
    EXPECT_FALSE(file_exists(path("")));
    EXPECT_FALSE(file_exists(path("a.hex/inside")));
    std::filesystem::create_directory(directory / "folder.hex");
    EXPECT_FALSE(file_exists(path("folder.hex")));
}

class open_dialog : public file_opener_test {
protected:
    const file_dialog_setup& dialog_shown() {
        view.cmd_load.on_click();
        return m.files.shown.back();
    }
};

TEST_F(open_dialog, has_its_title_its_filter_and_no_name) {
    view.dia_file.file_name = "left over";
    view.dia_file.filter_index = 3;
    view.dia_file.kind = file_dialog_setup::dialog_kind::save;
    const file_dialog_setup& shown = dialog_shown();
    EXPECT_EQ(shown.kind, file_dialog_setup::dialog_kind::open);
    EXPECT_EQ(shown.title, "Open edid file");
    EXPECT_EQ(shown.filter, "hex / bin / ddc|*.hex;*.bin;*.ddc|*.hex|*.hex|*.bin|*.bin|*.ddc|*.ddc|*.*|*.*");
    EXPECT_EQ(shown.filter_index, 1);
    EXPECT_EQ(shown.file_name, "");
    EXPECT_EQ(m.files.shown.size(), 1U);
}

TEST_F(open_dialog, starts_in_the_folder_of_the_last_file) {
    directory.put("newest.hex", "");
    view.lab_pre_f[0].caption = path("newest.hex");
    fields.edid_file_name = "C:\\edids\\some.hex";
    EXPECT_EQ(dialog_shown().init_dir, "C:\\edids") << "whether it exists or not";
    fields.edid_file_name = "/edids/some.hex";
    EXPECT_EQ(dialog_shown().init_dir, "/edids");
}

TEST_F(open_dialog, starts_in_the_folder_of_the_newest_listed_file_if_none_was_opened) {
    directory.put("newest.hex", "");
    view.lab_pre_f[0].caption = path("newest.hex");
    view.lab_pre_f[1].caption = "/elsewhere/b.hex";
    EXPECT_EQ(dialog_shown().init_dir, utf8_from_path(directory.path()));
}

TEST_F(open_dialog, keeps_its_folder_without_either) {
    EXPECT_EQ(dialog_shown().init_dir, "/where/it/was");
    view.lab_pre_f[0].caption = "/gone/newest.hex";
    EXPECT_EQ(dialog_shown().init_dir, "/where/it/was");
}

TEST_F(open_dialog, changes_nothing_if_it_is_cancelled_or_names_nothing) {
    remember();
    view.cmd_load.on_click();
    m.files.choices = {file_choice{"", 1}};
    view.cmd_load.on_click();
    EXPECT_EQ(m.files.shown.size(), 2U);
    EXPECT_EQ(changed(), strings{});
}

TEST_F(open_dialog, reports_a_missing_file) {
    std::filesystem::create_directory(directory / "folder.hex");
    for (const char* name : {"none.hex", "folder.hex"}) {
        remember();
        open(name);
        EXPECT_EQ(changed(), strings{"boxes"});
        expect_box(path(name) + " dosen't exist !");
    }
}

class opened_file : public file_opener_test {};

TEST_F(opened_file, is_shown_stored_named_listed_and_can_be_sent) {
    remember();
    open_bytes("a.bin", good_edid());
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(good_edid()));
    EXPECT_EQ(buffers.write_buff, buffer_of(good_edid()));
    EXPECT_EQ(view.lab_write_checksum[0].caption, checksum_text(good_edid(), 0));
    EXPECT_EQ(view.lab_write_checksum[1].caption, checksum_text(good_edid(), 1));
    EXPECT_EQ(form.caption, title_of("a.bin"));
    EXPECT_EQ(fields.edid_file_name, path("a.bin"));
    EXPECT_EQ(view.lab_pre_f[0].caption, path("a.bin"));
    EXPECT_TRUE(opener.file_ok);
    EXPECT_EQ(changed_except("a.bin"),
              joined(joined(named, sending), joined(parsed, {"lab_write_checksum(0).caption",
                                                             "lab_write_checksum(1).caption", "txt_write.text"})));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(opened_file, is_read_by_the_last_three_letters_of_its_name) {
    const std::string text = "0x11,0x22\r\n";
    for (const char* name : {"a.hex", "a.HEX", "a.hEx", "myhex", "ä.Hex", "a.bin.hex"}) {
        open_bytes(name, text);
        EXPECT_EQ(view.txt_write.text, "11 22 ") << name;
    }
    for (const char* name : {"a.bin", "a.BIN", "mybIn", "a.hex.bin"}) {
        open_bytes(name, text);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(text)) << name;
    }
    for (const char* name : {"a.ddc", "a.DDC", "myddC"}) {
        open_bytes(name, text + good_edid());
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(good_edid())) << name;
    }
    EXPECT_TRUE(m.boxes.all.empty());
    expect_number_1(false);
}

TEST_F(opened_file, of_another_kind_is_reported_twice_but_still_named) {
    opener.file_ok = true;
    directory.put("a.txt", "11");
    remember();
    open("a.txt");
    EXPECT_EQ(m.boxes.all, (boxes{box_wrong_format, box_data_error}));
    EXPECT_EQ(changed(), joined(joined(named, sending), {"boxes", "file_ok"}))
        << "the window is emptied by the readers alone";
    EXPECT_EQ(form.caption, title_of("a.txt"));
    EXPECT_EQ(view.lab_pre_f[0].caption, path("a.txt"));
    expect_number_1(false);
}

TEST_F(opened_file, of_another_kind_is_reported_before_its_name_and_buttons_change) {
    opener.file_ok = true;
    directory.put("a.txt", "11");
    film([this] {
        return form.caption.get() + ", " + view.lab_pre_f[0].caption.get() + (opener.file_ok ? ", ok" : "") +
               (view.cmd_write.enabled ? ", enabled" : "");
    });
    open("a.txt");
    EXPECT_EQ(frames, (strings{"box: VELOTRACE , , ok", "box: VELOTRACE , ",
                               title_of("a.txt") + ", " + path("a.txt") + ", enabled"}));
}

TEST_F(opened_file, has_no_kind_without_three_letters_at_its_very_end) {
    for (const char* name : {"a.he", "hex.a", "ex", "a.hex ", "a.hexx", "a.b1n"}) {
        open_bytes(name, "11");
        EXPECT_EQ(std::exchange(m.boxes.all, {}), (boxes{box_wrong_format, box_data_error})) << name;
    }
}

TEST_F(opened_file, has_its_title_and_its_place_in_the_list_when_the_buttons_are_enabled) {
    directory.put("a.bin", good_edid());
    film([this] {
        return form.caption.get() + ", " + view.lab_pre_f[0].caption.get() +
               (view.cmd_write.enabled ? ", enabled" : "") + (view.cmd_sum_write.enabled ? ", sum" : "");
    });
    open("a.bin");
    EXPECT_EQ(frames, strings{title_of("a.bin") + ", " + path("a.bin") + ", enabled, sum"});
}

TEST_F(opened_file, of_one_block_keeps_the_label_and_the_repair_of_the_other) {
    open_bytes("a.bin", some_bytes(256));
    remember();
    open_bytes("b.hex", window_text_of(good_edid().substr(0, 128)));
    EXPECT_EQ(buffers.write_buff, buffer_of(good_edid().substr(0, 128), 0xFF));
    EXPECT_EQ(changed_except("b.hex"),
              (strings{"cmd_recover(0).visible", "edid_file_name", "form.caption", "lab_pre_f(0).caption",
                       "lab_pre_f(1).caption", "lab_write_checksum(0).caption", "lab_write_checksum(0).fore_color",
                       "txt_write.text", "write_buff"}));
}

/// A file format, and the content of such a file for given bytes.
struct format {
    const char* name;
    std::string (*file_of)(std::string_view data);
};

void PrintTo(const format& f, std::ostream* out) { *out << f.name; }

class format_test : public file_opener_test, public testing::WithParamInterface<format> {
protected:
    void open_data(std::string_view data) { open_bytes(file_name, GetParam().file_of(data)); }
    const std::string file_name = std::string("a.") + GetParam().name;
};

std::string same(std::string_view data) { return std::string(data); }
std::string after_junk(std::string_view data) { return "junk" + std::string(data); }

INSTANTIATE_TEST_SUITE_P(open, format_test,
                         testing::Values(format{"hex", window_text_of}, format{"bin", same}, format{"ddc", after_junk}),
                         [](const auto& f) { return std::string(f.param.name); });

TEST_P(format_test, stops_silently_at_a_block_that_needs_256_and_leaves_the_number_open) {
    const std::string data = needing_256(good_edid(), 0);
    directory.put(file_name, GetParam().file_of(data));
    remember();
    open(file_name);
    EXPECT_EQ(changed(), (strings{"edid_file_name", "file_ok", "lab_write_checksum(0).caption",
                                  "lab_write_checksum(0).fore_color", "txt_write.text"}));
    EXPECT_EQ(view.lab_write_checksum[0].caption, "BK0=100 Error.");
    EXPECT_EQ(view.lab_write_checksum[0].fore_color, 192U);
    const bool line_by_line = file_name == "a.hex";
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(data.substr(0, line_by_line ? 120 : 127)));
    EXPECT_EQ(fields.edid_file_name, path(file_name));
    expect_number_1(true);
    expect_number_1(true);
}

class any_length : public format_test {};

INSTANTIATE_TEST_SUITE_P(open, any_length, testing::Values(format{"hex", window_text_of}, format{"bin", same}),
                         [](const auto& f) { return std::string(f.param.name); });

TEST_P(any_length, up_to_256_pads_the_buffer_with_ff) {
    for (const std::size_t length : {1U, 20U, 127U, 128U, 129U, 255U, 256U}) {
        open_data(some_bytes(length));
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(some_bytes(length)));
        EXPECT_EQ(buffers.write_buff, buffer_of(some_bytes(length), 0xFF)) << length;
        EXPECT_TRUE(view.cmd_sum_write.enabled);
        EXPECT_EQ(form.caption, title_of(file_name));
    }
}

TEST_P(any_length, above_256_shows_all_stores_256_and_stops_silently) {
    for (const std::size_t length : {257U, 300U}) {
        const std::string data = good_edid() + some_bytes(length - 256);
        buffers.write_buff.fill(0x33);
        view.txt_write.text = "old";
        fields.edid_file_name = "";
        opener.file_ok = false;
        view.lab_write_checksum[0].caption = "BK0";
        view.lab_write_checksum[1].caption = "BK1";
        directory.put(file_name, GetParam().file_of(data));
        remember();
        open(file_name);
        EXPECT_EQ(view.txt_write.text.get(), window_text_of(data));
        EXPECT_EQ(buffers.write_buff, buffer_of(data));
        EXPECT_EQ(changed(), (strings{"edid_file_name", "file_ok", "lab_write_checksum(0).caption",
                                      "lab_write_checksum(1).caption", "txt_write.text", "write_buff"}));
        EXPECT_TRUE(opener.file_ok);
    }
    expect_number_1(false);
}

class refused_file : public file_opener_test {
protected:
    void expect_refused(const std::string& name, const std::string& content, const std::string& text_left) {
        opener.file_ok = true;
        directory.put(name, content);
        remember();
        open(name);
        EXPECT_EQ(m.boxes.all, boxes{box_data_error});
        EXPECT_EQ(view.txt_write.text, text_left);
        EXPECT_EQ(changed(), joined(joined(named, sending), {"boxes", "file_ok", "txt_write.text"}))
            << "the buffer, the translation and the sum are unchanged";
        EXPECT_EQ(form.caption, title_of(name));
        m.boxes.all.clear();
        expect_number_1(false);
    }
};

TEST_F(refused_file, with_a_misplaced_x_keeps_the_lines_before_it) {
    expect_refused("a.hex", "11 22\r\n33 44\r\n55 x 66\r\n77\r\n", "11 22 33 44 ");
}

TEST_F(refused_file, can_be_an_empty_bin) { expect_refused("a.bin", "", ""); }

TEST_F(refused_file, can_be_an_empty_ddc) { expect_refused("a.ddc", "", ""); }

TEST_F(refused_file, is_never_a_hex_file_without_bytes) {
    for (const char* content : {"", "\r\n", "// nothing\r\n"}) {
        buffers.write_buff.fill(0x33);
        open_bytes("a.hex", content);
        EXPECT_TRUE(m.boxes.all.empty());
        EXPECT_EQ(view.txt_write.text, "");
        EXPECT_EQ(buffers.write_buff, buffer_of("", 0xFF));
        EXPECT_TRUE(view.cmd_sum_write.enabled);
        EXPECT_EQ(form.caption, title_of("a.hex"));
    }
}

TEST_F(refused_file, keeps_the_checksum_of_the_blocks_read) {
    std::string data = some_bytes(128);
    open_bytes("a.hex", window_text_of(data) + "x");
    EXPECT_EQ(m.boxes.all, boxes{box_data_error});
    EXPECT_EQ(view.lab_write_checksum[0].caption, checksum_text(data, 0));
    EXPECT_TRUE(view.cmd_recover[0].visible);
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(data));
    EXPECT_EQ(buffers.write_buff, buffer_of("", 0x33));
}

class ddc_capture : public file_opener_test {};

TEST_F(ddc_capture, of_one_block_is_padded_with_ff) {
    texts.recover_sum = {7, 8};
    view.cmd_recover[1].visible = true;
    view.lab_write_checksum[1].fore_color = 192;
    const std::string block = good_edid().substr(0, 128);
    open_bytes("a.ddc", std::string(128, '\x55') + block);
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(block + std::string(128, '\xFF')));
    EXPECT_EQ(buffers.write_buff, buffer_of(block, 0xFF));
    EXPECT_EQ(view.lab_write_checksum[0].caption, checksum_text(block, 0));
    EXPECT_EQ(view.lab_write_checksum[1].caption, "Checksum BK1= Empty block FF for DVI");
    EXPECT_EQ(view.lab_write_checksum[1].fore_color, 0U);
    EXPECT_TRUE(view.cmd_recover[1].visible) << "it stays as the previous file left it";
    EXPECT_EQ(texts.recover_sum, (std::array<std::uint8_t, 2>{7, 8}));
    EXPECT_EQ(form.caption, title_of("a.ddc"));
    EXPECT_TRUE(m.boxes.all.empty());
    expect_number_1(false);
}

TEST_F(ddc_capture, under_256_bytes_stops_silently_and_leaves_the_number_open) {
    for (const std::size_t length : {1U, 128U, 255U}) {
        view.txt_write.text = "old";
        opener.file_ok = false;
        fields.edid_file_name = "";
        directory.put("a.ddc", good_edid().substr(0, length));
        remember();
        open("a.ddc");
        EXPECT_EQ(changed(), (strings{"edid_file_name", "file_ok", "txt_write.text"})) << length;
        EXPECT_EQ(view.txt_write.text, "");
    }
    expect_number_1(true);
}

struct tired_of_looking {};

TEST_F(ddc_capture, without_a_header_does_not_return) {
    directory.put("a.ddc", std::string(300, '\x55'));
    m.events.on_turn = [this] {
        EXPECT_EQ(view.txt_write.text, "");
        if (m.events.turns == 3) throw tired_of_looking();
    };
    const int pumps = m.events.pumps;
    EXPECT_THROW(open("a.ddc"), tired_of_looking);
    EXPECT_EQ(m.events.turns, 3);
    EXPECT_EQ(m.events.pumps, pumps);
}

} // namespace
} // namespace desk
