#include "reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    fuzz::take_file(fuzz::text_of(data, size), byte_step::append::at_once, [](std::string_view file, byte_step& step) {
        // a capture without a header would block the desk for ever
        return read_ddc(file, step, [] { throw runtime_failure(failure::does_not_return, "there is no header"); });
    });
    return 0;
}
