#pragma once

#include "edid/file_opener.h"
#include "link/exchange.h"
#include "runtime/failure.h"
#include "support/fake_machine.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace desk::fuzz {

/// The EDID side of a new desk on a machine without hardware or files. The whole desk would be ten times slower.
struct edid_side {
    test::fake_machine m;
    window form;
    exchange link{m.host};
    workbench_frame edid;
    shared_fields fields;
    edid_buffers buffers;
    window_text texts{form, edid, buffers, m.events};
    previous_files previous{edid, fields};
    file_number_1 number_1;
    file_opener opener{m.host, form, edid, fields, texts, previous, number_1};
};

inline std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Aborts the fuzzing if an invariant is violated.
inline void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "this does not hold: %s\n", what);
    std::abort();
}

/// Runs `work`; true: it completed, false: a run-time failure. Any other exception ends the fuzzing.
template <class Work>
bool ends_well(Work work) {
    try {
        work();
        return true;
    } catch (const runtime_failure& f) {
        demand(!f.text().empty(), "every failure has its text");
        demand(!f.sentence().empty(), "every failure says what was being done");
        return false;
    }
}

} // namespace desk::fuzz
