#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>

namespace desk {

/// Throws failure::subscript_out_of_range.
[[noreturn]] void fail_subscript(std::int64_t subscript, std::size_t size);

/// An element of an array. Throws failure::subscript_out_of_range for an invalid subscript.
template <class Array>
auto& element(Array& array, std::integral auto subscript) {
    if (subscript < 0 || static_cast<std::size_t>(subscript) >= array.size())
        fail_subscript(static_cast<std::int64_t>(subscript), array.size());
    return array[static_cast<std::size_t>(subscript)];
}

} // namespace desk
