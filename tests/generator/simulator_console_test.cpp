#include "generator/simulator_console.h"

#include "runtime/files.h"

#include "support/text_of_answer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace desk {
namespace {

using test::text_of;

class simulator_console_test : public testing::Test {
protected:
    std::string tell(std::string_view command) { return text_of(faults.command(command)); }

    simulated_generator generator{76, 48};
    fault_injector faults{generator};
    desk::cable cable;
    simulator_console console{generator, faults, cable};
};

TEST_F(simulator_console_test, changes_nothing_by_default) {
    EXPECT_EQ(tell("TIM007"), "TIM007");
    EXPECT_EQ(tell("ABC123"), "");
    EXPECT_EQ(console.take_line(""), "");
    EXPECT_EQ(console.take_line("  \t\r\n"), "");
}

TEST_F(simulator_console_test, drops_answers_to_commands_that_are_carried_out) {
    EXPECT_FALSE(console.take_line("drop").empty());
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_EQ(tell("TIM999"), "TIM007");
    console.take_line("drop 2");
    EXPECT_EQ(tell("PAT001"), "");
    EXPECT_EQ(tell("ABC123"), ""); // never answered, so not counted
    EXPECT_EQ(tell("PAT001"), "");
    EXPECT_EQ(tell("PAT001"), "PAT001");
}

TEST_F(simulator_console_test, garbles_one_byte) {
    console.take_line("garble");
    const std::string bad = tell("TIM007");
    ASSERT_EQ(bad.size(), 6U);
    int differences = 0;
    for (std::size_t i = 0; i < 6; ++i)
        differences += bad[i] != "TIM007"[i] ? 1 : 0;
    EXPECT_EQ(differences, 1);
    EXPECT_EQ(bad.substr(0, 3), "TIM");
    // the desk must notice: a digit is replaced
    EXPECT_NE(bad.substr(3).find_first_not_of("0123456789"), std::string::npos);
    EXPECT_EQ(tell("TIM007"), "TIM007");
}

TEST_F(simulator_console_test, garbles_the_data_of_a_read) {
    console.take_line("garble 1");
    const answer parts = faults.command("ERD001");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(string_of(parts[0].data), "ERD001");
    const bytes edid = generator.state.sinks[0].edid.value();
    int differences = 0;
    for (std::size_t i = 0; i < edid.size(); ++i)
        differences += parts[1].data[i] != edid[i] ? 1 : 0;
    EXPECT_EQ(differences, 1);
}

TEST_F(simulator_console_test, shortens_answers) {
    console.take_line("short 8");
    EXPECT_EQ(tell("ATS999").size(), 760U);
    EXPECT_EQ(tell("ATS999").size(), 768U);
    console.take_line("short 1 2");
    EXPECT_EQ(tell("TIM007"), "TIM00");
    EXPECT_EQ(tell("TIM007"), "TIM00");
    EXPECT_EQ(tell("TIM007"), "TIM007");
    console.take_line("short 999");
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_EQ(console.take_line("short"), "short: a word is missing. Try help.");
}

TEST_F(simulator_console_test, shortens_and_garbles_an_answer_of_nothing) {
    console.take_line("short 6");
    console.take_line("garble");
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_NE(tell("TIM007"), "TIM007") << "there was no byte to change before";
    EXPECT_EQ(tell("TIM007"), "TIM007");
}

TEST_F(simulator_console_test, leaves_one_command_unanswered) {
    EXPECT_EQ(console.take_line("refuse OUT999 none"), "OUT999 is not answered.");
    console.take_line("drop 1");
    EXPECT_EQ(tell("OUT999"), "") << "never answered, so not counted";
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_EQ(tell("TIM007"), "TIM007");
    EXPECT_NE(console.take_line("state").find("refuses OUT999 with silence"), std::string::npos);
    console.take_line("refuse OUT999 off");
    EXPECT_EQ(tell("OUT999").substr(0, 3), "OUT");
}

TEST_F(simulator_console_test, delays_answers) {
    console.take_line("delay 500 2");
    EXPECT_EQ(faults.command("TIM007").at(0).pause, std::chrono::milliseconds(501));
    EXPECT_EQ(faults.command("TIM007").at(0).pause, std::chrono::milliseconds(501));
    EXPECT_EQ(faults.command("TIM007").at(0).pause, std::chrono::milliseconds(1));
    console.take_line("delay 40");
    EXPECT_EQ(faults.command("TIM007").at(0).pause, std::chrono::milliseconds(41));
    EXPECT_EQ(faults.command("TIM007").at(0).pause, std::chrono::milliseconds(1));
}

TEST_F(simulator_console_test, refuses_commands) {
    tell("ASC001");
    console.take_line("refuse PCM002 PCM100");
    console.take_line("refuse TIM005 TIM001");
    EXPECT_EQ(tell("PCM002"), "PCM100");
    EXPECT_EQ(tell("PCM002"), "PCM100");
    EXPECT_EQ(tell("PCM999"), "PCM001");
    EXPECT_EQ(tell("PCM003"), "PCM003");
    EXPECT_EQ(tell("TIM005"), "TIM001");
    console.take_line("refuse PCM002 off");
    EXPECT_EQ(tell("PCM002"), "PCM002");
    console.take_line("refuse off");
    EXPECT_EQ(tell("TIM005"), "TIM005");
}

TEST_F(simulator_console_test, loses_the_block_of_a_refused_command) {
    const bytes before = generator.state.sinks[0].edid.value();
    console.take_line("refuse EWR001 EWR009");
    EXPECT_EQ(tell("EWR001"), "EWR009");
    EXPECT_TRUE(faults.raw_block("EWR001", bytes(256, 0)).empty());
    EXPECT_EQ(generator.state.sinks[0].edid, before);
}

TEST_F(simulator_console_test, bends_the_answer_to_a_raw_block) {
    console.take_line("drop 1");
    EXPECT_TRUE(faults.raw_block("EWR001", bytes(256, 0)).empty());
    EXPECT_EQ(text_of(faults.raw_block("EWR001", bytes(256, 1))), "EWR002");
    EXPECT_EQ(generator.state.sinks[0].edid, bytes(256, 1));
}

TEST_F(simulator_console_test, can_be_silent) {
    console.take_line("silent");
    EXPECT_EQ(tell("TIM007"), "");
    console.take_line("speak");
    EXPECT_EQ(tell("TIM999"), "TIM007");
}

TEST_F(simulator_console_test, reports_unplug_plug_and_quit) {
    EXPECT_FALSE(cable.unplugged());
    console.take_line("unplug");
    EXPECT_TRUE(cable.unplugged());
    console.take_line("plug");
    EXPECT_FALSE(cable.unplugged());
    EXPECT_FALSE(console.quit_asked());
    console.take_line("quit");
    EXPECT_TRUE(console.quit_asked());
}

TEST_F(simulator_console_test, changes_sinks) {
    console.take_line("sink 2 none");
    EXPECT_FALSE(generator.state.sinks[1].edid.has_value());
    console.take_line("sink 2 first");
    EXPECT_EQ(generator.state.sinks[1].edid, simulated_generator(1, 1).state.sinks[1].edid);

    const auto file = std::filesystem::temp_directory_path() / "velotrace sink test.bin";
    replace_whole_file(file, std::string(128, 'a'));
    console.take_line("sink 3 " + utf8_from_path(file));
    bytes expected(256, 0xFF);
    std::fill_n(expected.begin(), 128, 'a');
    EXPECT_EQ(generator.state.sinks[2].edid, expected);

    replace_whole_file(file, std::string(129, 'a'));
    EXPECT_NE(console.take_line("sink 1 " + utf8_from_path(file)).find("129"), std::string::npos);
    std::filesystem::remove(file);
    EXPECT_FALSE(console.take_line("sink 1 " + utf8_from_path(file)).empty());
    EXPECT_FALSE(console.take_line("sink 1 /").empty());
    EXPECT_EQ(generator.state.sinks[0].edid, simulated_generator(1, 1).state.sinks[0].edid);
}

TEST_F(simulator_console_test, shows_the_bytes_of_a_sink) {
    generator.state.sinks[2].edid = bytes(256, 0x0A);
    std::string digits;
    for (int i = 0; i < 256; ++i)
        digits += "0A";
    EXPECT_EQ(console.take_line("sink 3"), digits);
    console.take_line("sink 3 none");
    EXPECT_EQ(console.take_line("sink 3"), "none");
}

TEST_F(simulator_console_test, protects_sinks) {
    console.take_line("protect 1 on");
    EXPECT_EQ(text_of(faults.raw_block("EWR001", bytes(256, 0))), "EWR003");
    console.take_line("protect 1 off");
    EXPECT_EQ(text_of(faults.raw_block("EWR001", bytes(256, 0))), "EWR002");
}

TEST_F(simulator_console_test, sets_times) {
    console.take_line("erase 250");
    console.take_line("think 7");
    const answer parts = faults.command("ERS001");
    EXPECT_EQ(parts.at(0).pause, std::chrono::milliseconds(7));
    EXPECT_EQ(parts.at(1).pause, std::chrono::milliseconds(250));
}

TEST_F(simulator_console_test, shows_the_state) {
    tell("TIM031");
    console.take_line("sink 2 none");
    console.take_line("refuse PCM002 PCM100");
    const std::string text = console.take_line("state");
    EXPECT_NE(text.find("timing 31,"), std::string::npos);
    EXPECT_NE(text.find("\"VELOTRACE\""), std::string::npos);
    EXPECT_NE(text.find("sink 2 (HDMI/DVI IN): none"), std::string::npos);
    EXPECT_NE(text.find("refuses PCM002 with PCM100"), std::string::npos);
}

TEST_F(simulator_console_test, helps_with_every_command) {
    const std::string text = console.take_line("help");
    for (const char* name : {"drop", "garble", "delay", "refuse", "faults", "silent", "speak", "unplug", "plug", "sink",
                             "protect", "erase", "think", "state", "quit"})
        EXPECT_NE(text.find(name), std::string::npos) << name;
    for (const fault f : all_faults)
        EXPECT_NE(text.find("  " + std::string(fault_name(f)) + "  "), std::string::npos) << fault_name(f);
}

TEST_F(simulator_console_test, injects_random_faults) {
    EXPECT_EQ(console.take_line("faults 100 seed 7 drop"), "100 % of answers are faulty, seed 7: drop");
    EXPECT_EQ(tell("TIM007"), "");
    EXPECT_EQ(faults.last_fault(), fault::drop);
    EXPECT_NE(console.take_line("state").find("\n100 % of answers are faulty, seed 7: drop\n  drop: 1"),
              std::string::npos);
    console.take_line("faults 100 forget");
    EXPECT_EQ(text_of(faults.raw_block("EWR001", bytes(256, 1))), "EWR002");
    EXPECT_NE(generator.state.sinks[0].edid, bytes(256, 1));
    EXPECT_EQ(console.take_line("faults off"), "No faults by chance.");
    EXPECT_EQ(tell("TIM008"), "TIM008");
    EXPECT_EQ(tell("TIM999"), "TIM008");
}

TEST_F(simulator_console_test, reports_no_random_fault_for_a_refused_command) {
    console.take_line("faults 100 drop");
    tell("TIM007");
    console.take_line("refuse TIM008 TIM001");
    EXPECT_EQ(tell("TIM008"), "TIM001");
    EXPECT_EQ(faults.last_fault(), fault::none);
}

TEST_F(simulator_console_test, changes_nothing_on_a_bad_line) {
    const std::string before = console.take_line("state");
    for (const char* bad : {"nonsense",
                            "drop x",
                            "drop -1",
                            "drop 1 2",
                            "drop 99999999999999999999",
                            "garble 1.5",
                            "delay",
                            "delay x",
                            "delay 5 x",
                            "delay 5 1 1",
                            "refuse",
                            "refuse TIM01 TIM001",
                            "refuse TIM001",
                            "refuse TIM001 A B",
                            "sink",
                            "sink 0 none",
                            "sink 4 none",
                            "sink x none",
                            "sink 1 /no/such/file",
                            "faults",
                            "faults x",
                            "faults 101",
                            "faults 5 seed",
                            "faults 5 lies",
                            "faults off now",
                            "protect 1",
                            "protect 1 yes",
                            "protect 9 on",
                            "erase",
                            "erase -5",
                            "erase 1e3",
                            "think 99999999",
                            "quit now",
                            "silent 1",
                            "\xFF\xFE"}) {
        EXPECT_FALSE(console.take_line(bad).empty()) << bad;
        EXPECT_EQ(console.take_line("state"), before) << bad;
    }
    EXPECT_FALSE(console.quit_asked());
}

} // namespace
} // namespace desk
