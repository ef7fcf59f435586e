#include "report/report_builder.h"

#include "report/established_lines.h"
#include "runtime/failure.h"
#include "runtime/text.h"
#include "translate/decode/audio.h"
#include "translate/decode/basic.h"
#include "translate/decode/binary_list.h"
#include "translate/decode/block_1_tags.h"
#include "translate/decode/color.h"
#include "translate/decode/colorimetry.h"
#include "translate/decode/descriptor.h"
#include "translate/decode/dtv.h"
#include "translate/decode/header.h"
#include "translate/decode/speaker.h"
#include "translate/decode/standard.h"
#include "translate/decode/tag.h"
#include "translate/decode/text_output.h"
#include "translate/decode/vendor.h"
#include "translate/decode/video.h"
#include "translate/decode/video_capability.h"
#include "translate/decode/vsdb.h"
#include "translate/found_descriptor.h"

namespace desk {

report_builder::report_builder(const edid_buffers& buffers, translation_tables& tables, serial_number& serial,
                               const shared_fields& fields)
    : trans_buff_(buffers.trans_buff), tables_(tables), serial_(serial), fields_(fields) {}

bool report_builder::report_build(std::string_view date, std::string_view time) {
    report_text.clear();
    print_line(report_text, report_title);
    print(report_text, date, " ", time, line_end, line_end);
    if (!is_vesa_basic_block(trans_buff_)) {
        print_line(report_text, "Block 0: NOT VESA Basic Block");
        print_header(report_text, trans_buff_);
        return false;
    }
    while_doing([] { return "Building the EDID report"; },
                [this] {
                    build_block_0();
                    build_block_1();
                });
    print(report_text, line_end, line_end, "END.");
    return true;
}

void report_builder::build_block_0() {
    print_line(report_text, "______ Block 0: VESA Basic Block ______");
    print_binary_list(report_text, trans_buff_, 0);
    print_line(report_text);
    serial_.get_sn(buff::trans);
    decode_vendor(report_text, trans_buff_, fields_.sn_value);
    print_line(report_text);
    decode_basic(report_text, trans_buff_);
    print(report_text, line_end, line_end);
    print_line(report_text, "--- Color Characteristics ---");
    decode_color(report_text, trans_buff_);
    print_established_lines(report_text, trans_buff_);
    report_standard_timings();
    report_descriptors();
}

void report_builder::report_standard_timings() {
    for (int n = 1; n <= 8; ++n) {
        print_line(report_text);
        print_standard_heading(report_text, n);
        report_standard(static_cast<std::uint8_t>(38 + 2 * (n - 1)));
        print_line(report_text);
    }
    print(report_text, line_end, "*** Detail Timings/Monitor Descriptors ***", line_end);
}

void report_builder::report_descriptors() {
    tables_.arrange_descriptor(trans_buff_, 0);
    int names = 0;
    int details = 0;
    for (std::size_t k = 0; k < descriptors_of_block_0; ++k)
        report_descriptor_row(tables_.descriptor_map.at(k).kind, names, details);
}

// The desk behaves so: the first descriptor of a class stands for each of the class, but for names and detailed
// timings, which are counted.
void report_builder::report_descriptor_row(std::uint8_t kind, int& names, int& details) {
    print_line(report_text);
    switch (kind) {
    case descriptor_class::serial_number:
    case descriptor_class::ascii_string:
    case descriptor_class::range_limits:
        return report_descriptor(kind, 1, kind);
    case descriptor_class::monitor_name:
        return report_name(++names);
    case descriptor_class::standard_timings:
        print_line(report_text, "*** Additional Standard Timings 9 ~ 14 ***");
        report_descriptor(kind, 1, descriptor_code::standard_timings_9_to_11);
        return report_descriptor(kind, 1, descriptor_code::standard_timings_12_to_14);
    case descriptor_class::detail_timing:
        ++details;
        print_line(report_text, "--- BK0.Detail Timing", number_text(details), " ---");
        report_detail(0, details);
        return print_line(report_text);
    default:
        return report_descriptor(descriptor_class::unknown, 1, descriptor_code::unknown);
    }
}

// The desk behaves so: a third and a fourth name do not come up.
void report_builder::report_name(int count) {
    if (count <= 2) return report_descriptor(descriptor_class::monitor_name, count, descriptor_code::monitor_name);
    tables_.arrange_descriptor(trans_buff_, 0);
}

void report_builder::build_block_1() {
    report_block_1_tag();
    print_binary_list(report_text, trans_buff_, 1);
    if (!tables_.is_cea_block1) return;
    report_dtv();
    report_data_blocks();
    report_detail_timings_of_block_1();
}

void report_builder::report_block_1_tag() {
    const std::uint8_t tag = trans_buff_[edid_block_size];
    tables_.is_cea_block1 = tag == cea_861_tag;
    print(report_text, line_end, line_end);
    if (tables_.is_cea_block1) {
        print_line(report_text, "______ ", cea_861_title, " ______");
        print_line(report_text, "Block Tag = ", hex(tag));
        return;
    }
    print_line(report_text, "Block 1: NOT CEA 861 Block");
    print(report_text, "Block Tag = 0x", hex2(tag));
    // The desk behaves so: behind a tag without a name the list begins on the same line.
    const std::string_view title = title_of_other_block(tag);
    if (!title.empty()) print(report_text, line_end, title, line_end);
}

void report_builder::report_data_blocks() {
    tables_.arrange_data_block(trans_buff_);
    if (!tables_.has_data_blocks()) return print(report_text, line_end, "There are no data blocks.", line_end);
    print(report_text, line_end, "*** Data Block Collections ***", line_end);
    const auto is_there = [this](std::size_t kind) { return tables_.data_block_addr.at(kind) != 0; };
    if (is_there(data_block_kind::audio)) report_audio();
    if (is_there(data_block_kind::video)) report_video();
    if (is_there(data_block_kind::vendor_specific)) report_vsdb();
    if (is_there(data_block_kind::speaker)) report_speaker();
    if (is_there(data_block_kind::video_capability)) report_vcap();
    if (is_there(data_block_kind::colorimetry)) report_colorimetry();
    if (is_there(data_block_kind::unknown)) report_unknown_data_block();
}

void report_builder::report_detail_timings_of_block_1() {
    if (tables_.cea_dtd_offset == 0) return;
    tables_.arrange_descriptor(trans_buff_, 1);
    int count = 0;
    for (const descriptor_row& row : tables_.descriptor_map) {
        if (row.kind != descriptor_class::detail_timing) continue;
        ++count;
        print(report_text, line_end, line_end);
        print_line(report_text, "--- BK1.Detail Timing", number_text(count), " ---");
        // The desk behaves so: the seventh is the first one once more.
        report_detail(1, count == 7 ? 1 : count);
    }
}

void report_builder::report_standard(std::uint8_t address) { decode_standard(report_text, trans_buff_, address); }

void report_builder::report_descriptor(std::uint8_t kind, int count, std::uint8_t code) {
    if (code == descriptor_code::range_limits) print_line(report_text);
    decode_found_descriptor(report_text, trans_buff_, tables_, kind, count, code);
}

void report_builder::report_detail(std::uint8_t block, int count) {
    decode_found_detail(report_text, trans_buff_, tables_, block, count);
}

void report_builder::report_dtv() {
    heading("--- DTV Monitor Support ---");
    decode_dtv(report_text, trans_buff_, tables_.is_cea_block1);
}

void report_builder::report_audio() {
    heading("--- Audio Data Block ---");
    decode_audio_block(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::audio]);
}

void report_builder::report_video() {
    heading("--- Video Data Block ---");
    decode_video_block(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::video]);
}

void report_builder::report_vsdb() {
    heading("--- Vendor Specific Data Block ---");
    decode_vsdb(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::vendor_specific]);
}

// The positions alone: the floor plan is the panel's.
void report_builder::report_speaker() {
    heading("--- Speaker Allocation Data Block ---");
    print_speaker_allocation(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::speaker]);
    print_line(report_text);
}

void report_builder::report_vcap() {
    heading("--- Video Capability Data Block ---");
    decode_video_capability(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::video_capability]);
}

void report_builder::report_colorimetry() {
    heading("--- Colorimetry Data Block ---");
    decode_colorimetry(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::colorimetry]);
}

void report_builder::report_unknown_data_block() {
    heading("--- Unknwon Data Block ---");
    print_tag(report_text, trans_buff_, tables_.data_block_addr[data_block_kind::unknown]);
}

void report_builder::heading(std::string_view title) { print(report_text, line_end, title, line_end); }

} // namespace desk
