#include "desk_under_fuzz.h"
#include "signal/catalogue.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    test::fake_machine m;
    exchange link(m.host);
    desk_frame desk_area;
    status_frame status;
    catalogue rows(link, desk_area, status);
    if (!fuzz::ends_well([&] { rows.load(fuzz::text_of(data, size)); })) return 0;
    for (int row = 1; row <= rows.lstv_timing.row_count() && row <= 3; ++row) {
        rows.lstv_timing.select(row);
        fuzz::ends_well([&] { rows.show_timing_detail(); });
    }
    return 0;
}
