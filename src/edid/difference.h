#pragma once

#include "edid/buffers.h"
#include "edid/workbench_frame.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace desk {

/// At which bytes the two sides differed when they were last compared, as long as both texts stay as they were.
class difference {
public:
    explicit difference(const workbench_frame& view) : workbench_(view) {}

    /// The sides are compared.
    void look_at(const edid_buffers& buffers);

    /// The places of the bytes, 0 to 255, in rising order; none once a text has changed.
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

/// Where the two digits of each byte of the EDID begin in a window's text; nothing in a text that begins with words.
std::vector<std::size_t> places_of_bytes(std::string_view window_text);

} // namespace desk
