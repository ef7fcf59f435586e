#include "generator/sink_edids.h"

#include "runtime/failure.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

namespace {

constexpr std::size_t block_size = 128;

struct detailed_timing {
    int clock_10khz;
    int h_active, h_blank, h_front, h_sync; // pixels
    int v_active, v_blank, v_front, v_sync; // lines of one field
    int width_mm, height_mm;
    int flags; // byte 17: 0x1E separate syncs, both positive; 0x18 both negative; 0x80 interlaced
};

constexpr detailed_timing hd_1080p{14850, 1920, 280, 88, 44, 1080, 45, 4, 5, 598, 336, 0x1E};
constexpr detailed_timing hd_1080i{7425, 1920, 280, 88, 44, 540, 22, 2, 5, 598, 336, 0x9E};
constexpr detailed_timing hd_720p{7425, 1280, 370, 110, 40, 720, 30, 5, 5, 598, 336, 0x1E};
constexpr detailed_timing sd_480p{2700, 720, 138, 16, 62, 480, 45, 9, 6, 448, 336, 0x18};
constexpr detailed_timing sxga{10800, 1280, 408, 48, 112, 1024, 42, 1, 3, 376, 301, 0x1E};
constexpr detailed_timing xga{6500, 1024, 320, 24, 136, 768, 38, 3, 6, 376, 301, 0x18};

void append(bytes& to, const bytes& more) { to.insert(to.end(), more.begin(), more.end()); }

std::uint8_t low(int value) { return static_cast<std::uint8_t>(value & 0xFF); }
std::uint8_t high_bits(int first, int second) {
    return static_cast<std::uint8_t>(((first >> 8) << 4) | ((second >> 8) & 0x0F));
}

bytes descriptor_of(const detailed_timing& t) {
    return {low(t.clock_10khz),
            low(t.clock_10khz >> 8),
            low(t.h_active),
            low(t.h_blank),
            high_bits(t.h_active, t.h_blank),
            low(t.v_active),
            low(t.v_blank),
            high_bits(t.v_active, t.v_blank),
            low(t.h_front),
            low(t.h_sync),
            low(((t.v_front & 0x0F) << 4) | (t.v_sync & 0x0F)),
            low(((t.h_front >> 8) << 6) | ((t.h_sync >> 8) << 4) | ((t.v_front >> 4) << 2) | (t.v_sync >> 4)),
            low(t.width_mm),
            low(t.height_mm),
            high_bits(t.width_mm, t.height_mm),
            0,
            0,
            low(t.flags)};
}

/// Up to 13 characters, terminated by a line feed and padded with spaces.
bytes text_descriptor(std::uint8_t tag, std::string_view text) {
    bytes data{0, 0, 0, tag, 0};
    append(data, bytes_of(text));
    if (data.size() < 18) data.push_back(0x0A);
    data.resize(18, 0x20);
    return data;
}

bytes range_limits(int lowest_hz, int highest_hz, int lowest_khz, int highest_khz, int clock_10mhz) {
    bytes data{0, 0, 0, 0xFD, 0};
    append(data, {low(lowest_hz), low(highest_hz), low(lowest_khz), low(highest_khz), low(clock_10mhz), 0, 0x0A});
    data.resize(18, 0x20);
    return data;
}

/// Three letters of five bits each.
bytes maker(std::string_view letters) {
    int packed = 0;
    for (const char letter : letters)
        packed = packed * 32 + (letter - 'A' + 1);
    return {low(packed >> 8), low(packed)};
}

void close_block(bytes& edid) {
    unsigned sum = 0;
    for (std::size_t i = edid.size() + 1 - block_size; i < edid.size(); ++i)
        sum += edid[i];
    edid.push_back(static_cast<std::uint8_t>(256 - sum % 256));
}

struct base_block {
    std::string_view maker;
    bytes product_and_date; // product code, serial number, week, year - 1990
    bytes basic;            // input, width and height in cm, gamma, features
    bytes established;
    bytes standard; // eight pairs
    bytes descriptors;
    std::uint8_t extensions;
};

bytes edid_of(const base_block& base) {
    // the colours of the sRGB primaries
    const bytes chromaticity{0xEE, 0x91, 0xA3, 0x54, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54};
    bytes edid{0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00};
    append(edid, maker(base.maker));
    append(edid, base.product_and_date);
    append(edid, {1, 3});
    append(edid, base.basic);
    append(edid, chromaticity);
    append(edid, base.established);
    append(edid, base.standard);
    append(edid, base.descriptors);
    edid.push_back(base.extensions);
    close_block(edid);
    return edid;
}

/// `flags`: byte 3 of the block: underscan, basic audio, YCbCr 4:4:4 and 4:2:2, number of native timings.
void append_cea_block(bytes& edid, std::uint8_t flags, const bytes& data_blocks, const bytes& timings) {
    append(edid, {0x02, 0x03, low(static_cast<int>(data_blocks.size()) + 4), flags});
    append(edid, data_blocks);
    append(edid, timings);
    edid.resize(2 * block_size - 1, 0);
    close_block(edid);
}

bytes joined(std::initializer_list<bytes> pieces) {
    bytes all;
    for (const bytes& piece : pieces)
        append(all, piece);
    return all;
}

bytes hdmi_display() {
    bytes edid =
        edid_of({"VTD",
                 {0x24, 0x08, 0x01, 0x00, 0x00, 0x00, 18, 20},
                 {0x80, 60, 34, 120, 0x0A},
                 {0x21, 0x08, 0x00},
                 {0xD1, 0xC0, 0x81, 0xC0, 0x81, 0x80, 0x95, 0x00, 0xB3, 0x00, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01},
                 joined({descriptor_of(hd_1080p), descriptor_of(hd_720p), text_descriptor(0xFC, "HDMI DISPLAY"),
                         range_limits(48, 62, 23, 80, 17)}),
                 1});
    const bytes video{0x4A, 0x90, 0x1F, 0x05, 0x14, 0x04, 0x13, 0x02, 0x03, 0x11, 0x12};
    // two channels of LPCM up to 96 kHz and 24 bits; six channels of AC-3 up to 48 kHz and 640 kbit/s
    const bytes audio{0x26, 0x09, 0x1F, 0x07, 0x15, 0x07, 0x50};
    const bytes speakers{0x83, 0x01, 0x00, 0x00};
    // physical address 1.0.0.0, deep colour of 30 and 36 bits, 225 MHz
    const bytes hdmi{0x67, 0x03, 0x0C, 0x00, 0x10, 0x00, 0xB8, 0x2D};
    const bytes video_capability{0xE2, 0x00, 0x4F};
    const bytes colorimetry{0xE3, 0x05, 0x03, 0x01};
    append_cea_block(edid, 0xF1, joined({video, audio, speakers, hdmi, video_capability, colorimetry}),
                     joined({descriptor_of(hd_1080i), descriptor_of(sd_480p)}));
    return edid;
}

bytes generator_input() {
    bytes edid = edid_of({"VTR",
                          {0x01, 0x01, 0x4E, 0x61, 0xBC, 0x00, 1, 21},
                          {0x80, 0, 0, 120, 0x0A},
                          {0x21, 0x08, 0x00},
                          bytes(16, 0x01),
                          joined({descriptor_of(hd_720p), descriptor_of(sd_480p), text_descriptor(0xFC, "VELOTRACE IN"),
                                  text_descriptor(0xFF, "0012345678")}),
                          1});
    const bytes video{0x47, 0x84, 0x10, 0x05, 0x03, 0x02, 0x01, 0x13};
    // eight channels of LPCM up to 192 kHz and 24 bits
    const bytes audio{0x23, 0x0F, 0x7F, 0x07};
    const bytes speakers{0x83, 0x4F, 0x00, 0x00};
    const bytes hdmi{0x67, 0x03, 0x0C, 0x00, 0x10, 0x00, 0xB8, 0x2D};
    append_cea_block(edid, 0x71, joined({video, audio, speakers, hdmi}), descriptor_of(hd_1080p));
    return edid;
}

bytes analogue_display() {
    bytes edid =
        edid_of({"VTA",
                 {0x13, 0x19, 0x02, 0x00, 0x00, 0x00, 40, 17},
                 {0x0E, 38, 30, 120, 0xEA},
                 {0xA5, 0x4B, 0x00},
                 {0x81, 0x80, 0x61, 0x40, 0x45, 0x40, 0x31, 0x40, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01},
                 joined({descriptor_of(sxga), descriptor_of(xga), text_descriptor(0xFC, "VGA DISPLAY"),
                         range_limits(56, 76, 30, 81, 14)}),
                 0});
    edid.resize(2 * block_size, 0xFF);
    return edid;
}

} // namespace

bytes first_sink_edid(int sink) {
    switch (sink) {
    case 1:
        return hdmi_display();
    case 2:
        return generator_input();
    case 3:
        return analogue_display();
    default:
        throw runtime_failure(failure::subscript_out_of_range, "there is no sink " + std::to_string(sink));
    }
}

} // namespace desk
