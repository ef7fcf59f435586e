#include "translate/node_dispatch.h"

#include "runtime/text.h"
#include "translate/decode/audio.h"
#include "translate/decode/basic.h"
#include "translate/decode/binary_list.h"
#include "translate/decode/color.h"
#include "translate/decode/colorimetry.h"
#include "translate/decode/descriptor.h"
#include "translate/decode/dtv.h"
#include "translate/decode/established.h"
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

#include <algorithm>
#include <array>

namespace desk {

namespace {

/// The pictures of the positions that each bit of the speaker allocation byte stands for, from bit 0 on.
std::array<std::vector<picture*>, speaker_positions.size()> pictures_by_bit(translation_frame& view) {
    return {{
        {&view.pic_speaker_fl, &view.pic_speaker_fr},
        {&view.pic_speaker_lfe},
        {&view.pic_speaker_fc},
        {&view.pic_speaker_rl, &view.pic_speaker_rr},
        {&view.pic_speaker_rc},
        {&view.pic_speaker_flc, &view.pic_speaker_frc},
        {&view.pic_speaker_rlc, &view.pic_speaker_rrc},
    }};
}

} // namespace

node_dispatch::node_dispatch(translation_frame& view, const edid_buffers& buffers, translation_tables& tables,
                             serial_number& serial, const shared_fields& fields)
    : translation_(view)
    , trans_buff_(buffers.trans_buff)
    , tables_(tables)
    , serial_(serial)
    , fields_(fields)
    , block_0_(rows_of_block_0())
    , block_1_(rows_of_block_1()) {
    translation_.tree_edid.on_node_click = [this](int node) { node_click(node); };
}

void node_dispatch::node_click(int node) {
    for (check_box& box : translation_.chk_established)
        box.visible = false;
    hide_speakers();
    tree_view& tree = translation_.tree_edid;
    tree.set_bold(tree_sel_index, false);
    tree.set_bold(node, true);
    translation_.txt_edid.text = "";
    show_node(tree.node(node).key);
    tree_sel_index = static_cast<std::int16_t>(node);
}

void node_dispatch::hide_speakers() {
    for (const auto& pictures : pictures_by_bit(translation_))
        for (picture* p : pictures)
            p->visible = false;
}

// A key without a row, as that of a third monitor name, leaves the box empty.
void node_dispatch::show_node(const std::string& key) {
    for (const auto* rows : {&block_0_, &block_1_}) {
        const auto row = std::find_if(rows->begin(), rows->end(), [&](const node_row& r) { return r.key == key; });
        if (row != rows->end()) return row->show();
    }
}

std::vector<node_dispatch::node_row> node_dispatch::rows_of_block_0() {
    namespace code = descriptor_code;
    namespace kind = descriptor_class;
    const auto nothing = [] {};
    const auto decode = [this](auto decoder) {
        return [this, decoder] { append([&](std::string& text) { decoder(text, trans_buff_); }); };
    };
    return {
        {"block0_root_true", [this] { root_of_block_0("Block 0 is VESA Basic Block"); }},
        {"block0_root_false", [this] { root_of_block_0("Block 0 is not VESA Basic Block"); }},
        {"block0_binary", [this] { binary_list(0); }},
        {"block0_vendor", [this] { vendor(); }},
        {"block0_basic", decode(decode_basic)},
        {"block0_color", decode(decode_color)},
        {"block0_established", [this] { established(); }},
        {"block0_standard", nothing},
        {"block0_standard1", [this] { standard(1, 3, 38); }},
        {"block0_standard2", [this] { standard(4, 3, 44); }},
        {"block0_standard3", [this] { standard(7, 2, 50); }},
        {"block0_dt_mon", nothing},
        {"block0_sn", [this] { descriptor(kind::serial_number, 1, code::serial_number); }},
        {"block0_ascii", [this] { descriptor(kind::ascii_string, 1, code::ascii_string); }},
        {"block0_limit", [this] { descriptor(kind::range_limits, 1, code::range_limits); }},
        {"block0_name1", [this] { descriptor(kind::monitor_name, 1, code::monitor_name); }},
        {"block0_name2", [this] { descriptor(kind::monitor_name, 2, code::monitor_name); }},
        {"block0_std_timing", [this] { translation_.txt_edid.text = "Additional Standard Timings 9 ~ 14"; }},
        {"block0_std_t1", [this] { descriptor(kind::standard_timings, 1, code::standard_timings_9_to_11); }},
        {"block0_std_t2", [this] { descriptor(kind::standard_timings, 1, code::standard_timings_12_to_14); }},
        {"block0_detail1", [this] { detail(0, 1); }},
        {"block0_detail2", [this] { detail(0, 2); }},
        {"block0_detail3", [this] { detail(0, 3); }},
        {"block0_detail4", [this] { detail(0, 4); }},
        {"block0_t_unknown", [this] { descriptor(kind::unknown, 1, code::unknown); }},
    };
}

std::vector<node_dispatch::node_row> node_dispatch::rows_of_block_1() {
    namespace kind = data_block_kind;
    const auto decode = [this](std::size_t k, auto decoder) {
        return [this, k, decoder] {
            append([&](std::string& text) { decoder(text, trans_buff_, tables_.data_block_addr.at(k)); });
        };
    };
    return {
        {"block1_root_true", [this] { tag_of_block_1("Block 1 is CEA 861 Extension Block", hex(trans_buff_[128])); }},
        {"block1_root_false",
         [this] { tag_of_block_1("Block 1 is not CEA 861 Extension Block", "0x" + hex2(trans_buff_[128])); }},
        {"block1_binary", [this] { binary_list(1); }},
        {"block1_dtv",
         [this] { append([this](std::string& text) { decode_dtv(text, trans_buff_, tables_.is_cea_block1); }); }},
        {"block1_db", [this] { data_block_collection(); }},
        {"block1_db_audio", decode(kind::audio, decode_audio_block)},
        {"block1_db_video", decode(kind::video, decode_video_block)},
        {"block1_db_vsdb", decode(kind::vendor_specific, decode_vsdb)},
        {"block1_db_speaker", [this] { speakers(); }},
        {"block1_db_vcap", decode(kind::video_capability, decode_video_capability)},
        {"block1_db_color", decode(kind::colorimetry, decode_colorimetry)},
        {"block1_db_unknown", [this] { unknown_data_block(); }},
        {"block1_detail", [] {}},
        {"block1_detail1", [this] { detail(1, 1); }},
        {"block1_detail2", [this] { detail(1, 2); }},
        {"block1_detail3", [this] { detail(1, 3); }},
        {"block1_detail4", [this] { detail(1, 4); }},
        {"block1_detail5", [this] { detail(1, 5); }},
        {"block1_detail6", [this] { detail(1, 6); }},
        {"block1_detail7", [this] { detail(1, 7); }},
    };
}

void node_dispatch::append(const decoder& decode) {
    std::string text;
    try {
        decode(text);
    } catch (...) {
        translation_.txt_edid.text += text;
        throw;
    }
    translation_.txt_edid.text += text;
}

void node_dispatch::root_of_block_0(std::string_view title) {
    append([&](std::string& text) {
        print_line(text, title);
        print_header(text, trans_buff_);
    });
}

void node_dispatch::tag_of_block_1(std::string_view title, const std::string& tag) {
    append([&](std::string& text) {
        print_line(text, title);
        print(text, "Block Tag = ", tag);
    });
}

void node_dispatch::binary_list(std::size_t block) {
    append([&](std::string& text) { print_binary_list(text, trans_buff_, block); });
}

void node_dispatch::vendor() {
    serial_.get_sn(buff::trans);
    append([this](std::string& text) { decode_vendor(text, trans_buff_, fields_.sn_value); });
}

void node_dispatch::established() {
    for (check_box& box : translation_.chk_established) {
        box.value = 0;
        box.visible = true;
    }
    append(decode_established);
    for (std::size_t i = 0; i < established_timings.size(); ++i)
        if (is_established(established_timings.at(i), trans_buff_)) translation_.chk_established.at(i).value = 1;
}

void node_dispatch::standard(int first_number, int count, std::uint8_t address) {
    append([&](std::string& text) { print_standard_timings(text, trans_buff_, first_number, count, address); });
}

void node_dispatch::descriptor(std::uint8_t kind, int count, std::uint8_t code) {
    append([&](std::string& text) { decode_found_descriptor(text, trans_buff_, tables_, kind, count, code); });
}

void node_dispatch::detail(std::uint8_t block, int count) {
    append([&](std::string& text) { decode_found_detail(text, trans_buff_, tables_, block, count); });
}

void node_dispatch::data_block_collection() {
    if (!tables_.has_data_blocks()) translation_.txt_edid.text = "There are no data blocks.";
}

void node_dispatch::speakers() {
    append([this](std::string& text) {
        const std::uint8_t address = tables_.data_block_addr[data_block_kind::speaker];
        const std::uint8_t s = decode_speaker_block(text, trans_buff_, address);
        const auto pictures = pictures_by_bit(translation_);
        for (std::size_t i = 0; i < pictures.size(); ++i)
            if (bit(s, static_cast<int>(i)))
                for (picture* p : pictures.at(i))
                    p->visible = true;
    });
}

void node_dispatch::unknown_data_block() {
    append([this](std::string& text) {
        print_line(text, "Unknwon Data Block");
        print_tag(text, trans_buff_, tables_.data_block_addr[data_block_kind::unknown]);
    });
}

} // namespace desk
