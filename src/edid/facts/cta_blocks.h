#pragma once

#include "edid/facts/block_reader.h"

#include <cstddef>

namespace desk::facts {

/// Reads the data blocks of CTA-861 from `begin` to before `end`, in an extension block or in a DisplayID block.
void read_data_blocks(const block_reader& block, std::size_t begin, std::size_t end);

/// Each reads the payload of one kind of data block.
void read_audio_block(const payload& data);
void read_video_block(const payload& data);
void read_vendor_block(const payload& data);
void read_speaker_block(const payload& data);
/// `data` begins with the extended tag.
void read_extended_block(const payload& data);

/// The vendor blocks whose meaning is known; `data` begins with the identifier.
void read_hdmi_block(const payload& data);
void read_hdmi_forum_block(const payload& data);
/// Keeps any other vendor block. `kind` is static.
void keep_vendor_block(const payload& data, std::string_view kind);

/// Checks that concern all data blocks of an EDID together.
void check_data_blocks(display_facts& facts);

} // namespace desk::facts
