// Saved files read back unchanged: any bytes, shown in a window, saved in each form and reopened.

#include "desk_under_fuzz.h"
#include "edid/byte_step.h"
#include "edid/file_readers.h"
#include "edid/file_writers.h"
#include "runtime/windows_1252.h"

#include <algorithm>
#include <numeric>

namespace {

using namespace desk;

/// Opens a file in the WRITE window of a new desk and returns the window's text.
template <class Read>
std::string opened(std::string_view file, byte_step::append when, Read read) {
    fuzz::edid_side d;
    byte_step step(d.edid, d.texts, when);
    fuzz::ends_well([&] { fuzz::demand(read(file, step), "a saved file is accepted"); });
    return d.edid.txt_write.text;
}

/// A block whose other bytes sum to a multiple of 256 can't be opened, whatever its checksum.
bool can_be_opened(const edid_buffer& edid) {
    const auto sum_of_block = [&](std::ptrdiff_t from) {
        return std::accumulate(edid.begin() + from, edid.begin() + from + 127, 0);
    };
    return sum_of_block(0) % 256 != 0 && sum_of_block(128) % 256 != 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::edid_side d;
    edid_buffer& edid = d.buffers.read_buff;
    edid.fill(0xFF);
    std::copy_n(data, std::min(size, edid.size()), edid.begin());
    d.texts.buff2win(buff::read, 2);
    const std::string shown = d.edid.txt_read.text;
    const std::string held(edid.begin(), edid.end());
    fuzz::demand(bin_of(shown) == held, "a BIN file holds the bytes");
    if (!can_be_opened(edid)) return 0;
    for (const std::string& hex : {simple_hex_of(shown), c_language_hex_of(shown)}) {
        fuzz::demand(bytes_from_text(hex) == hex, "a HEX file of an EDID is plain text");
        fuzz::demand(bin_of(opened(hex, byte_step::append::line_by_line, read_hex)) == held,
                     "a HEX file holds the bytes");
    }
    fuzz::demand(opened(held, byte_step::append::at_once, read_bin) == shown, "a BIN file is shown as it was read");
    return 0;
}
