#include "edid/file_opener.h"

#include "runtime/files.h"
#include "support/expect_failure.h"
#include "support/file_opener_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::boxes;
using test::buffer_of;
using test::failure_of;
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

class previous_file : public file_opener_test {
protected:
    void put_list(const strings& names) {
        for (std::size_t i = 0; i < names.size(); ++i)
            view.lab_pre_f.at(i).caption = names[i].empty() ? "" : path(names[i]);
        view.fra_pre_f.visible = true;
    }
    strings list() const {
        strings names;
        for (const label& l : view.lab_pre_f)
            names.push_back(utf8_from_path(path_from_utf8(l.caption.get()).filename()));
        return names;
    }
    void press(std::size_t index) { view.lab_pre_f.at(index).on_click(); }
};

TEST_F(previous_file, is_opened_like_any_other_and_moves_to_the_front) {
    directory.put("c.bin", good_edid());
    put_list({"a", "b", "c.bin", "d"});
    remember();
    press(2);
    EXPECT_EQ(list(), (strings{"c.bin", "a", "b", "d", "", "", "", "", "", ""}));
    EXPECT_EQ(view.txt_write.text.get(), window_text_of(good_edid()));
    EXPECT_EQ(buffers.write_buff, buffer_of(good_edid()));
    EXPECT_EQ(form.caption, title_of("c.bin"));
    EXPECT_EQ(fields.edid_file_name, path("c.bin"));
    EXPECT_FALSE(view.fra_pre_f.visible);
    EXPECT_EQ(changed(),
              joined(joined(named, sending), joined(parsed, {"fra_pre_f.visible", "lab_pre_f(1).caption",
                                                             "lab_pre_f(2).caption", "lab_write_checksum(0).caption",
                                                             "lab_write_checksum(1).caption", "txt_write.text"})));
    EXPECT_TRUE(m.files.shown.empty());
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(previous_file, in_an_empty_place_hides_the_list_and_enables_sending_if_a_file_was_opened) {
    put_list({"a"});
    remember();
    press(5);
    EXPECT_EQ(changed(), strings{"fra_pre_f.visible"});
    put_list({"a"});
    fields.edid_file_name = "x";
    remember();
    press(5);
    EXPECT_EQ(changed(), joined(sending, {"fra_pre_f.visible"}));
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(previous_file, that_is_gone_is_reported_and_removed) {
    put_list({"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"});
    remember();
    press(7);
    expect_box(path("h") + " doesn't exist !");
    EXPECT_EQ(list(), (strings{"a", "b", "c", "d", "e", "f", "g", "i", "j", ""}));
    EXPECT_EQ(changed(),
              (strings{"fra_pre_f.visible", "lab_pre_f(7).caption", "lab_pre_f(8).caption", "lab_pre_f(9).caption"}));
    EXPECT_EQ(fields.edid_file_name, "");
}

TEST_F(previous_file, that_is_a_folder_is_missing) {
    std::filesystem::create_directory(directory / "folder.hex");
    put_list({"folder.hex"});
    press(0);
    expect_box(path("folder.hex") + " doesn't exist !");
    EXPECT_EQ(list(), strings(10, ""));
}

TEST_F(previous_file, that_is_gone_hides_the_list_before_its_box_and_is_removed_after_it) {
    put_list({"a", "b"});
    fields.edid_file_name = "x";
    film([this] {
        return list()[0] + list()[1] + (view.fra_pre_f.visible ? ", open" : "") +
               (view.cmd_write.enabled ? ", enabled" : "");
    });
    press(0);
    EXPECT_EQ(frames, (strings{"box: ab", "b, enabled"}));
    EXPECT_TRUE(view.cmd_verify.enabled);
    EXPECT_TRUE(view.cmd_w_auto.enabled);
    EXPECT_EQ(fields.edid_file_name, "x");
}

TEST_F(previous_file, is_one_of_ten) {
    view.fra_pre_f.visible = true;
    EXPECT_EQ(failure_of([&] { opener.lab_pre_f_click(10); }), failure::subscript_out_of_range);
    EXPECT_FALSE(view.fra_pre_f.visible);
}

TEST_F(previous_file, passes_on_every_failure) {
    struct bad_file {
        const char* name;
        std::string content;
        failure expected;
        std::string text_left;
    };
    const std::vector<bad_file> files = {
        {"long.bin", some_bytes(257), failure::subscript_out_of_range, window_text_of(some_bytes(257))},
        {"over.bin", needing_256(good_edid(), 0), failure::overflow,
         window_text_of(needing_256(good_edid(), 0).substr(0, 127))},
        {"good.bin", good_edid(), failure::file_already_open, ""},
        {"short.ddc", good_edid().substr(0, 255), failure::file_already_open, ""},
    };
    for (const bad_file& file : files) {
        directory.put(file.name, file.content);
        put_list({"a", file.name});
        form.caption = "before";
        EXPECT_EQ(failure_of([&] { press(1); }), file.expected) << file.name;
        EXPECT_EQ(view.txt_write.text, file.text_left) << file.name;
        EXPECT_EQ(list(), (strings{"a", file.name, "", "", "", "", "", "", "", ""}));
        EXPECT_EQ(fields.edid_file_name, path(file.name));
        EXPECT_EQ(form.caption, "before");
        EXPECT_FALSE(view.fra_pre_f.visible);
        EXPECT_FALSE(view.cmd_write.enabled);
        EXPECT_FALSE(view.cmd_sum_write.enabled);
    }
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(previous_file, fails_for_a_capture_under_256_bytes_and_names_it) {
    directory.put("short.ddc", good_edid().substr(0, 255));
    put_list({"short.ddc"});
    const std::string sentence = test::sentence_of([&] { press(0); });
    EXPECT_NE(sentence.find(path("short.ddc")), std::string::npos) << sentence;
    EXPECT_EQ(view.txt_write.text, "");
    EXPECT_EQ(failure_of([&] { press(0); }), failure::file_already_open);
    number_1.close();
    EXPECT_EQ(failure_of([&] { press(0); }), failure::bad_record_number);
}

} // namespace
} // namespace desk
