#include "link/commands.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::failure_of;

TEST(commands, have_these_mnemonics) {
    const std::pair<std::string_view, std::string_view> all[] = {{mnemonic::timing, "TIM"}, {mnemonic::pattern, "PAT"}, {mnemonic::favorite_timing_on, "FT+"}, {mnemonic::favorite_timing_off, "FT-"}, {mnemonic::favorite_pattern_on, "FP+"}, {mnemonic::favorite_pattern_off, "FP-"}, {mnemonic::output_format, "OUT"}, {mnemonic::hdcp, "HDC"}, {mnemonic::audio_source, "ASC"}, {mnemonic::lpcm_channels, "PCM"}, {mnemonic::color_space, "CSC"}, {mnemonic::deep_color, "DEE"}, {mnemonic::autorun, "ATO"}, {mnemonic::my_favorite, "FAV"}, {mnemonic::color_red, "CRR"}, {mnemonic::color_green, "CRG"}, {mnemonic::color_blue, "CRB"}, {mnemonic::color_grey, "CRY"}, {mnemonic::autorun_row, "ATN"}, {mnemonic::autorun_timing, "ATT"}, {mnemonic::autorun_pattern, "ATP"}, {mnemonic::autorun_interval, "ATI"}};
    for (const auto& [made, expected] : all)
        EXPECT_EQ(made, expected);
}

TEST(commands, have_these_fixed_forms) {
    const std::pair<std::string_view, std::string_view> all[] = {{command::reset, "RST001"}, {command::firmware_version, "VER001"}, {command::query_favorite_timings, "FT+999"}, {command::query_favorite_patterns, "FP+999"}, {command::query_autorun_list, "ATS999"}, {command::query_custom_string, "MOT999"}, {command::upload_custom_string, "MOT001"}, {command::choose_hdmi_out, "ESC001"}, {command::choose_hdmi_in, "ESC002"}, {command::choose_vga_out, "ESC003"}, {command::read_edid, "ERD001"}, {command::write_edid, "EWR001"}, {command::erase_edid, "ERS001"}};
    for (const auto& [made, expected] : all)
        EXPECT_EQ(made, expected);
}

TEST(commands, have_an_argument_of_three_digits) {
    EXPECT_EQ(command::set(mnemonic::timing, 7), "TIM007");
    EXPECT_EQ(command::set(mnemonic::pattern, 41), "PAT041");
    EXPECT_EQ(command::set(mnemonic::autorun_interval, 600), "ATI600");
    EXPECT_EQ(command::set(mnemonic::hdcp, 0), "HDC000");
    EXPECT_EQ(command::set(mnemonic::favorite_timing_off, 12), "FT-012");
}

TEST(commands, have_no_argument_of_four_digits) {
    EXPECT_EQ(failure_of([] { command::set(mnemonic::timing, 1000); }), failure::invalid_procedure_call);
}

TEST(commands, ask_with_999) {
    EXPECT_EQ(command::query(mnemonic::timing), "TIM999");
    EXPECT_EQ(command::query(mnemonic::lpcm_channels), "PCM999");
}

} // namespace
} // namespace desk
