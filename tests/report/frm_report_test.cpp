#include "report/frm_report.h"

#include "platform/local_date_time.h"
#include "support/fake_machine.h"
#include "support/file_size_limit.h"
#include "support/temporary_directory.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::failure_of;
using test::text_descriptor;
using test::usual_edid;

const std::string parsing = "Parsing ...\r\n";

class frm_report_test : public test::translation_fixture {
protected:
    frm_report_test() { m.host.program_directory = "/program"; }

    void load(const edid_buffer& edid) {
        buffers.trans_buff = edid;
        report.load();
    }
    const std::string& built() const { return report.report_text; }
    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }
    /// The operator presses SAVE and chooses these files one after the other.
    void save(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            m.files.choices.emplace_back(file_choice{path(name), 1});
        report.cmd_save.on_click();
    }
    test::noted_boxes::shown box_exists(const std::string& name) const {
        return {path(name) + " exists. Overwrite it ?", box_icon::none, box_buttons::yes_no_cancel};
    }

    test::temporary_directory directory;
    test::fake_machine m;
    frm_report report{m.host, buffers, tables, fields};
};

TEST_F(frm_report_test, has_a_box_to_be_read) {
    EXPECT_TRUE(report.txt_report.locked);
    EXPECT_TRUE(report.txt_report.multi_line);
    EXPECT_EQ(report.txt_report.font, text_font::fixed);
}

TEST_F(frm_report_test, has_nothing_to_press_before_the_report_is_built) {
    EXPECT_EQ(report.txt_report.text.get(), parsing);
    EXPECT_FALSE(report.cmd_save.enabled);
    EXPECT_FALSE(report.cmd_exit.enabled);
    EXPECT_EQ(built(), "");
}

TEST_F(frm_report_test, shows_the_report) {
    load(usual_edid());
    EXPECT_TRUE(built().ends_with("\r\n\r\nEND."));
    EXPECT_EQ(report.txt_report.text.get(), built());
    EXPECT_TRUE(report.cmd_save.enabled);
    EXPECT_TRUE(report.cmd_exit.enabled);
}

TEST_F(frm_report_test, shows_date_and_time_as_the_system_prints_them) {
    load(usual_edid());
    EXPECT_TRUE(built().starts_with("EDID Analysis Report \r\n" + date_text(m.dates.moment) + " " +
                                    time_text(m.dates.moment) + "\r\n\r\n______ Block 0: VESA Basic Block ______\r\n"));
}

TEST_F(frm_report_test, keeps_saying_that_it_parses_for_a_bad_header) {
    load({});
    EXPECT_EQ(report.txt_report.text.get(), parsing);
    EXPECT_TRUE(built().ends_with("Block 0: NOT VESA Basic Block\r\nHeader = 00 00 00 00 00 00 00 00 "));
    EXPECT_TRUE(report.cmd_save.enabled);
    EXPECT_TRUE(report.cmd_exit.enabled);
}

TEST_F(frm_report_test, ends_at_a_failing_decoder) {
    EXPECT_EQ(failure_of([&] { load(edid_of({{23, {255}}}, usual_edid())); }), failure::overflow);
    EXPECT_EQ(report.txt_report.text.get(), parsing);
    EXPECT_TRUE(built().ends_with("Gamma Value = "));
    EXPECT_FALSE(report.cmd_save.enabled);
    EXPECT_FALSE(report.cmd_exit.enabled);
}

TEST_F(frm_report_test, is_closed_by_its_button_and_by_its_title_bar) {
    for (const event* close : {&report.cmd_exit.on_click, &report.form.on_close}) {
        report.form.visible = true;
        ASSERT_TRUE(*close);
        (*close)();
        EXPECT_FALSE(report.form.visible);
    }
}

using save_report = frm_report_test;

TEST_F(save_report, asks_with_a_dialog) {
    load(usual_edid());
    report.dia_file.filter_index = 2;
    report.dia_file.file_name = "before";
    report.cmd_save.on_click();
    ASSERT_EQ(m.files.shown.size(), 1U);
    const file_dialog_setup& shown = m.files.shown.front();
    EXPECT_EQ(shown.kind, file_dialog_setup::dialog_kind::save);
    EXPECT_EQ(shown.title, "Save EDID Report");
    EXPECT_EQ(shown.filter, "*.txt|*.txt");
    EXPECT_EQ(shown.filter_index, 1);
    EXPECT_EQ(shown.init_dir, "/program");
    EXPECT_EQ(shown.file_name, "");
}

TEST_F(save_report, writes_the_report_and_a_line_end) {
    load(usual_edid());
    save({"a.txt"});
    EXPECT_EQ(directory.content("a.txt"), built() + "\r\n");
    EXPECT_EQ(directory.file_count(), 1U);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(save_report, writes_a_byte_for_each_character) {
    load(edid_of({{18, {255, 80}}, {72, text_descriptor(0xFC, "\xE4\x80\x81")}}, usual_edid()));
    save({"a.txt"});
    const std::string file = directory.content("a.txt");
    EXPECT_EQ(test::value_after("EDID Version = ", file), "?.\x80") << "the first one is outside the set";
    EXPECT_EQ(test::value_after("Monitor Name = ", file), "\xE4\x80\x81");
}

TEST_F(save_report, does_nothing_if_nothing_is_chosen) {
    load(usual_edid());
    report.cmd_save.on_click();
    m.files.choices = {file_choice{"", 1}};
    report.cmd_save.on_click();
    EXPECT_EQ(m.files.shown.size(), 2U);
    EXPECT_EQ(directory.file_count(), 0U);
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(save_report, asks_before_it_writes_over_a_file) {
    load(usual_edid());
    directory.put("a.txt", "old");
    m.boxes.answers = {box_answer::yes};
    save({"a.txt"});
    EXPECT_EQ(m.boxes.all, std::vector{box_exists("a.txt")});
    EXPECT_EQ(directory.content("a.txt"), built() + "\r\n");
}

TEST_F(save_report, asks_about_the_chosen_name_even_if_another_is_written) {
    load(usual_edid());
    directory.put("report", "old");
    m.boxes.answers = {box_answer::yes};
    save({"report"});
    EXPECT_EQ(m.boxes.all, std::vector{box_exists("report")});
    EXPECT_EQ(directory.content("report"), "old");
    EXPECT_EQ(directory.content("re.txt"), built() + "\r\n");
}

TEST_F(save_report, is_silent_about_failures) {
    load(usual_edid());
    for (const std::string& name : {std::string("/a"), std::string("abc"), path("no such folder/a.txt")}) {
        m.files.choices = {file_choice{name, 1}};
        EXPECT_EQ(failure_of([&] { report.cmd_save.on_click(); }), std::nullopt) << name;
    }
    EXPECT_TRUE(m.boxes.all.empty());
    EXPECT_EQ(directory.file_count(), 0U);
    EXPECT_TRUE(report.cmd_save.enabled);
}

#ifndef _WIN32
TEST_F(save_report, leaves_the_old_file_if_the_disk_is_full) {
    load(usual_edid());
    directory.put("a.txt", "old");
    m.boxes.answers = {box_answer::yes};
    {
        const test::file_size_limit full(100);
        EXPECT_EQ(failure_of([&] { save({"a.txt"}); }), std::nullopt);
    }
    EXPECT_EQ(directory.content("a.txt"), "old");
    EXPECT_EQ(directory.file_count(), 1U);
}
#endif

} // namespace
} // namespace desk
