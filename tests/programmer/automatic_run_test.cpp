#include "programmer/automatic_run.h"

#include "programmer/frm_diag.h"
#include "support/edid_fixture.h"
#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::buffer_of;
using test::failure_of;
using test::good_edid;
using test::look_of;
using test::mended;
using test::needing_256;
using test::sentence_of;
using test::strings;
using test::window_text_of;

const std::string writing = "Writing WRITE data ...\r\n";
const std::string written_well = writing + "EWR002 Write completely .\r\n";
const std::string verifying = "Reading sink's edid ...\r\n";
const std::string verified_well = verifying + "Comparing ...\r\nMatch entirely .";

/// An EDID with the serial number in bytes 12 to 15, and the checksum that then belongs to it.
std::string edid_with(std::uint32_t number) {
    std::string edid = good_edid();
    for (std::size_t i = 12; i < 16; ++i, number /= 256)
        edid[i] = static_cast<char>(number % 256);
    return mended(edid, 0);
}

class run_test : public test::edid_fixture {
protected:
    run_test() {
        buffers.write_buff = buffer_of(edid_with(1000));
        view.txt_write.text = window_text_of(edid_with(1000));
        view.cmd_write.enabled = true;
        fields.diag_mode = diag::automatic_run;
        diag.load();
        m.port.take_written();
    }
    void choose(bool write, bool verify, bool step_on = false) {
        run.chk_write.value = write ? 1 : 0;
        run.chk_verify.value = verify ? 1 : 0;
        run.chk_auto_sn.value = step_on ? 1 : 0;
    }
    /// Presses RUN with this number.
    void run_with(const std::string& number) {
        run.txt_sn.text = number;
        run.cmd_run.on_click();
    }
    void take(const std::string& written) override {
        if (written == "EWR001" && follows_write)
            sink = std::string(buffers.write_buff.begin(), buffers.write_buff.end());
        edid_fixture::take(written);
    }
    /// "PASS 1000" with the colors of both marks: "PASS 1000 [40960 40960]".
    std::string marks() const {
        return run.lab_pass.caption.get() + " " + run.lab_pass_sn.caption.get() + " [" +
               std::to_string(run.lab_pass.fore_color.get()) + " " + std::to_string(run.lab_pass_sn.fore_color.get()) +
               "]";
    }
    static std::string passed(const std::string& number) { return "PASS " + number + " [40960 40960]"; }
    static std::string failed(const std::string& number) { return "FAIL " + number + " [192 192]"; }
    /// The commands that went out; "bytes" for all 256 of a WRITE.
    strings commands() {
        strings all;
        for (const std::string& written : m.port.take_written()) {
            if (written.size() == 6)
                all.push_back(written);
            else if (all.empty() || all.back() != "bytes")
                all.emplace_back("bytes");
        }
        return all;
    }
    void expect_all_enabled() {
        EXPECT_TRUE(run.cmd_run.enabled);
        EXPECT_TRUE(diag.cmd_ok.enabled);
    }

    bool follows_write = true; ///< the sink holds what is written into it
    frm_diag diag{fields, buffers, texts, serial, transfers, m.events};
    automatic_run& run = diag.run;
};

TEST_F(run_test, opens_with_the_number_of_the_write_buffer) {
    for (const auto& [number, text] : {std::pair{0U, "0"},
                                       {7U, "7"},
                                       {305419896U, "305419896"},
                                       {2147483648U, "2147483648"},
                                       {4294967295U, "4294967295"}}) {
        buffers.write_buff = buffer_of(edid_with(number));
        buffers.read_buff = buffer_of(edid_with(99));
        run.load();
        EXPECT_EQ(run.txt_sn.text, text);
        EXPECT_EQ(fields.sn_value, number);
    }
}

TEST_F(run_test, reports_in_its_message_box_and_disables_its_ok_while_it_verifies) {
    run.txt_auto_msg.text = "before ";
    transfers.cmd_verify_click();
    EXPECT_TRUE(run.txt_auto_msg.text.get().starts_with("before " + verifying));
    EXPECT_FALSE(diag.cmd_ok.enabled);
    EXPECT_TRUE(run.cmd_run.enabled);
}

class stepping : public run_test {
protected:
    /// The number after "+" or "-", and the message.
    strings after(const button& pressed, const std::string& number) {
        run.txt_sn.text = number;
        run.txt_auto_msg.text = "old";
        pressed.on_click();
        return {run.txt_sn.text, run.txt_auto_msg.text};
    }
    const std::string at_the_top = "Max number of Serial Number is 4294967295";
    const std::string at_the_bottom = "Min number of Serial Number is 0";
};

TEST_F(stepping, increments_the_number) {
    EXPECT_EQ(after(run.cmd_add, "0"), (strings{"1", ""}));
    EXPECT_EQ(after(run.cmd_add, "41"), (strings{"42", ""}));
    EXPECT_EQ(after(run.cmd_add, "4294967294"), (strings{"4294967295", ""}));
    EXPECT_EQ(after(run.cmd_add, "-1"), (strings{"0", ""}));
    EXPECT_EQ(after(run.cmd_add, ""), (strings{"1", ""}));
    EXPECT_EQ(after(run.cmd_add, " 12abc"), (strings{"13", ""}));
    EXPECT_EQ(after(run.cmd_add, "1.5"), (strings{"2.5", ""}));
}

TEST_F(stepping, ends_at_the_top) {
    for (const char* number : {"4294967295", "4294967295.5", "4294967296", "1E20"})
        EXPECT_EQ(after(run.cmd_add, number), (strings{number, at_the_top}));
    EXPECT_EQ(after(run.cmd_add, "4294967294.5"), (strings{"4294967295.5", ""}));
}

TEST_F(stepping, decrements_the_number) {
    EXPECT_EQ(after(run.cmd_sub, "1"), (strings{"0", ""}));
    EXPECT_EQ(after(run.cmd_sub, "42"), (strings{"41", ""}));
    EXPECT_EQ(after(run.cmd_sub, "4294967296"), (strings{"4294967295", ""}));
    EXPECT_EQ(after(run.cmd_sub, " 12abc"), (strings{"11", ""}));
}

TEST_F(stepping, ends_only_at_0_itself) {
    for (const char* number : {"0", "", "abc", "0.0", "-0"})
        EXPECT_EQ(after(run.cmd_sub, number), (strings{number, at_the_bottom}));
    EXPECT_EQ(after(run.cmd_sub, "0.5"), (strings{"-.5", ""}));
    EXPECT_EQ(after(run.cmd_sub, "-3"), (strings{"-4", ""}));
}

TEST_F(stepping, changes_nothing_but_the_number_and_the_message) {
    remember();
    after(run.cmd_add, "5");
    after(run.cmd_sub, "5");
    EXPECT_EQ(changed(), strings{});
}

TEST_F(run_test, without_a_task_clears_its_messages_and_marks) {
    choose(false, false, true);
    run.txt_auto_msg.text = "old";
    run.lab_pass.caption = "PASS";
    run.lab_pass_sn.caption = "7";
    fields.run_ok = true;
    remember();
    const int pumps = m.events.pumps;
    run_with("5");
    EXPECT_EQ(run.txt_auto_msg.text, "");
    EXPECT_EQ(run.lab_pass.caption, "");
    EXPECT_EQ(run.lab_pass_sn.caption, "");
    EXPECT_EQ(run.txt_sn.text, "5");
    EXPECT_EQ(changed(), strings{});
    EXPECT_EQ(m.events.pumps, pumps);
    EXPECT_TRUE(commands().empty());
    expect_all_enabled();
}

TEST_F(run_test, stamps_writes_and_verifies) {
    view.txt_read.text = "r";
    remember();
    run_with("305419896");
    EXPECT_EQ(commands(), (strings{"ESC001", "EWR001", "bytes", "ESC001", "ERD001"}));
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(0x12345678)));
    EXPECT_EQ(sink, edid_with(0x12345678));
    EXPECT_EQ(run.txt_auto_msg.text.get(), written_well + verified_well);
    EXPECT_EQ(marks(), passed("305419896"));
    EXPECT_EQ(run.txt_sn.text, "305419896");
    expect_all_enabled();
    EXPECT_EQ(changed(), (strings{"cmd_write.back_color", "cmd_write.enabled", "read_buff", "read_ok", "run_ok",
                                  "sn_value", "write_buff"}))
        << "the text of the WRITE window and its labels stay as they were";
    EXPECT_EQ(look_of(view.cmd_write), "red disabled");
    EXPECT_TRUE(m.boxes.all.empty());
}

TEST_F(run_test, is_disabled_from_its_first_pump_to_its_end) {
    choose(false, true);
    sink = edid_with(1000);
    run.txt_auto_msg.text = "old";
    run.lab_pass.caption = "FAIL";
    run.lab_pass_sn.caption = "7";
    film([this] {
        return look_of(run.cmd_run) + ", " + look_of(diag.cmd_ok) + ", [" + run.txt_auto_msg.text.get() +
               run.lab_pass.caption.get() + run.lab_pass_sn.caption.get() + "]";
    });
    const int pumps = m.events.pumps;
    run.cmd_run.on_click();
    EXPECT_GT(m.events.pumps, pumps);
    const std::string disabled = "grey disabled, grey disabled, [";
    EXPECT_EQ(frames, (strings{disabled + "]", "ESC001: " + disabled + verifying + "]", disabled + verifying + "]",
                               "ERD001: " + disabled + verifying + "]", disabled + verifying + "]"}));
    expect_all_enabled();
}

TEST_F(run_test, pumps_before_it_writes) {
    choose(true, false);
    film([this] { return look_of(run.cmd_run) + ", " + std::to_string(buffers.write_buff[12]); });
    run_with("5");
    EXPECT_EQ(frames.front(), "grey disabled, " + std::to_string(1000 % 256));
    EXPECT_EQ(frames.at(1), "ESC001: grey disabled, 5");
}

TEST_F(run_test, waits_a_second_before_it_verifies) {
    choose(false, true);
    std::int64_t asked = 0;
    m.port.on_write = [&, usual = m.port.on_write](const std::string& written) {
        usual(written);
        if (written == "ESC001") asked = m.events.now;
    };
    const std::int64_t pressed = m.events.now;
    run.cmd_run.on_click();
    EXPECT_EQ(asked - pressed, m.events.step + 1000 + m.events.step) << "a pump, a second, and the step that ends it";
}

TEST_F(run_test, can_write_alone) {
    choose(true, false);
    run_with("7");
    EXPECT_EQ(commands(), (strings{"ESC001", "EWR001", "bytes"}));
    EXPECT_EQ(run.txt_auto_msg.text.get(), written_well);
    EXPECT_EQ(marks(), passed("7"));
    expect_all_enabled();
}

TEST_F(run_test, can_verify_alone_and_stamps_no_number_then) {
    choose(false, true);
    sink = edid_with(1000);
    fields.run_ok = false;
    remember();
    run_with("7");
    EXPECT_EQ(commands(), (strings{"ESC001", "ERD001"}));
    EXPECT_EQ(run.txt_auto_msg.text.get(), verified_well);
    EXPECT_EQ(marks(), passed("1000")) << "the number of the opening";
    EXPECT_EQ(changed(), (strings{"read_buff", "read_ok", "run_ok"}));
    expect_all_enabled();
}

TEST_F(run_test, verifying_alone_with_a_failed_read_passes) {
    choose(false, true);
    sink = "";
    fields.run_ok = false;
    run_with("7");
    EXPECT_EQ(run.txt_auto_msg.text.get(), verifying + "Read sink's edid fail !\r\n");
    EXPECT_EQ(marks(), passed("1000"));
}

TEST_F(run_test, fails_if_the_sink_reports_an_error_and_does_not_verify) {
    write_result = "EWR003";
    choose(true, true, true);
    run_with("7");
    EXPECT_EQ(commands(), (strings{"ESC001", "EWR001", "bytes"}));
    EXPECT_EQ(run.txt_auto_msg.text.get(), writing + "EWR003 DDC Error,Write Fail !\r\n");
    EXPECT_EQ(marks(), failed("7"));
    EXPECT_EQ(run.txt_sn.text, "7") << "ready for a repeat";
    expect_all_enabled();
}

TEST_F(run_test, fails_if_the_link_fails) {
    unplugged = true;
    run_with("7");
    EXPECT_EQ(commands(), (strings{"ESC001", "ESC001"}));
    EXPECT_EQ(run.txt_auto_msg.text.get(), writing + "Link Error !\r\n");
    EXPECT_EQ(marks(), failed("7"));
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(7))) << "the number is stamped all the same";
    expect_all_enabled();
}

TEST_F(run_test, fails_if_the_verified_bytes_differ) {
    follows_write = false;
    sink = edid_with(7);
    sink[200] = static_cast<char>(sink[200] + 1);
    choose(true, true, true);
    run_with("7");
    EXPECT_EQ(run.txt_auto_msg.text.get(), written_well + verifying + "Comparing ...\r\nThere are 1 wrong data !");
    EXPECT_EQ(marks(), failed("7"));
    EXPECT_EQ(run.txt_sn.text, "7");
    expect_all_enabled();
}

TEST_F(run_test, passes_if_the_verifying_read_fails_after_a_good_write) {
    follows_write = false;
    sink = "";
    run_with("7");
    EXPECT_EQ(run.txt_auto_msg.text.get(), written_well + verifying + "Read sink's edid fail !\r\n");
    EXPECT_EQ(marks(), passed("7"));
    EXPECT_EQ(view.txt_read.text, "\r\nTimeout ! Read fail !");
    expect_all_enabled();
}

TEST_F(run_test, keeps_the_last_result_for_an_answer_that_it_does_not_know) {
    choose(true, false);
    write_result = "EWR009";
    for (const bool before : {true, false}) {
        fields.run_ok = before;
        run_with("7");
        EXPECT_EQ(run.txt_auto_msg.text.get(), writing);
        EXPECT_EQ(marks(), before ? passed("7") : failed("7"));
    }
}

TEST_F(run_test, steps_on_after_a_pass_if_that_is_checked) {
    choose(true, true, true);
    run_with("7");
    EXPECT_EQ(run.txt_sn.text, "8");
    EXPECT_EQ(run.txt_auto_msg.text, "");
    EXPECT_EQ(marks(), passed("7"));
    run.cmd_run.on_click();
    EXPECT_EQ(run.txt_sn.text, "9");
    EXPECT_EQ(marks(), passed("8"));
    EXPECT_EQ(sink, edid_with(8));
    expect_all_enabled();
}

TEST_F(run_test, does_not_step_beyond_the_top) {
    choose(true, true, true);
    run_with("4294967295");
    EXPECT_EQ(marks(), passed("4294967295"));
    EXPECT_EQ(run.txt_sn.text, "4294967295");
    EXPECT_EQ(run.txt_auto_msg.text, "Max number of Serial Number is 4294967295");
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(0xFFFFFFFF)));
}

TEST_F(run_test, takes_the_numeric_start_of_a_text_over_the_whole_range) {
    struct {
        const char* typed;
        std::uint32_t number;
        const char* shown;
    } const cases[] = {{"0", 0, "0"},
                       {"4294967295", 0xFFFFFFFF, "4294967295"},
                       {"65536", 0x10000, "65536"},
                       {"", 0, "0"},
                       {"abc", 0, "0"},
                       {"-", 0, "0"},
                       {" ", 0, "0"},
                       {" 12abc", 12, "12"}};
    for (const auto& [typed, number, shown] : cases) {
        run_with(typed);
        EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(number))) << typed;
        EXPECT_EQ(marks(), passed(shown)) << typed;
        EXPECT_EQ(run.txt_sn.text.get(), typed);
    }
}

TEST_F(run_test, fails_with_the_typed_number_outside_the_range) {
    const std::vector<std::pair<std::string, std::string>> cases = {{"4294967296", "4294967296"},
                                                                    {"-1", "-1"},
                                                                    {"4294967295.5", "4294967295.5"},
                                                                    {"-0.5", "-.5"},
                                                                    {"1E20", "1E+20"}};
    for (const auto& [text, shown] : cases) {
        fields.run_ok = true;
        choose(true, true, true);
        run_with(text);
        EXPECT_EQ(run.txt_auto_msg.text, "Wrong Serial Number !\r\nSN. Range= 0 ~ 4294967295") << text;
        EXPECT_EQ(marks(), failed(shown));
        EXPECT_EQ(run.txt_sn.text.get(), text);
        EXPECT_FALSE(fields.run_ok);
        EXPECT_TRUE(commands().empty());
        EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(1000)));
        expect_all_enabled();
    }
}

TEST_F(run_test, lets_a_fraction_reach_the_lowest_byte) {
    run_with("7.6");
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(8)));
    EXPECT_EQ(marks(), passed("7.6"));
    EXPECT_EQ(failure_of([&] { run_with("255.5"); }), failure::overflow);
}

TEST_F(run_test, ends_the_program_for_a_number_with_which_block_0_needs_256) {
    buffers.write_buff = buffer_of(needing_256(edid_with(5), 0));
    run_with("4");
    EXPECT_EQ(marks(), passed("4"));
    commands();
    EXPECT_EQ(failure_of([&] { run_with("5"); }), failure::overflow);
    EXPECT_EQ(buffers.write_buff[12], 5);
    EXPECT_TRUE(commands().empty());
    EXPECT_FALSE(run.cmd_run.enabled);
    EXPECT_FALSE(diag.cmd_ok.enabled);
    EXPECT_EQ(marks(), "  [40960 40960]") << "emptied, and no new mark";
}

TEST_F(run_test, fails_for_a_number_that_no_double_holds) {
    EXPECT_EQ(failure_of([&] { run_with("1E400"); }), failure::overflow);
    EXPECT_EQ(sentence_of([&] { run_with("1E400"); }),
              "Reading the typed serial number: the number 1E400 is too large.");
}

TEST_F(run_test, is_dropped_from_the_buffer_when_the_window_closes) {
    run_with("7");
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(7)));
    diag.cmd_ok.on_click();
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(1000)));
    serial.get_sn(buff::write);
    EXPECT_EQ(fields.sn_value, 1000);
}

TEST_F(run_test, restores_an_earlier_repair_when_the_window_closes) {
    std::string wrong = edid_with(1000);
    wrong[127] = static_cast<char>(wrong[127] + 1);
    open_bytes("a.bin", wrong);
    view.cmd_recover[0].on_click();
    EXPECT_EQ(buffers.write_buff, buffer_of(wrong));
    fields.diag_mode = diag::automatic_run;
    diag.cmd_ok.on_click();
    EXPECT_EQ(buffers.write_buff, buffer_of(edid_with(1000)));
}

} // namespace
} // namespace desk
