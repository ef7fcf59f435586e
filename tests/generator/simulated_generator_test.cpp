#include "generator/simulated_generator.h"

#include "runtime/failure.h"

#include "support/text_of_answer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace desk {
namespace {

using namespace std::chrono_literals;

using test::text_of;

class simulated_generator_test : public testing::Test {
protected:
    /// All bytes of the answer to one command.
    std::string tell(std::string_view command) { return text_of(generator.command(command)); }

    /// Sends commands in order and checks their answers: "TIM999 TIM001".
    void expect_answers(const std::vector<std::string>& answers) {
        for (const std::string& text : answers)
            EXPECT_EQ(tell(text.substr(0, 6)), text.substr(7)) << text;
    }

    /// A record of a long answer, counted from 0.
    static std::string record(const std::string& text, std::size_t index, std::size_t size) {
        return text.substr(index * size, size);
    }

    edid_sink& sink(std::size_t number) { return generator.state.sinks.at(number - 1); }

    simulated_generator generator{76, 48};
};

TEST_F(simulated_generator_test, starts_with_the_power_on_values) {
    expect_answers({"TIM999 TIM001", "PAT999 PAT001", "OUT999 OUT004", "HDC999 HDC000", "ASC999 ASC003",
                    "PCM999 PCM001", "CSC999 CSC001", "DEE999 DEE001", "ATO999 ATO000", "FAV999 FAV000",
                    "CRR999 CRR128", "CRG999 CRG128", "CRB999 CRB128", "VER001 VER012"});
    EXPECT_EQ(tell("MOT999"), std::string("MOT999VELOTRACE\0\0\0", 18));
}

TEST_F(simulated_generator_test, echoes_and_remembers_what_is_set) {
    tell("ASC001");
    for (const std::string command : {"TIM007", "PAT048", "OUT001", "HDC001", "ASC002", "PCM003", "CSC003", "DEE002",
                                      "ATO001", "FAV001", "CRR255", "CRG000", "CRB007"}) {
        EXPECT_EQ(tell(command), command);
        EXPECT_EQ(tell(command.substr(0, 3) + "999"), command);
    }
}

TEST_F(simulated_generator_test, thinks_before_it_answers) {
    const answer parts = generator.command("TIM007");
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(parts[0].pause, 1ms);
    generator.state.think_time = 25ms;
    EXPECT_EQ(generator.command("TIM999").at(0).pause, 25ms);
}

TEST_F(simulated_generator_test, refuses_a_value_out_of_range_with_the_present_one) {
    tell("TIM010");
    expect_answers({"TIM077 TIM010", "TIM000 TIM010", "PAT049 PAT001", "OUT009 OUT004", "OUT000 OUT004",
                    "HDC002 HDC000", "CRR256 CRR128", "ESC004 ESC001"});
}

TEST_F(simulated_generator_test, the_built_in_sine_has_two_channels_only) {
    EXPECT_EQ(tell("PCM002"), "PCM100");
    EXPECT_EQ(tell("PCM003"), "PCM100");
    EXPECT_EQ(tell("PCM999"), "PCM001");
    tell("ASC001");
    EXPECT_EQ(tell("PCM003"), "PCM003");
    EXPECT_EQ(tell("ASC003"), "ASC003");
    EXPECT_EQ(tell("PCM999"), "PCM001");
}

TEST_F(simulated_generator_test, grey_sets_the_three_colours) {
    EXPECT_EQ(tell("CRY200"), "CRY200");
    EXPECT_EQ(tell("CRR999") + tell("CRG999") + tell("CRB999"), "CRR200CRG200CRB200");
    tell("CSC002");
    tell("CRY030");
    EXPECT_EQ(tell("CRR999") + tell("CRG999") + tell("CRB999"), "CRR128CRG030CRB128");
}

TEST_F(simulated_generator_test, is_silent_on_what_is_no_command) {
    for (const std::string command : {"ABC001", "TIM0A1", "tim001", "TIM01", "TIM0011", "", "VER002", "RST002",
                                      "ERD002", "FT-999", "MOT002", "ATS001", "      ", "TIM 01"})
        EXPECT_TRUE(generator.command(command).empty()) << command;
}

TEST_F(simulated_generator_test, sends_a_favorite_record_for_each_row) {
    EXPECT_EQ(tell("FT+007"), "FT+007");
    EXPECT_EQ(tell("FT+076"), "FT+076");
    EXPECT_EQ(tell("FT-007"), "FT-007");
    const std::string timings = tell("FT+999");
    ASSERT_EQ(timings.size(), 6U * 76);
    EXPECT_EQ(timings.substr(0, 12), "FT-001FT-002");
    EXPECT_EQ(record(timings, 6, 6), "FT-007");
    EXPECT_EQ(record(timings, 75, 6), "FT+076");

    EXPECT_EQ(tell("FP+012"), "FP+012");
    const std::string patterns = tell("FP+999");
    ASSERT_EQ(patterns.size(), 6U * 48);
    EXPECT_EQ(record(patterns, 11, 6), "FP+012");
    EXPECT_EQ(record(patterns, 47, 6), "FP-048");
}

TEST_F(simulated_generator_test, has_no_favorite_flag_outside_the_catalogue) {
    EXPECT_EQ(tell("FT+077"), "FT+000");
    EXPECT_EQ(tell("FP-000"), "FP-000");
    EXPECT_EQ(tell("FT+999").find('+'), std::string::npos);
}

TEST_F(simulated_generator_test, fills_the_chosen_autorun_row) {
    expect_answers({"ATN003 ATN003", "ATT012 ATT012", "ATP007 ATP007", "ATI600 ATI600", "ATN032 ATN032",
                    "ATI005 ATI005", "ATN033 ATN032"});

    const std::string list = tell("ATS999");
    ASSERT_EQ(list.size(), 768U);
    // places 10 to 12, 16 to 18 and 22 to 24 of a record, counted from 1
    const std::string third = record(list, 2, 24);
    EXPECT_EQ(third.substr(9, 3), "012");
    EXPECT_EQ(third.substr(15, 3), "007");
    EXPECT_EQ(third.substr(21, 3), "600");
    EXPECT_EQ(list.substr(0, 24), "ATN001ATT001ATP001ATI000");
    EXPECT_EQ(record(list, 31, 24), "ATN032ATT001ATP001ATI005");
}

TEST_F(simulated_generator_test, keeps_the_custom_string) {
    EXPECT_EQ(simulated_generator::raw_block_after("MOT001"), 12U);
    EXPECT_EQ(simulated_generator::raw_block_after("MOT999"), 0U);
    EXPECT_EQ(tell("MOT001"), "MOT001");
    const std::string block("HELLO\0\0\0\0\0\0\0", 12);
    EXPECT_TRUE(generator.raw_block("MOT001", bytes_of(block)).empty());
    EXPECT_EQ(tell("MOT999"), "MOT999" + block);
}

TEST_F(simulated_generator_test, ignores_a_block_of_the_wrong_size) {
    EXPECT_TRUE(generator.raw_block("MOT001", bytes(11, 'x')).empty());
    EXPECT_TRUE(generator.raw_block("EWR001", bytes(255, 'x')).empty());
    EXPECT_TRUE(generator.raw_block("TIM001", bytes()).empty());
    EXPECT_EQ(tell("MOT999").substr(6, 9), "VELOTRACE");
}

TEST_F(simulated_generator_test, sends_the_edid_after_the_answer_and_a_pause) {
    for (const int number : {1, 2, 3}) {
        const std::string choice = "ESC00" + std::to_string(number);
        EXPECT_EQ(tell(choice), choice);
        const answer parts = generator.command("ERD001");
        ASSERT_EQ(parts.size(), 2U);
        EXPECT_EQ(string_of(parts[0].data), "ERD001");
        EXPECT_EQ(parts[1].pause, 100ms);
        EXPECT_EQ(parts[1].data, sink(static_cast<std::size_t>(number)).edid);
        EXPECT_EQ(parts[1].data.size(), 256U);
    }
}

TEST_F(simulated_generator_test, sends_no_data_of_a_sink_that_is_away) {
    sink(1).edid.reset();
    EXPECT_EQ(tell("ERD001"), "ERD001");
}

TEST_F(simulated_generator_test, writes_the_chosen_sink) {
    EXPECT_EQ(simulated_generator::raw_block_after("EWR001"), 256U);
    tell("ESC002");
    EXPECT_EQ(tell("EWR001"), "EWR001");
    bytes block(256);
    std::iota(block.begin(), block.end(), std::uint8_t{0});
    const answer parts = generator.raw_block("EWR001", block);
    EXPECT_EQ(text_of(parts), "EWR002");
    EXPECT_EQ(parts.at(0).pause, 20ms);
    EXPECT_EQ(sink(2).edid, block);
    EXPECT_NE(sink(1).edid, block);
}

TEST_F(simulated_generator_test, reports_a_ddc_error_on_write) {
    const bytes before = sink(1).edid.value();
    sink(1).write_protected = true;
    EXPECT_EQ(text_of(generator.raw_block("EWR001", bytes(256, 0))), "EWR003");
    EXPECT_EQ(sink(1).edid, before);

    sink(3).edid.reset();
    tell("ESC003");
    EXPECT_EQ(text_of(generator.raw_block("EWR001", bytes(256, 0))), "EWR003");
    EXPECT_FALSE(sink(3).edid.has_value());
}

TEST_F(simulated_generator_test, erases_the_chosen_sink) {
    const answer parts = generator.command("ERS001");
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(string_of(parts[0].data), "ERS001");
    EXPECT_EQ(string_of(parts[1].data), "ERS002");
    EXPECT_EQ(parts[1].pause, 3000ms);
    EXPECT_EQ(sink(1).edid, bytes(256, 0xFF));
}

TEST_F(simulated_generator_test, reports_a_ddc_error_on_erase) {
    generator.state.erase_time = 50ms;
    const bytes before = sink(1).edid.value();
    sink(1).write_protected = true;
    EXPECT_EQ(tell("ERS001"), "ERS001ERS003");
    EXPECT_EQ(sink(1).edid, before);
    sink(1).edid.reset();
    const answer parts = generator.command("ERS001");
    EXPECT_EQ(text_of(parts), "ERS001ERS003");
    EXPECT_EQ(parts.at(1).pause, 50ms);
}

TEST_F(simulated_generator_test, reset_brings_the_power_on_values_back) {
    for (const char* command : {"TIM007", "CRR001", "FT+003", "ATN005", "ATI010", "FAV001", "ESC002"})
        tell(command);
    generator.raw_block("MOT001", bytes(12, 'x'));
    sink(1).edid = bytes(256, 7);
    generator.state.version = "VER034";
    generator.state.think_time = 3ms;

    const answer parts = generator.command("RST001");
    EXPECT_EQ(text_of(parts), "RST001");
    EXPECT_EQ(parts.at(0).pause, 900ms);
    EXPECT_EQ(tell("TIM999"), "TIM001");
    EXPECT_EQ(tell("CRR999"), "CRR128");
    EXPECT_EQ(tell("FAV999"), "FAV000");
    EXPECT_EQ(tell("MOT999").substr(6, 9), "VELOTRACE");
    EXPECT_EQ(tell("FT+999").size(), 6U * 76);
    EXPECT_EQ(tell("FT+999").find('+'), std::string::npos);
    EXPECT_EQ(record(tell("ATS999"), 4, 24), "ATN005ATT001ATP001ATI000");
    EXPECT_EQ(generator.state.chosen_sink, 1);

    EXPECT_EQ(sink(1).edid, bytes(256, 7));
    EXPECT_EQ(tell("VER001"), "VER034");
    EXPECT_EQ(generator.state.think_time, 3ms);
}

TEST_F(simulated_generator_test, follows_the_size_of_the_catalogue) {
    tell("TIM076");
    tell("FT+002");
    generator.set_catalogue_size(3, 2);
    EXPECT_EQ(tell("FT+999"), "FT-001FT+002FT-003");
    EXPECT_EQ(tell("FP+999"), "FP-001FP-002");
    EXPECT_EQ(tell("TIM999"), "TIM001");
    EXPECT_EQ(tell("TIM004"), "TIM001");
    generator.set_catalogue_size(0, 0);
    EXPECT_EQ(tell("FT+999"), "");
    EXPECT_THROW(generator.set_catalogue_size(999, 1), runtime_failure);
    EXPECT_THROW(generator.set_catalogue_size(1, -1), runtime_failure);
}

} // namespace
} // namespace desk
