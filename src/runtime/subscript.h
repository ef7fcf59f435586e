#pragma once

#include "runtime/failure.h"

#include <concepts>
#include <string>

namespace desk {

/// An element of an array. Throws failure::subscript_out_of_range for an invalid subscript.
template <class Array>
auto& element(Array& array, std::integral auto subscript) {
    if (subscript < 0 || static_cast<std::size_t>(subscript) >= array.size()) {
        throw runtime_failure(failure::subscript_out_of_range, "there is no element " + std::to_string(subscript) +
                                                                   " of " + std::to_string(array.size()));
    }
    return array[static_cast<std::size_t>(subscript)];
}

} // namespace desk
