#pragma once

#include "runtime/failure.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace desk::test {

/// The run-time failure that `work` ends in; nothing where it ends well.
template <class Work>
std::optional<failure> failure_of(Work&& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        return f.code();
    }
    return std::nullopt;
}

/// What the run-time failure that `work` ends in tells the operator; empty where it ends well.
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
