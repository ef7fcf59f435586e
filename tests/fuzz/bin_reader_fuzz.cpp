#include "reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    fuzz::take_file(fuzz::text_of(data, size), byte_step::append::at_once, read_bin);
    return 0;
}
