#pragma once

#include "runtime/failure.h"
#include "shell/frm_main.h"
#include "support/fake_machine.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace desk::fuzz {

/// A fresh desk on a machine without hardware or files.
struct desk_under_fuzz {
    test::fake_machine m;
    frm_main desk{m.host};
};

inline std::string_view text_of(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the fuzzing where something that always holds does not.
inline void demand(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "this does not hold: %s\n", what);
    std::abort();
}

/// Runs `work`; true: it came to its end, false: a run-time failure. Anything else that is thrown ends the fuzzing.
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
