#pragma once

#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "translate/decode/translation_tables.h"
#include "translate/translation_frame.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The click handler of the tree: the key of the clicked node selects the decoder that shows a part of `trans_buff`.
class node_dispatch {
public:
    node_dispatch(translation_frame& view, const edid_buffers& buffers, translation_tables& tables,
                  serial_number& serial, const shared_fields& fields);

    std::int16_t tree_sel_index = 0; ///< the node clicked last, shown in bold

    /// Throws what a decoder throws; the text that it appended before stays in `txt_edid`.
    void node_click(int node);
    void hide_speakers();

private:
    /// A node by its key, and how to show it.
    struct node_row {
        std::string key;
        std::function<void()> show;
    };
    using decoder = std::function<void(std::string&)>;

    std::vector<node_row> rows_of_block_0();
    std::vector<node_row> rows_of_block_1();
    void show_node(const std::string& key);

    /// Appends to `txt_edid`, even what a decoder appended before it failed.
    void append(const decoder& decode);
    void root_of_block_0(std::string_view title);
    void tag_of_block_1(std::string_view title, const std::string& tag);
    void binary_list(std::size_t block);
    void vendor();
    void established();
    void standard(int first_number, int count, std::uint8_t address);
    void descriptor(std::uint8_t kind, int count, std::uint8_t code);
    void detail(std::uint8_t block, int count);
    void data_block_collection();
    void data_block(std::size_t kind);
    void show_speakers(std::uint8_t allocation);

    translation_frame& translation_;
    const edid_buffer& trans_buff_;
    translation_tables& tables_;
    serial_number& serial_;
    const shared_fields& fields_;
    std::vector<node_row> block_0_;
    std::vector<node_row> block_1_;
};

} // namespace desk
