#include "report/text/report_text.h"

#include "edid/format/serial_bytes.h"
#include "report/text/established_lines.h"
#include "runtime/failure.h"
#include "runtime/text.h"
#include "translate/decode/basic.h"
#include "translate/decode/binary_list.h"
#include "translate/decode/block_1_tags.h"
#include "translate/decode/color.h"
#include "translate/decode/data_block_table.h"
#include "translate/decode/descriptor.h"
#include "translate/decode/dtv.h"
#include "translate/decode/found_descriptor.h"
#include "translate/decode/header.h"
#include "translate/decode/standard.h"
#include "translate/decode/text_output.h"
#include "translate/decode/vendor.h"

#include <cstdint>

namespace desk {

namespace {

class report_writer {
public:
    report_writer(std::string& report_text, const edid_buffer& trans_buff, translation_tables& tables, double& sn_value)
        : report_text_(report_text), trans_buff_(trans_buff), tables_(tables), sn_value_(sn_value) {}

    void build_block_0();
    void build_block_1();

private:
    void report_standard_timings();
    void report_descriptors();
    void report_descriptor_row(std::uint8_t kind, int& names, int& details);
    void report_name(int count);
    void report_block_1_tag();
    void report_dtv();
    void report_data_blocks();
    void report_detail_timings_of_block_1();

    void report_standard(std::uint8_t address);
    void report_descriptor(std::uint8_t kind, int count, std::uint8_t code);
    void report_detail(std::uint8_t block, int count);
    void heading(std::string_view title);

    std::string& report_text_;
    const edid_buffer& trans_buff_;
    translation_tables& tables_;
    double& sn_value_;
};

void report_writer::build_block_0() {
    print_line(report_text_, "______ Block 0: VESA Basic Block ______");
    print_binary_list(report_text_, trans_buff_, 0);
    print_line(report_text_);
    sn_value_ = serial_number_of(trans_buff_);
    decode_vendor(report_text_, trans_buff_, sn_value_);
    print_line(report_text_);
    decode_basic(report_text_, trans_buff_);
    print(report_text_, line_end, line_end);
    print_line(report_text_, "--- Color Characteristics ---");
    decode_color(report_text_, trans_buff_);
    print_established_lines(report_text_, trans_buff_);
    report_standard_timings();
    report_descriptors();
}

void report_writer::report_standard_timings() {
    for (int n = 1; n <= 8; ++n) {
        print_line(report_text_);
        print_standard_heading(report_text_, n);
        report_standard(static_cast<std::uint8_t>(38 + 2 * (n - 1)));
        print_line(report_text_);
    }
    print(report_text_, line_end, "*** Detail Timings/Monitor Descriptors ***", line_end);
}

void report_writer::report_descriptors() {
    tables_.arrange_descriptor(trans_buff_, 0);
    int names = 0;
    int details = 0;
    for (std::size_t k = 0; k < descriptors_of_block_0; ++k)
        report_descriptor_row(tables_.descriptor_map.at(k).kind, names, details);
}

// Intended: it prints the first descriptor of a class for each of the class, except for names and detailed timings,
// which it counts.
void report_writer::report_descriptor_row(std::uint8_t kind, int& names, int& details) {
    print_line(report_text_);
    switch (kind) {
    case descriptor_class::serial_number:
    case descriptor_class::ascii_string:
    case descriptor_class::range_limits:
        return report_descriptor(kind, 1, kind);
    case descriptor_class::monitor_name:
        return report_name(++names);
    case descriptor_class::standard_timings:
        print_line(report_text_, "*** Additional Standard Timings 9 ~ 14 ***");
        report_descriptor(kind, 1, descriptor_code::standard_timings_9_to_11);
        return report_descriptor(kind, 1, descriptor_code::standard_timings_12_to_14);
    case descriptor_class::detail_timing:
        ++details;
        print_line(report_text_, "--- BK0.Detail Timing", number_text(details), " ---");
        report_detail(0, details);
        return print_line(report_text_);
    default:
        return report_descriptor(descriptor_class::unknown, 1, descriptor_code::unknown);
    }
}

// Intended: it does not print a third and a fourth name.
void report_writer::report_name(int count) {
    if (count <= 2) return report_descriptor(descriptor_class::monitor_name, count, descriptor_code::monitor_name);
    tables_.arrange_descriptor(trans_buff_, 0);
}

void report_writer::build_block_1() {
    report_block_1_tag();
    print_binary_list(report_text_, trans_buff_, 1);
    if (!tables_.is_cea_block1) return;
    report_dtv();
    report_data_blocks();
    report_detail_timings_of_block_1();
}

void report_writer::report_block_1_tag() {
    const std::uint8_t tag = trans_buff_[edid_block_size];
    tables_.is_cea_block1 = tag == cea_861_tag;
    print(report_text_, line_end, line_end);
    if (tables_.is_cea_block1) {
        print_line(report_text_, "______ ", cea_861_title, " ______");
        print_line(report_text_, "Block Tag = ", hex(tag));
        return;
    }
    print_line(report_text_, "Block 1: NOT CEA 861 Block");
    print(report_text_, "Block Tag = 0x", hex2(tag));
    // Intended: after a tag without a name the list begins on the same line.
    const std::string_view title = title_of_other_block(tag);
    if (!title.empty()) print(report_text_, line_end, title, line_end);
}

void report_writer::report_data_blocks() {
    tables_.arrange_data_block(trans_buff_);
    if (!tables_.has_data_blocks()) return print(report_text_, line_end, "There are no data blocks.", line_end);
    print(report_text_, line_end, "*** Data Block Collections ***", line_end);
    for (std::size_t k = 0; k < data_block_rows.size(); ++k) {
        const std::uint8_t address = tables_.data_block_addr.at(k);
        if (address == 0) continue;
        const data_block_row& row = data_block_rows.at(k);
        heading(row.report_title);
        row.report(report_text_, trans_buff_, address);
    }
}

void report_writer::report_detail_timings_of_block_1() {
    if (tables_.cea_dtd_offset == 0) return;
    tables_.arrange_descriptor(trans_buff_, 1);
    int count = 0;
    for (const descriptor_row& row : tables_.descriptor_map) {
        if (row.kind != descriptor_class::detail_timing) continue;
        ++count;
        print(report_text_, line_end, line_end);
        print_line(report_text_, "--- BK1.Detail Timing", number_text(count), " ---");
        // Intended: it prints the first one again for the seventh.
        report_detail(1, count == 7 ? 1 : count);
    }
}

void report_writer::report_standard(std::uint8_t address) { decode_standard(report_text_, trans_buff_, address); }

void report_writer::report_descriptor(std::uint8_t kind, int count, std::uint8_t code) {
    if (code == descriptor_code::range_limits) print_line(report_text_);
    decode_found_descriptor(report_text_, trans_buff_, tables_, kind, count, code);
}

void report_writer::report_detail(std::uint8_t block, int count) {
    decode_found_detail(report_text_, trans_buff_, tables_, block, count);
}

void report_writer::report_dtv() {
    heading("DTV Monitor Support");
    decode_dtv(report_text_, trans_buff_, tables_.is_cea_block1);
}

void report_writer::heading(std::string_view title) { print(report_text_, line_end, "--- ", title, " ---", line_end); }

} // namespace

bool report_build(std::string& report_text, const edid_buffer& trans_buff, translation_tables& tables, double& sn_value,
                  std::string_view date, std::string_view time) {
    report_text.clear();
    print_line(report_text, report_title);
    print(report_text, date, " ", time, line_end, line_end);
    if (!is_vesa_basic_block(trans_buff)) {
        print_line(report_text, "Block 0: NOT VESA Basic Block");
        print_header(report_text, trans_buff);
        return false;
    }
    while_doing([] { return "Building the EDID report"; },
                [&] {
                    report_writer writer(report_text, trans_buff, tables, sn_value);
                    writer.build_block_0();
                    writer.build_block_1();
                });
    print(report_text, line_end, line_end, "END.");
    return true;
}

} // namespace desk
