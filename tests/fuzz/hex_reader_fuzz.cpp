#include "reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    fuzz::take_file(fuzz::text_of(data, size), byte_step::append::line_by_line, read_hex);
    return 0;
}
