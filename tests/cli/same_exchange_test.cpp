// Each command writes the same bytes as the operator's clicks on the desk.

#include "cli/both_desks.h"
#include "controls/kinds.h"
#include "platform/sha256.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace desk {
namespace {

using strings = std::vector<std::string>;
using cli::json;

class same_exchange : public testing::Test {
protected:
    /// Runs the command and the clicks; both generators start alike and end alike.
    json expect_same(const std::string& line, const std::function<void()>& clicks) {
        cli_side.port->generator.state = by_hand.port.generator.state;
        const auto answers = cli_side.run(line);
        clicks();
        cli_side.port->finish();
        by_hand.port.finish();
        EXPECT_EQ(cli_side.port->written, by_hand.port.written) << line;
        EXPECT_EQ(cli_side.port->generator.state, by_hand.port.generator.state) << line;
        EXPECT_TRUE(by_hand.m.boxes.all.empty());
        EXPECT_FALSE(answers.empty());
        return answers.empty() ? json() : answers.back();
    }
    void expect_written(const strings& bytes) { EXPECT_EQ(cli_side.port->written, bytes); }

    std::string put(const std::string& name, const bytes& content) const {
        cli_side.folder.put(name, string_of(content));
        return cli_side.folder.plain_name() + "/" + name;
    }
    generator_state& state() { return by_hand.port.generator.state; }
    bytes first_edid() { return *state().sinks.at(0).edid; }

    test::operated_desk by_hand;
    test::commanded_desk cli_side;
    frm_main& desk = by_hand.desk;
};

TEST_F(same_exchange, start_sends_nothing) {
    cli_side.session.desk();
    EXPECT_EQ(cli_side.port->opened, 1);
    expect_written({});
    EXPECT_EQ(by_hand.port.written, strings{});
}

TEST_F(same_exchange, version) {
    const json answer = expect_same("version", [&] {
        by_hand.press(desk.about.cmd_about);
        by_hand.press(desk.about.cmd_about_ok);
    });
    expect_written({"VER001"});
    EXPECT_EQ(answer.dump(), R"({"program":"v1.3G","firmware":"v1.2"})");
}

TEST_F(same_exchange, lists_need_no_port) {
    const json timings = cli_side.run("list timings").back();
    EXPECT_EQ(timings["rows"].size(), 25U);
    EXPECT_EQ(timings["rows"][1].dump(), R"({"row":2,"name":"[02] timing"})");
    EXPECT_EQ(cli_side.run("list patterns").back()["rows"].size(), 45U);
    EXPECT_EQ(cli_side.port->opened, 0);
}

TEST_F(same_exchange, status) {
    state().timing = 3;
    state().pattern = 44;
    const json answer = expect_same("status", [&] { by_hand.press(desk.status_frame.cmd_refresh); });
    expect_written({"TIM999", "PAT999", "OUT999", "HDC999"});
    EXPECT_EQ(answer.dump(), R"({"timing":{"row":3,"name":"[03] timing"},"pattern":{"row":44,"name":"[44] pattern"},)"
                             R"("output":"HDMI","hdcp":"OFF"})");
}

TEST_F(same_exchange, set_timing) {
    const json answer = expect_same("set timing 4", [&] {
        by_hand.press(desk.catalogue.cmd_timing);
        by_hand.choose(desk.catalogue.lstv_timing, 4);
        by_hand.press(desk.desk_frame.cmd_run);
    });
    expect_written({"TIM004"});
    EXPECT_EQ(answer.dump(), R"({"row":4,"name":"[04] timing"})");
    EXPECT_EQ(cli_side.port->generator.state.timing, 4);
}

TEST_F(same_exchange, set_pattern_by_a_part_of_its_name) {
    const json answer = expect_same("set pattern '[13'", [&] {
        by_hand.press(desk.catalogue.cmd_pattern);
        by_hand.choose(desk.catalogue.lstv_pattern, 13);
        by_hand.press(desk.desk_frame.cmd_run);
    });
    expect_written({"PAT013"});
    EXPECT_EQ(answer["row"], 13);
}

TEST_F(same_exchange, a_row_that_does_not_exist_opens_no_port) {
    for (const std::string line : {"set timing 26", "set pattern 46", "set timing nonsense", "set timing timing",
                                   "favorites timings 26", "favorites patterns 1 46"}) {
        EXPECT_EQ(cli_side.failure_of(line).status(), cli::outcome::misused) << line;
    }
    EXPECT_EQ(cli_side.port->opened, 0);
}

TEST_F(same_exchange, panel) {
    const json answer = expect_same("panel", [&] {
        by_hand.press(desk.cmd_setup);
        by_hand.press(desk.desk_frame.cmd_download);
    });
    expect_written(
        {"TIM999", "PAT999", "OUT999", "HDC999", "ASC999", "PCM999", "CSC999", "DEE999", "ATO999", "FAV999"});
    // what the generator starts with
    EXPECT_EQ(answer.dump(), R"({"output":"hdmi","hdcp":"off","audio":"int-sine","lpcm":"2","color-space":"rgb444",)"
                             R"("deep-color":"8","autorun":"off","favorite":"off"})");
}

TEST_F(same_exchange, every_switch_of_the_panel) {
    struct press {
        std::string line;
        button& pressed;
        strings bytes;
    };
    panel& p = desk.panel;
    const std::vector<press> presses = {
        {"output pc", p.cmd_out[0], {"OUT001"}},
        {"output hdmi", p.cmd_out[3], {"OUT004"}},
        {"hdcp on", p.cmd_hdcp[1], {"HDC001"}},
        {"hdcp off", p.cmd_hdcp[0], {"HDC000"}},
        {"audio ext-7.1", p.cmd_asc[0], {"ASC001", "PCM999"}},
        {"audio ext-opt", p.cmd_asc[1], {"ASC002", "PCM999"}},
        {"lpcm 2", p.cmd_lpcm[0], {"PCM001"}},
        {"color-space yuv422", p.cmd_csc[2], {"CSC003"}},
        {"deep-color 10", p.cmd_deep[1], {"DEE002"}},
        {"autorun on", p.cmd_auto_go[1], {"ATO001"}},
        {"favorite on", p.cmd_fav[1], {"FAV001"}},
    };
    for (const press& one : presses) {
        by_hand.port.written.clear();
        cli_side.port->written.clear();
        const json answer = expect_same("panel " + one.line, [&] {
            by_hand.press(desk.cmd_setup);
            by_hand.press(one.pressed);
        });
        EXPECT_EQ(cli_side.port->written, one.bytes) << one.line;
        const auto group_and_value = cli::words_of_line(one.line);
        EXPECT_EQ(answer[group_and_value[0]], group_and_value[1]) << answer.dump();
    }
}

TEST_F(same_exchange, a_press_knows_only_its_own_group) {
    EXPECT_EQ(cli_side.run("panel deep-color 12").back().dump(),
              R"({"output":null,"hdcp":null,"audio":null,"lpcm":null,"color-space":null,"deep-color":"12",)"
              R"("autorun":null,"favorite":null})");
}

TEST_F(same_exchange, panel_reset) {
    state().reset_time = std::chrono::milliseconds(50);
    const json answer = expect_same("panel reset", [&] {
        by_hand.press(desk.cmd_setup);
        by_hand.press(desk.panel.cmd_reset);
    });
    expect_written({"RST001"});
    EXPECT_EQ(answer["output"], nullptr);
}

TEST_F(same_exchange, color) {
    state().color_r = 1;
    state().color_g = 2;
    state().color_b = 3;
    const json answer = expect_same("color", [&] {
        by_hand.press(desk.catalogue.cmd_pattern);
        by_hand.choose(desk.catalogue.lstv_pattern, 13);
        by_hand.press(desk.desk_frame.cmd_download);
    });
    expect_written({"CSC999", "CRR999", "CRG999", "CRB999"});
    EXPECT_EQ(answer.dump(), R"({"mode":"rgb","values":[1,2,3]})");
}

TEST_F(same_exchange, color_of_other_values) {
    state().color_space = 2;
    const json answer = expect_same("color 010 128 255", [&] {
        by_hand.press(desk.catalogue.cmd_pattern);
        by_hand.choose(desk.catalogue.lstv_pattern, 13);
        by_hand.press(desk.desk_frame.cmd_download);
        by_hand.move(desk.desk_frame.hsr_color_setting[0], 10);
        // the second one is there already
        by_hand.move(desk.desk_frame.hsr_color_setting[2], 255);
    });
    expect_written({"CSC999", "CRR999", "CRG999", "CRB999", "CRR010", "CRB255"});
    EXPECT_EQ(answer.dump(), R"({"mode":"ycbcr","values":[10,128,255]})");
    EXPECT_EQ(cli_side.port->generator.state.color_r, 10);
    EXPECT_EQ(cli_side.port->generator.state.color_b, 255);
}

TEST_F(same_exchange, string) {
    const json answer = expect_same("string", [&] {
        by_hand.press(desk.catalogue.cmd_pattern);
        by_hand.choose(desk.catalogue.lstv_pattern, 41);
        by_hand.press(desk.desk_frame.cmd_download);
    });
    expect_written({"MOT999"});
    EXPECT_EQ(answer.dump(), R"({"text":"VELOTRACE"})");
}

TEST_F(same_exchange, string_of_other_texts) {
    for (const std::string text : {"HELLO", "", "[a,b]", "{}", "%%", "++", "/x", "123456789012"}) {
        by_hand.port.written.clear();
        cli_side.port->written.clear();
        const json answer = expect_same("string '" + text + "'", [&] {
            by_hand.press(desk.catalogue.cmd_pattern);
            by_hand.choose(desk.catalogue.lstv_pattern, 41);
            by_hand.type(desk.desk_frame.txt_motion_str, text);
            by_hand.press(desk.desk_frame.cmd_upload);
        });
        expect_written({"MOT001", text + std::string(12 - text.size(), '\0')});
        EXPECT_EQ(answer["text"], text);
    }
}

TEST_F(same_exchange, a_string_in_the_code_of_the_generator) {
    cli_side.run("string '\xC3\xA9\xE2\x82\xAC'");
    EXPECT_EQ(cli_side.port->written.back(), std::string("\xE9\x80") + std::string(10, '\0'));
    EXPECT_EQ(cli_side.run("string").back()["text"], "\xC3\xA9\xE2\x82\xAC");
}

TEST_F(same_exchange, favorites) {
    state().favorite_timings.at(1) = true;
    const json answer = expect_same("favorites timings", [&] {
        by_hand.press(desk.favorites.cmd_fav_timing);
        by_hand.press(desk.desk_frame.cmd_download);
    });
    expect_written({"FT+999"});
    EXPECT_EQ(answer.dump(), R"({"rows":[2]})");
}

TEST_F(same_exchange, favorites_by_rows) {
    state().favorite_timings.at(1) = true;
    const json answer = expect_same("favorites timings 1 05", [&] {
        by_hand.press(desk.favorites.cmd_fav_timing);
        by_hand.tick(desk.catalogue.lstv_timing, 1);
        by_hand.tick(desk.catalogue.lstv_timing, 5);
        by_hand.press(desk.desk_frame.cmd_run);
    });
    EXPECT_EQ(answer.dump(), R"({"rows":[1,5]})");
    std::vector<bool> first_and_fifth(25);
    first_and_fifth.at(0) = first_and_fifth.at(4) = true;
    EXPECT_EQ(cli_side.port->generator.state.favorite_timings, first_and_fifth);
}

TEST_F(same_exchange, favorites_all) {
    const json answer = expect_same("favorites patterns --all", [&] {
        by_hand.press(desk.favorites.cmd_fav_pattern);
        by_hand.press(desk.desk_frame.cmd_check_all);
        by_hand.press(desk.desk_frame.cmd_run);
    });
    EXPECT_EQ(answer["rows"].size(), 45U);
    EXPECT_EQ(cli_side.port->generator.state.favorite_patterns, std::vector<bool>(45, true));
}

TEST_F(same_exchange, favorites_none) {
    expect_same("favorites timings --none", [&] {
        by_hand.press(desk.favorites.cmd_fav_timing);
        by_hand.press(desk.desk_frame.cmd_check_none);
        by_hand.press(desk.desk_frame.cmd_run);
    });
}

TEST_F(same_exchange, autorun) {
    state().autorun_rows.at(0) = {4, 7, 5};
    state().autorun_rows.at(31) = {1, 45, 10};
    const json answer = expect_same("autorun", [&] {
        by_hand.press(desk.autorun.cmd_auto);
        by_hand.press(desk.desk_frame.cmd_download);
    });
    expect_written({"ATS999"});
    EXPECT_EQ(answer.dump(), R"({"steps":[{"step":1,"timing":4,"pattern":7,"seconds":5},)"
                             R"({"step":32,"timing":1,"pattern":45,"seconds":10}]})");
    EXPECT_EQ(cli_side.text_of("autorun"), "step,timing,pattern,seconds\n1,4,7,5\n32,1,45,10\n");
}

TEST_F(same_exchange, autorun_of_a_file) {
    const std::string file = put("steps.csv", bytes_of("step,timing,pattern,seconds\r\n2,4,7,5\r\n1,1,45,10\r\n"));
    const json answer = expect_same("autorun " + file, [&] {
        by_hand.press(desk.autorun.cmd_auto);
        by_hand.choose(desk.autorun.lstv_auto, 1);
        by_hand.choose(desk.catalogue.cbo_timing, 0);
        by_hand.choose(desk.catalogue.cbo_pattern, 44);
        by_hand.choose(desk.autorun.cbo_interval, 1);
        by_hand.press(desk.autorun.cmd_replace);
        by_hand.choose(desk.autorun.lstv_auto, 2);
        by_hand.choose(desk.catalogue.cbo_timing, 3);
        by_hand.choose(desk.catalogue.cbo_pattern, 6);
        by_hand.choose(desk.autorun.cbo_interval, 0);
        by_hand.press(desk.autorun.cmd_replace);
        by_hand.press(desk.desk_frame.cmd_run);
    });
    EXPECT_EQ(answer.dump(), R"({"steps":[{"step":1,"timing":1,"pattern":45,"seconds":10},)"
                             R"({"step":2,"timing":4,"pattern":7,"seconds":5}]})");
    const auto& rows = cli_side.port->generator.state.autorun_rows;
    EXPECT_EQ(rows.at(0), (autorun_row{1, 45, 10}));
    EXPECT_EQ(rows.at(1), (autorun_row{4, 7, 5}));
}

TEST_F(same_exchange, autorun_of_a_bad_file_opens_no_port) {
    const auto problem_of = [&](const std::string& content) {
        const cli::command_failure f =
            cli_side.failure_of("autorun " + put("steps.csv", bytes_of("step,timing,pattern,seconds\n" + content)));
        EXPECT_EQ(f.status(), cli::outcome::unusable);
        const std::string text = f.what();
        return text.substr(text.find("steps.csv, ") + 11);
    };
    EXPECT_EQ(problem_of("33,1,1,1\n"), "line 2: step 33 is not in 1 to 32");
    EXPECT_EQ(problem_of("1,26,1,1\n"), "line 2: timing 26 is not in 1 to 25");
    EXPECT_EQ(problem_of("\n1,1,46,1\n"), "line 3: pattern 46 is not in 1 to 45");
    EXPECT_TRUE(
        problem_of("1,1,1,0\n").starts_with("line 2: 0 seconds are not on offer: 5 10 15 20 25 30 40 50 60 70 "));
    EXPECT_EQ(cli_side.failure_of("autorun missing.csv").status(), cli::outcome::unusable);
    EXPECT_EQ(cli_side.port->opened, 0);
}

TEST_F(same_exchange, edid_read) {
    const strings sources{"hdmi-out", "hdmi-in", "vga"};
    for (std::size_t place = 0; place < sources.size(); ++place) {
        by_hand.port.written.clear();
        cli_side.port->written.clear();
        const std::string file = cli_side.folder.plain_name() + "/unit.bin";
        const json answer = expect_same("edid read --source " + sources.at(place) + " " + file, [&] {
            by_hand.press(desk.cmd_edid);
            by_hand.choose(desk.workbench.opt_edid_src.at(place));
            by_hand.press(desk.workbench.cmd_read);
        });
        expect_written({"ESC00" + std::to_string(place + 1), "ERD001"});
        const bytes edid = *state().sinks.at(place).edid;
        EXPECT_EQ(cli_side.folder.content("unit.bin"), string_of(edid));
        EXPECT_EQ(answer["file"], file);
        EXPECT_EQ(answer["sha256"], sha256(edid));
    }
}

TEST_F(same_exchange, edid_read_reports_both_checksums) {
    const std::string file = cli_side.folder.plain_name() + "/unit.hex";
    bytes edid = first_edid();
    EXPECT_EQ(cli_side.run("edid read " + file).back()["checksums"].dump(), "[true,true]");
    for (const std::size_t changed : {std::size_t{20}, std::size_t{200}}) {
        bytes wrong = edid;
        ++wrong.at(changed);
        cli_side.port->generator.state.sinks.at(0).edid = wrong;
        EXPECT_EQ(cli_side.run("edid read " + file).back()["checksums"].dump(),
                  changed < 128 ? "[false,true]" : "[true,false]");
    }
}

TEST_F(same_exchange, edid_write_and_verify) {
    bytes edid = first_edid();
    ++edid.at(12);
    --edid.at(127);
    const std::string file = put("unit.bin", edid);
    const json answer = expect_same("edid write --source hdmi-in " + file, [&] {
        by_hand.press(desk.cmd_edid);
        by_hand.choose(desk.workbench.opt_edid_src.at(1));
        by_hand.m.files.choices.push_back(file_choice{file, 1});
        by_hand.press(desk.workbench.cmd_load);
        by_hand.press(desk.workbench.cmd_write);
        by_hand.press(desk.workbench.cmd_ok);
        by_hand.press(desk.workbench.cmd_verify);
        by_hand.press(desk.workbench.cmd_ok);
    });
    EXPECT_EQ(answer.dump(), R"({"verified":true})");
    strings expected{"ESC002", "EWR001"};
    for (const std::uint8_t byte : edid)
        expected.push_back(string_of({byte}));
    expected.insert(expected.end(), {"ESC002", "ERD001"});
    expect_written(expected);
    EXPECT_EQ(cli_side.port->generator.state.sinks.at(1).edid, edid);
}

TEST_F(same_exchange, edid_write_alone) {
    const std::string file = put("unit.bin", first_edid());
    const json answer = expect_same("edid write --no-verify " + file, [&] {
        by_hand.press(desk.cmd_edid);
        by_hand.choose(desk.workbench.opt_edid_src.at(0));
        by_hand.m.files.choices.push_back(file_choice{file, 1});
        by_hand.press(desk.workbench.cmd_load);
        by_hand.press(desk.workbench.cmd_write);
        by_hand.press(desk.workbench.cmd_ok);
    });
    EXPECT_EQ(answer.dump(), R"({"verified":null})");
}

TEST_F(same_exchange, edid_verify) {
    bytes edid = first_edid();
    for (const std::size_t place : {std::size_t{0}, std::size_t{100}, std::size_t{255}})
        ++edid.at(place);
    const std::string file = put("unit.bin", edid);
    const cli::command_failure f = cli_side.failure_of("edid verify " + file);
    EXPECT_EQ(f.status(), cli::outcome::failed);
    EXPECT_EQ(f.fields().dump(), R"({"verified":false,"differences":3})");
    by_hand.press(desk.cmd_edid);
    by_hand.choose(desk.workbench.opt_edid_src.at(0));
    by_hand.m.files.choices.push_back(file_choice{file, 1});
    by_hand.press(desk.workbench.cmd_load);
    by_hand.press(desk.workbench.cmd_verify);
    EXPECT_EQ(cli_side.port->written, by_hand.port.written);
    expect_written({"ESC001", "ERD001"});
    EXPECT_EQ(cli_side.run("edid verify " + put("unit.bin", first_edid())).back().dump(), R"({"verified":true})");
}

TEST_F(same_exchange, edid_erase) {
    state().erase_time = std::chrono::milliseconds(200);
    const json answer = expect_same("edid erase --yes --source vga", [&] {
        by_hand.press(desk.cmd_edid);
        by_hand.choose(desk.workbench.opt_edid_src.at(2));
        by_hand.m.boxes.answers.push_back(box_answer::yes);
        by_hand.press(desk.workbench.cmd_erase);
        by_hand.m.boxes.all.clear();
    });
    expect_written({"ESC003", "ERS001"});
    EXPECT_EQ(answer.dump(), "{}");
}

TEST_F(same_exchange, edid_stamp) {
    const std::string file = put("unit.bin", first_edid());
    cli_side.port->generator.state = state();
    const auto answers = cli_side.run("edid stamp --serial 0100 --count 2 --step 5 " + file);
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].dump(), R"({"serial":100,"result":"PASS"})");
    EXPECT_EQ(answers[1].dump(), R"({"serial":105,"result":"PASS"})");

    by_hand.press(desk.cmd_edid);
    by_hand.choose(desk.workbench.opt_edid_src.at(0));
    by_hand.m.files.choices.push_back(file_choice{file, 1});
    by_hand.press(desk.workbench.cmd_load);
    by_hand.m.windows.on_show = [&](window& w) {
        for (const char* const serial : {"100", "105"}) {
            by_hand.type(*as<text_box>(w.find("txt_sn")), serial);
            by_hand.press(*as<button>(w.find("cmd_run")));
        }
        by_hand.press(*as<button>(w.find("cmd_ok")));
    };
    by_hand.press(desk.workbench.cmd_w_auto);
    EXPECT_EQ(cli_side.port->written, by_hand.port.written);
    EXPECT_EQ(cli_side.port->generator.state, state());
    // bytes 12 to 15 of an EDID, lowest byte first
    const bytes stamped = *cli_side.port->generator.state.sinks.at(0).edid;
    EXPECT_EQ(bytes(stamped.begin() + 12, stamped.begin() + 16), (bytes{105, 0, 0, 0}));
}

TEST_F(same_exchange, a_session_opens_the_port_once) {
    cli_side.run("set timing 1");
    cli_side.run("edid read " + cli_side.folder.plain_name() + "/unit.hex");
    cli_side.run("panel");
    cli_side.run("set timing 2");
    EXPECT_EQ(cli_side.port->opened, 1);
}

} // namespace
} // namespace desk
