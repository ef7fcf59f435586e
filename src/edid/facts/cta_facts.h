#pragma once

#include "edid/facts/place.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk::facts {

/// A CTA-861 extension block.
struct cta_block {
    std::uint16_t block = 0;
    std::uint8_t revision = 0;
    bool underscans = false;
    bool basic_audio = false;
    bool ycbcr444 = false;
    bool ycbcr422 = false;
    std::uint8_t native_timings = 0; ///< how many of the detailed timings are native
};

/// A short video descriptor.
struct video_code {
    place where;
    std::uint8_t vic = 0;
    bool native = false;
    bool ycbcr420 = false;      ///< also in YCbCr 4:2:0
    bool ycbcr420_only = false; ///< from the YCbCr 4:2:0 video data block
};

/// A short audio descriptor.
struct audio_format {
    place where;
    std::uint8_t code = 0;
    std::uint8_t extended_code = 0; ///< for code 15
    std::string_view format;        ///< static
    std::uint8_t channels = 0;      ///< 0: not stated
    std::vector<double> rates_khz;
    std::vector<std::uint8_t> bits;     ///< sample sizes of L-PCM
    std::uint16_t max_bitrate_kbps = 0; ///< 0: not stated
    std::array<std::uint8_t, 3> bytes{};
};

/// The vendor block of HDMI 1.4.
struct hdmi_block {
    place where;
    std::optional<std::array<std::uint8_t, 4>> address; ///< physical address, a digit each
    bool supports_ai = false;
    bool deep_color_30 = false;
    bool deep_color_36 = false;
    bool deep_color_48 = false;
    bool deep_color_ycbcr444 = false;
    bool dual_link_dvi = false;
    std::uint16_t max_tmds_mhz = 0;                ///< 0: not stated
    std::optional<std::uint16_t> video_latency_ms; ///< progressive
    std::optional<std::uint16_t> audio_latency_ms;
    std::optional<std::uint16_t> interlaced_video_latency_ms;
    std::optional<std::uint16_t> interlaced_audio_latency_ms;
    std::vector<std::string_view> content_types; ///< static
    bool stereo_3d = false;
    std::vector<std::uint8_t> hdmi_vics;

    std::string address_text() const; ///< "1.0.0.0", hexadecimal; empty if not stated
};

/// The vendor block, or the sink capability block, of the HDMI Forum.
struct hdmi_forum_block {
    place where;
    std::uint8_t version = 0;
    std::uint16_t max_tmds_mhz = 0; ///< 0: up to 340 MHz
    bool scdc = false;
    bool read_request = false;
    bool scrambling_up_to_340 = false;
    bool uhd_vic = false;
    bool deep_color_420_30 = false;
    bool deep_color_420_36 = false;
    bool deep_color_420_48 = false;
    std::uint8_t frl_lanes = 0; ///< 0: no fixed rate link
    std::uint8_t frl_gbps = 0;  ///< of a lane
    bool allm = false;          ///< auto low-latency mode
    bool fast_vactive = false;
    bool qms = false; ///< quick media switching
    bool cinema_vrr = false;
    std::uint16_t vrr_min_hz = 0; ///< 0: no variable refresh rate
    std::uint16_t vrr_max_hz = 0; ///< 0: not limited
    bool dsc = false;
    bool dsc_10_bit = false;
    bool dsc_12_bit = false;
    bool dsc_16_bit = false;
    bool dsc_native_420 = false;
    std::uint8_t dsc_max_slices = 0;
    std::uint16_t dsc_slice_mhz = 0; ///< pixel clock of a slice
    std::uint8_t dsc_frl_lanes = 0;
    std::uint8_t dsc_frl_gbps = 0;
    std::uint32_t dsc_chunk_bytes = 0; ///< most bytes in a line of chunks
};

/// Over- and underscan.
enum class scan_behavior : std::uint8_t { not_stated, overscan, underscan, both };

struct video_capability {
    place where;
    bool quantization_ycbcr_selectable = false;
    bool quantization_rgb_selectable = false;
    scan_behavior preferred_timing = scan_behavior::not_stated;
    scan_behavior it_formats = scan_behavior::not_stated;
    scan_behavior ce_formats = scan_behavior::not_stated;
};

struct hdr_static_metadata {
    place where;
    std::vector<std::string_view> eotfs; ///< static: "SDR", "HDR", "PQ", "HLG"
    bool static_metadata_type_1 = false;
    std::optional<double> max_nits; ///< desired content luminance
    std::optional<double> max_average_nits;
    std::optional<double> min_nits;
};

/// A vendor block that is kept as bytes.
struct vendor_block {
    place where;
    std::uint32_t oui = 0;
    std::string_view vendor; ///< static; empty: not known
    std::string_view kind;   ///< static: "general", "video", "audio"
    std::vector<std::uint8_t> bytes;
};

/// Everything from data blocks.
struct cta_facts {
    std::vector<cta_block> blocks;
    std::vector<video_code> video;
    std::vector<audio_format> audio;
    std::optional<std::uint32_t> speakers; ///< the bits of the speaker allocation block, 24 at most
    std::optional<hdmi_block> hdmi;
    std::optional<hdmi_forum_block> hdmi_forum;
    std::optional<video_capability> capability;
    std::vector<std::string_view> colorimetry; ///< static: "BT2020_RGB" and the like
    bool has_colorimetry = false;
    std::optional<hdr_static_metadata> hdr;
    std::vector<std::uint16_t> hdr_dynamic_types;
    bool hdr10_plus = false;
    std::uint8_t dolby_vision = 0;             ///< the block's version plus 1; 0: no block
    std::vector<std::uint8_t> preferred_video; ///< short video references, in order
    std::vector<vendor_block> vendors;
};

/// The names of speakers by bit number, 0 to 23; empty for a reserved bit.
std::string_view speaker_name(unsigned bit);

} // namespace desk::facts
