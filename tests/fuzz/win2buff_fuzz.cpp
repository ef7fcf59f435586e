#include "desk_under_fuzz.h"
#include "edid/format/file_writers.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    if (size == 0) return 0;
    fuzz::edid_side d;
    workbench_frame& view = d.edid;
    // the first byte chooses the buffer, and so the window
    const std::uint8_t buff_type = data[0] % 4;
    const std::string text(fuzz::text_of(data + 1, size - 1));
    (buff_type == buff::write ? view.txt_write : view.txt_read).text = text;
    const std::size_t pairs = bin_of(text).size();
    const bool fits = fuzz::ends_well([&] { d.texts.win2buff(buff_type, 1); });
    fuzz::demand(fits == (pairs <= edid_size), "a buffer holds exactly 256 bytes");
    const edid_buffer& filled = d.buffers.of(buff_type);
    const auto rest_begin = filled.begin() + static_cast<std::ptrdiff_t>(std::min(pairs, edid_size));
    const std::uint8_t rest = buff_type == buff::write && fits ? 0xFF : 0;
    fuzz::demand(std::all_of(rest_begin, filled.end(), [&](std::uint8_t byte) { return byte == rest; }),
                 "the bytes after the text are filled in write_buff alone");
    c_language_hex_of(text);
    return 0;
}
