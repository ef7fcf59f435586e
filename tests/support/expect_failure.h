#pragma once

#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace desk::test {

/// The code of the run-time failure thrown by `work`, if any.
template <class Work>
std::optional<failure> failure_of(Work&& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        return f.code();
    }
    return std::nullopt;
}

/// The sentence of the run-time failure thrown by `work`; empty if none.
template <class Work>
std::string sentence_of(Work&& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        return f.sentence();
    }
    return "";
}

} // namespace desk::test
