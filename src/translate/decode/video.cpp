#include "translate/decode/video.h"

#include "runtime/failure.h"
#include "translate/decode/data_block.h"
#include "translate/decode/text_output.h"

#include <array>

namespace desk {

namespace {

/// The desk's texts for the video identification codes, by code (CEA-861-D, table 3), aligned for a fixed-pitch font.
/// Intended: 12, 13 and 39 differ from the standard.
// clang-format off
constexpr std::array<std::string_view, 60> vic_table = {
    "No VIC Available", // 0
    " 640x480p  59/60  4:3", // 1
    " 720x480p  59/60  4:3", // 2
    " 720x480p  59/60 16:9", // 3
    "1280x720p  59/60 16:9", // 4
    "1920x1080i 59/60 16:9", // 5
    "1440x480i  59/60  4:3", // 6
    "1440x480i  59/60 16:9", // 7
    "1440x240p  59/60  4:3", // 8
    "1440x240p  59/60 16:9", // 9
    "2880x480i  59/60  4:3", // 10
    "2880x480i  59/60 16:9", // 11
    "2880x240p  50/60  4:3", // 12
    "2880x240p  50/60 16:9", // 13
    "1440x480p  59/60  4:3", // 14
    "1440x480p  59/60 16:9", // 15
    "1920x1080p 59/60 16:9", // 16
    " 720x576p  50     4:3", // 17
    " 720x576p  50    16:9", // 18
    "1280x720p  50    16:9", // 19
    "1920x1080i 50    16:9", // 20
    "1440x576i  50     4:3", // 21
    "1440x576i  50    16:9", // 22
    "1440x288p  50     4:3", // 23
    "1440x288p  50    16:9", // 24
    "2880x576i  50     4:3", // 25
    "2880x576i  50    16:9", // 26
    "2880x288p  50     4:3", // 27
    "2880x288p  50    16:9", // 28
    "1440x576p  50     4:3", // 29
    "1440x576p  50    16:9", // 30
    "1920x1080p 50    16:9", // 31
    "1920x1080p 23/24 16:9", // 32
    "1920x1080p 25    16:9", // 33
    "1920x1080p 29/30 16:9", // 34
    "2880x480p  59/60  4:3", // 35
    "2880x480p  59/60 16:9", // 36
    "2880x576p  50     4:3", // 37
    "2880x576p  50    16:9", // 38
    "1920x1080i 50    16:9", // 39
    "1920x1080i 100   16:9", // 40
    "1280x720p  100   16:9", // 41
    " 720x576p  100    4:3", // 42
    " 720x576p  100   16:9", // 43
    "1440x576i  100    4:3", // 44
    "1440x576i  100   16:9", // 45
    "1920x1080i 119/120 16:9", // 46
    "1280x720p  119/120 16:9", // 47
    " 720x480p  119/120  4:3", // 48
    " 720x480p  119/120 16:9", // 49
    "1440x480i  119/120  4:3", // 50
    "1440x480i  119/120 16:9", // 51
    " 720x576p  200     4:3", // 52
    " 720x576p  200    16:9", // 53
    "1440x576i  200     4:3", // 54
    "1440x576i  200    16:9", // 55
    " 720x480p  239/240  4:3", // 56
    " 720x480p  239/240 16:9", // 57
    "1440x480i  239/240  4:3", // 58
    "1440x480i  239/240 16:9", // 59
};
// clang-format on

void print_short_video_descriptor(std::string& text, std::uint8_t b) {
    constexpr std::size_t width = 2;
    const std::uint8_t v = b & 127;
    const std::string number = number_text(v);
    if (number.size() > width)
        throw runtime_failure(failure::invalid_procedure_call,
                              "the video identification code " + number + " does not fit in two digits");
    print(text, std::string(width - number.size(), ' '), number, " ");
    print(text, v < vic_table.size() ? vic_table.at(v) : "Reserved");
    if (bit(b, 7)) print(text, " is Native");
    print_line(text);
}

} // namespace

void decode_video_block(std::string& text, const edid_buffer& trans_buff, std::uint8_t address) {
    if (address == 0) return print(text, "No Video Block");
    decode_data_block("video", trans_buff, address, [&](const data_block& block) {
        const int length = block.length();
        for (int i = 1; i <= length; ++i)
            print_short_video_descriptor(text, block.byte(i));
    });
}

} // namespace desk
