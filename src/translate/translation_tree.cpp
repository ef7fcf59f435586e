#include "translate/translation_tree.h"

#include "runtime/failure.h"
#include "runtime/text.h"
#include "translate/decode/block_1_tags.h"
#include "translate/decode/data_block_table.h"
#include "translate/decode/header.h"

#include <array>

namespace desk {

namespace {

constexpr int no_parent = 0;

// The nodes' numbers, in the order in which they are added. Intended: they are fixed and assume that block 1 has a
// node.
constexpr int block_0_root = 1;
constexpr int block_1_root = 2;
constexpr int standard_timings = 8;
constexpr int descriptors = 12;

struct fixed_node {
    const char* key;
    const char* title;
    int parent;
};

constexpr std::array<fixed_node, 10> fixed_nodes = {{
    {"block0_binary", "Binary List", block_0_root},
    {"block0_vendor", "Vendor/Product Id", block_0_root},
    {"block0_basic", "Basic Display Parameters", block_0_root},
    {"block0_color", "Color Characteristics", block_0_root},
    {"block0_established", "Established Timings", block_0_root},
    {"block0_standard", "Standard Timings", block_0_root},
    {"block0_standard1", "Standard Timings 1,2,3", standard_timings},
    {"block0_standard2", "Standard Timings 4,5,6", standard_timings},
    {"block0_standard3", "Standard Timings 7,8", standard_timings},
    {"block0_dt_mon", "Detail Timings/Monitor Descriptors", block_0_root},
}};

} // namespace

translation_tree::translation_tree(workbench_frame& workbench, translation_frame& view, edid_buffers& buffers,
                                   translation_tables& tables, node_dispatch& dispatch)
    : translation_(view), tree_(view.tree_edid), buffers_(buffers), tables_(tables), dispatch_(dispatch) {
    workbench.cmd_read_translate.on_click = [this] { cmd_read_translate_click(); };
    workbench.cmd_write_translate.on_click = [this] { cmd_write_translate_click(); };
    translation_.cmd_edid_back.on_click = [this] { cmd_edid_back_click(); };
}

void translation_tree::cmd_read_translate_click() {
    translation_.fra_edid_edit.visible = true;
    translate_edid(buff::read);
}

void translation_tree::cmd_write_translate_click() {
    translation_.fra_edid_edit.visible = true;
    translate_edid(buff::write);
}

void translation_tree::cmd_edid_back_click() { translation_.fra_edid_edit.visible = false; }

void translation_tree::translate_edid(std::uint8_t buff_type) {
    const bool write_side = buff_type == buff::write;
    translation_.fra_edid_edit.caption = write_side ? "Translate [ Write ] EDID" : "Translate [ Read ] EDID";
    buffers_.trans_buff = write_side ? buffers_.write_buff : buffers_.read_buff;
    dispatch_.tree_sel_index = 1;
    tree_.clear();
    while_doing([&] { return "Translating the EDID of the " + std::string(write_side ? "WRITE" : "READ") + " side"; },
                [this] {
                    if (is_vesa_basic_block(buffers_.trans_buff))
                        translate_blocks();
                    else
                        tree_.add(no_parent, "block0_root_false", "Block 0: NOT VESA Basic Block");
                    dispatch_.node_click(block_0_root);
                });
}

void translation_tree::translate_blocks() {
    tree_.add(no_parent, "block0_root_true", "Block 0: VESA Basic Block");
    add_block_1_root();
    add_fixed_nodes_of_block_0();
    add_descriptors_of_block_0();
    if (tables_.is_cea_block1) add_block_1();
    tree_.set_expanded(block_0_root, true);
}

void translation_tree::add_block_1_root() {
    const std::uint8_t tag = buffers_.trans_buff[edid_block_size];
    tables_.is_cea_block1 = tag == cea_861_tag;
    if (tables_.is_cea_block1) return tree_.add(no_parent, "block1_root_true", std::string(cea_861_title));
    const std::string_view title = title_of_other_block(tag);
    if (!title.empty()) tree_.add(no_parent, "block1_root_false", std::string(title));
}

void translation_tree::add_fixed_nodes_of_block_0() {
    for (const fixed_node& node : fixed_nodes)
        tree_.add(node.parent, node.key, node.title);
}

void translation_tree::add_descriptors_of_block_0() {
    tables_.arrange_descriptor(buffers_.trans_buff, 0);
    int names = 0;
    int details = 0;
    int edid_node_count = descriptors;
    const auto add = [&](int parent, const std::string& key, const std::string& title) {
        tree_.add(parent, key, title);
        ++edid_node_count;
    };
    const auto add_numbered = [&](int& counter, const std::string& key, const std::string& title) {
        ++counter;
        add(descriptors, key + number_text(counter), title + number_text(counter));
    };
    for (std::size_t i = 0; i < descriptors_of_block_0; ++i) {
        switch (tables_.descriptor_map.at(i).kind) {
        case descriptor_class::serial_number:
            add(descriptors, "block0_sn", "Monitor Serial Number");
            break;
        case descriptor_class::ascii_string:
            add(descriptors, "block0_ascii", "Monitor ASCII String");
            break;
        case descriptor_class::range_limits:
            add(descriptors, "block0_limit", "Monitor Range Limits");
            break;
        case descriptor_class::monitor_name:
            add_numbered(names, "block0_name", "Monitor Name");
            break;
        case descriptor_class::standard_timings:
            add(descriptors, "block0_std_timing", "Monitor Standard Timing");
            // Intended: the second is one level below the first.
            add(edid_node_count, "block0_std_t1", "Standard Timings 9,10,11");
            add(edid_node_count, "block0_std_t2", "Standard Timings 12,13,14");
            break;
        case descriptor_class::detail_timing:
            add_numbered(details, "block0_detail", "Detail Timing");
            break;
        default:
            add(descriptors, "block0_t_unknown", "Unknown Tag");
            break;
        }
    }
}

void translation_tree::add_block_1() {
    tree_.add(block_1_root, "block1_binary", "Binary List");
    tree_.add(block_1_root, "block1_dtv", "DTV Monitor Support");
    tree_.add(block_1_root, "block1_db", "Data Block Collection");
    const int data_block_parent = tree_.node_count();
    tables_.arrange_data_block(buffers_.trans_buff);
    if (tables_.has_data_blocks()) add_data_blocks(data_block_parent);
    if (tables_.cea_dtd_offset != 0) add_detail_timings_of_block_1();
}

void translation_tree::add_data_blocks(int data_block_parent) {
    for (std::size_t k = 0; k < data_block_rows.size(); ++k) {
        if (tables_.data_block_addr.at(k) == 0) continue;
        const data_block_row& row = data_block_rows.at(k);
        tree_.add(data_block_parent, std::string(row.key), std::string(row.title));
    }
}

void translation_tree::add_detail_timings_of_block_1() {
    tree_.add(block_1_root, "block1_detail", "Detail Timings Extended");
    const int parent = tree_.node_count();
    tables_.arrange_descriptor(buffers_.trans_buff, 1);
    int details = 0;
    for (const descriptor_row& row : tables_.descriptor_map) {
        if (row.kind != descriptor_class::detail_timing) continue;
        ++details;
        tree_.add(parent, "block1_detail" + number_text(details), "Detail Timing" + number_text(details));
    }
    tree_.set_expanded(block_1_root, true);
}

} // namespace desk
