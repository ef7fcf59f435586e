#pragma once

#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "translate/translation_frame.h"
#include "translate/translation_tables.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// The one handler behind the tree: by the key of the clicked node it shows what the decoders make of `trans_buff`.
class node_dispatch {
public:
    node_dispatch(translation_frame& view, const edid_buffers& buffers, translation_tables& tables,
                  serial_number& serial, const shared_fields& fields);

    std::int16_t tree_sel_index = 0; ///< the node clicked last, which is the one in bold

    /// Throws what a decoder throws; what it has appended till then stands in `txt_edid`.
    void node_click(int node);
    void hide_speakers();

private:
    /// What the panel shows for the node with a key.
    struct node_row {
        std::string key;
        std::function<void()> show;
    };
    using decoder = std::function<void(std::string&)>;

    std::vector<node_row> rows_of_block_0();
    std::vector<node_row> rows_of_block_1();
    void show_node(const std::string& key);

    /// Appends to `txt_edid`, also what a decoder that fails has made.
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
    void speakers();
    void unknown_data_block();

    translation_frame& translation_;
    const edid_buffer& trans_buff_;
    translation_tables& tables_;
    serial_number& serial_;
    const shared_fields& fields_;
    std::vector<node_row> block_0_;
    std::vector<node_row> block_1_;
};

} // namespace desk
