#pragma once

#include "edid/format/buffer.h"
#include "translate/decode/audio.h"
#include "translate/decode/colorimetry.h"
#include "translate/decode/speaker.h"
#include "translate/decode/tag.h"
#include "translate/decode/video.h"
#include "translate/decode/video_capability.h"
#include "translate/decode/vsdb.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// Everything about one kind of CEA 861 data block (CEA-861-D, section 7.5): how to recognize it, its node in the tree,
/// what a click on the node shows, and its section of the report.
struct data_block_row {
    using decoder = void (*)(std::string& text, const edid_buffer& trans_buff, std::uint8_t address);

    int tag;          ///< the upper three bits of the header byte, or `any`
    int extended_tag; ///< the byte after the header of a block with tag 7, or `any`
    std::string_view key;
    std::string_view title;
    std::string_view report_title; ///< the heading of its section, without the dashes
    decoder decode;                ///< what a click shows
    decoder report;                ///< what the report prints below the heading

    static constexpr int any = -1;
    static constexpr int extended = 7; ///< the tag of a block that has an extended tag
};

/// The kinds in the order of the tree, of the report and of `data_block_addr`. The first row that fits a block counts.
inline constexpr auto data_block_rows = std::to_array<data_block_row>({
    // clang-format off
    {1, data_block_row::any, "block1_db_audio", "Audio Data Block", "Audio Data Block",
     decode_audio_block, decode_audio_block},
    {2, data_block_row::any, "block1_db_video", "Video Data Block", "Video Data Block",
     decode_video_block, decode_video_block},
    {3, data_block_row::any, "block1_db_vsdb", "Vendor Specific Data Block", "Vendor Specific Data Block",
     decode_vsdb, decode_vsdb},
    {4, data_block_row::any, "block1_db_speaker", "Speaker Allocation Data Block", "Speaker Allocation Data Block",
     decode_speaker_block, report_speaker_block},
    {data_block_row::extended, 0, "block1_db_vcap", "Video Capability Data Block", "Video Capability Data Block",
     decode_video_capability, decode_video_capability},
    {data_block_row::extended, 5, "block1_db_color", "Colorimetry Data Block", "Colorimetry Data Block",
     decode_colorimetry, decode_colorimetry},
    {data_block_row::any, data_block_row::any, "block1_db_unknown", "Unknown Data Block", "Unknwon Data Block",
     decode_unknown_block, print_tag},
    // clang-format on
});

} // namespace desk
