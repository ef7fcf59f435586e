#pragma once

#include "desk_under_fuzz.h"
#include "edid/byte_step.h"
#include "edid/file_writers.h"

#include <algorithm>

namespace desk::fuzz {

/// Reads a file into the WRITE window, and from there into the buffer. `read` returns false for a refused file.
template <class Read>
void take_file(std::string_view file, byte_step::append when, Read read) {
    edid_side d;
    byte_step step(d.edid, d.texts, when);
    bool taken = false;
    if (!ends_well([&] { taken = read(file, step); }) || !taken) return;
    const std::string bytes = bin_of(d.edid.txt_write.text.get());
    const bool fits = ends_well([&] { d.texts.win2buff(buff::write, 1); });
    demand(fits == (bytes.size() <= edid_size), "a buffer holds exactly 256 bytes");
    const auto same = [](char shown, std::uint8_t held) { return static_cast<std::uint8_t>(shown) == held; };
    const std::size_t count = std::min(bytes.size(), edid_size);
    demand(std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count), d.buffers.write_buff.begin(),
                      same),
           "the buffer holds what the window shows");
}

} // namespace desk::fuzz
