#pragma once

#include "edid/buffers.h"
#include "edid/workbench_frame.h"
#include "translate/decode/translation_tables.h"
#include "translate/node_dispatch.h"
#include "translate/translation_frame.h"

#include <cstdint>
#include <string>

namespace desk {

/// Builds the tree of an EDID from its blocks 0 and 1. Changes no buffer except `trans_buff`.
class translation_tree {
public:
    translation_tree(workbench_frame& workbench, translation_frame& view, edid_buffers& buffers,
                     translation_tables& tables, node_dispatch& dispatch);

    void cmd_read_translate_click();
    void cmd_write_translate_click();
    void cmd_edid_back_click();

    /// Translates the WRITE buffer (1) or the READ buffer (any other value).
    /// Intended: an EDID whose nodes the tree rejects (failure::index_out_of_bounds for a block 1 of unknown kind,
    /// failure::key_not_unique for a second descriptor of one class) ends the program; so does a failure of the tables.
    /// The nodes added before stay.
    void translate_edid(std::uint8_t buff_type);

private:
    void translate_blocks();
    void add_block_1_root();
    void add_fixed_nodes_of_block_0();
    void add_descriptors_of_block_0();
    void add_block_1();
    void add_data_blocks(int data_block_parent);
    void add_detail_timings_of_block_1();

    translation_frame& translation_;
    tree_view& tree_;
    edid_buffers& buffers_;
    translation_tables& tables_;
    node_dispatch& dispatch_;
};

} // namespace desk
