#include "edid/sink_transfers.h"

#include "support/sink_fixture.h"

#include <gtest/gtest.h>

#include <string>

namespace desk {
namespace {

using test::good_edid;
using test::look_of;
using test::sink_write;
using test::strings;

/// WRITE and VERIFY as steps of the automatic run.
class step_of_run : public sink_write {
protected:
    step_of_run() {
        txt_auto_msg.name = "txt_auto_msg";
        cmd_ok.name = "run_ok_button";
        form.add(txt_auto_msg);
        form.add(cmd_ok);
        transfers.frm_diag = {&txt_auto_msg, &cmd_ok};
        fields.diag_mode = 2;
        txt_auto_msg.text = "old";
    }
    void write_with(const std::string& result_of_sink, bool run_ok_before) {
        fields.run_ok = run_ok_before;
        write_result = result_of_sink;
        view.cmd_write.on_click();
    }
    void verify_with(const std::string& data_of_sink, bool run_ok_before) {
        fields.run_ok = run_ok_before;
        sink = data_of_sink;
        txt_auto_msg.text = "wrote|";
        view.cmd_verify.on_click();
    }
    text_box txt_auto_msg;
    button cmd_ok;
};

TEST_F(step_of_run, writes_and_reports_in_the_window_of_the_run) {
    remember();
    write_with("EWR002", false);
    EXPECT_EQ(m.port.take_written(), joined({"ESC001", "EWR001"}, bytes_one_by_one(good_edid())));
    EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nEWR002 Write completely .\r\n");
    EXPECT_TRUE(fields.run_ok);
    EXPECT_EQ(changed(), (strings{"cmd_write.back_color", "cmd_write.enabled", "run_ok", "txt_auto_msg.text"}));
    EXPECT_EQ(look_of(view.cmd_write), "red disabled");
    EXPECT_FALSE(link.tim_rx.enabled);
}

TEST_F(step_of_run, reports_the_sink_s_answer_and_keeps_the_last_result_for_an_unknown_one) {
    for (const bool before : {false, true}) {
        write_with("EWR003", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nEWR003 DDC Error,Write Fail !\r\n");
        EXPECT_FALSE(fields.run_ok);
        write_with("", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nWRITE timeout error !\r\n");
        EXPECT_FALSE(fields.run_ok);
        write_with("EWR009", before);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\n");
        EXPECT_EQ(fields.run_ok, before);
    }
}

TEST_F(step_of_run, takes_an_answer_in_the_149th_round_and_none_in_the_150th) {
    for (const int round : {limit - 1, limit}) {
        answer_in_round(round, "EWR002");
        view.cmd_write.on_click();
        EXPECT_EQ(fields.run_ok, round < limit);
    }
}

TEST_F(step_of_run, reports_a_failed_link_and_leaves_its_button_red_and_disabled) {
    try_link_failures("EWR001", [this](const strings& written) {
        remember();
        write_with("EWR002", true);
        EXPECT_EQ(txt_auto_msg.text, "Writing WRITE data ...\r\nLink Error !\r\n");
        EXPECT_FALSE(fields.run_ok);
        EXPECT_EQ(look_of(view.cmd_write), "red disabled");
        EXPECT_EQ(m.port.take_written(), written);
        EXPECT_FALSE(view.fra_compare.visible);
    });
}

TEST_F(step_of_run, verifies_and_reports_below_the_write) {
    remember();
    verify_with(good_edid(), false);
    EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nComparing ...\r\nMatch entirely .");
    EXPECT_TRUE(fields.run_ok);
    EXPECT_EQ(changed(), (strings{"read_buff", "run_ok", "run_ok_button.enabled", "txt_auto_msg.text"}));
    EXPECT_FALSE(cmd_ok.enabled);
}

TEST_F(step_of_run, fails_with_the_count_of_the_bytes_that_differ) {
    std::string other = good_edid();
    other[255] = static_cast<char>(other[255] + 1);
    verify_with(other, true);
    EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nComparing ...\r\nThere are 1 wrong data !");
    EXPECT_FALSE(fields.run_ok);
}

TEST_F(step_of_run, leaves_the_run_unchanged_if_the_read_fails) {
    for (const bool before : {false, true}) {
        view.txt_read.text = "r";
        verify_with("", before);
        EXPECT_EQ(txt_auto_msg.text, "wrote|Reading sink's edid ...\r\nRead sink's edid fail !\r\n");
        EXPECT_EQ(view.txt_read.text, "r\r\nTimeout ! Read fail !");
        EXPECT_EQ(fields.run_ok, before);
        EXPECT_FALSE(fields.read_ok);
    }
}

TEST_F(step_of_run, disables_the_window_s_ok_before_it_reads) {
    film([this] { return (cmd_ok.enabled ? "enabled " : "disabled ") + txt_auto_msg.text.get(); });
    verify_with(good_edid(), true);
    EXPECT_EQ(frames.front(), "ESC001: disabled wrote|Reading sink's edid ...\r\n");
    EXPECT_EQ(look_of(view.cmd_verify), "grey enabled");
}

} // namespace
} // namespace desk
