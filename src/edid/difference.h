#pragma once

#include "edid/buffers.h"
#include "edid/workbench_frame.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace desk {

/// The bytes in which the two sides differed at the last comparison, until one of the texts changes.
class difference {
public:
    explicit difference(const workbench_frame& view) : workbench_(view) {}

    /// Compares the sides.
    void compare(const edid_buffers& buffers);

    /// The indexes of the bytes, 0 to 255, in ascending order; none once a text has changed.
    const std::vector<std::size_t>& bytes() const;

private:
    struct state {
        int replacements = 0;
        std::size_t size = 0;
        bool operator==(const state&) const = default;
    };
    static state state_of(const text_box& box) { return {box.text.replacements(), box.text.get().size()}; }

    const workbench_frame& workbench_;
    std::vector<std::size_t> bytes_;
    state write_;
    state read_;
};

/// The position of the two digits of each byte in a window's text; none in a text that begins with words.
std::vector<std::size_t> places_of_bytes(std::string_view window_text);

} // namespace desk
