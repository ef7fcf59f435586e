#pragma once

#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "translate/translation_tables.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace desk {

/// What every report begins with.
inline constexpr std::string_view report_title = "EDID Analysis Report ";

/// Builds the report of `trans_buff`: all that the translation shows, in a fixed order, as one text. It takes any 256
/// bytes, also those whose tree can't be built. The tables and `sn_value` change with it.
class report_builder {
public:
    report_builder(const edid_buffers& buffers, translation_tables& tables, serial_number& serial,
                   const shared_fields& fields);

    std::string report_text; ///< what has been built; it ends early where a decoder fails

    /// True: it ran to its end. False: the EDID begins with no header, and `report_text` says so.
    /// Throws what the decoders throw.
    bool report_build(std::string_view date, std::string_view time);

private:
    void build_block_0();
    void report_standard_timings();
    void report_descriptors();
    void report_descriptor_row(std::uint8_t kind, int& names, int& details);
    void report_name(int count);
    void build_block_1();
    void report_block_1_tag();
    void report_data_blocks();
    void report_detail_timings_of_block_1();

    void report_standard(std::uint8_t address);
    void report_descriptor(std::uint8_t kind, int count, std::uint8_t code);
    void report_detail(std::uint8_t block, int count);
    void report_dtv();
    void report_audio();
    void report_video();
    void report_vsdb();
    void report_speaker();
    void report_vcap();
    void report_colorimetry();
    void report_unknown_data_block();
    void heading(std::string_view title);

    const edid_buffer& trans_buff_;
    translation_tables& tables_;
    serial_number& serial_;
    const shared_fields& fields_;
};

} // namespace desk
