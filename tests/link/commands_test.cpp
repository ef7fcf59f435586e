#include "link/commands.h"

#include "support/expect_failure.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace desk {
namespace {

using test::failure_of;

TEST(commands, have_these_mnemonics) {
    EXPECT_EQ(mnemonic::timing, "TIM");
    EXPECT_EQ(mnemonic::pattern, "PAT");
    EXPECT_EQ(mnemonic::favorite_timing_on, "FT+");
    EXPECT_EQ(mnemonic::favorite_timing_off, "FT-");
    EXPECT_EQ(mnemonic::favorite_pattern_on, "FP+");
    EXPECT_EQ(mnemonic::favorite_pattern_off, "FP-");
    EXPECT_EQ(mnemonic::output_format, "OUT");
    EXPECT_EQ(mnemonic::hdcp, "HDC");
    EXPECT_EQ(mnemonic::audio_source, "ASC");
    EXPECT_EQ(mnemonic::lpcm_channels, "PCM");
    EXPECT_EQ(mnemonic::color_space, "CSC");
    EXPECT_EQ(mnemonic::deep_color, "DEE");
    EXPECT_EQ(mnemonic::autorun, "ATO");
    EXPECT_EQ(mnemonic::my_favorite, "FAV");
    EXPECT_EQ(mnemonic::color_red, "CRR");
    EXPECT_EQ(mnemonic::color_green, "CRG");
    EXPECT_EQ(mnemonic::color_blue, "CRB");
    EXPECT_EQ(mnemonic::color_grey, "CRY");
    EXPECT_EQ(mnemonic::autorun_row, "ATN");
    EXPECT_EQ(mnemonic::autorun_timing, "ATT");
    EXPECT_EQ(mnemonic::autorun_pattern, "ATP");
    EXPECT_EQ(mnemonic::autorun_interval, "ATI");
}

TEST(commands, have_these_fixed_forms) {
    EXPECT_EQ(command::reset, "RST001");
    EXPECT_EQ(command::firmware_version, "VER001");
    EXPECT_EQ(command::query_favorite_timings, "FT+999");
    EXPECT_EQ(command::query_favorite_patterns, "FP+999");
    EXPECT_EQ(command::query_autorun_list, "ATS999");
    EXPECT_EQ(command::query_custom_string, "MOT999");
    EXPECT_EQ(command::upload_custom_string, "MOT001");
    EXPECT_EQ(command::choose_hdmi_out, "ESC001");
    EXPECT_EQ(command::choose_hdmi_in, "ESC002");
    EXPECT_EQ(command::choose_vga_out, "ESC003");
    EXPECT_EQ(command::read_edid, "ERD001");
    EXPECT_EQ(command::write_edid, "EWR001");
    EXPECT_EQ(command::erase_edid, "ERS001");
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
