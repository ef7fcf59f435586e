#include "signal/shown_color.h"

#include <algorithm>
#include <cmath>

namespace desk {

namespace {

std::uint8_t part(double value) { return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L)); }

} // namespace

rgb_color shown_color(std::uint8_t color_mode, const std::array<std::uint8_t, 3>& channels) {
    if (color_mode == 1) return channels;
    const double cr = channels[0] - 128.0;
    const double y = channels[1];
    const double cb = channels[2] - 128.0;
    // T.871, section 7: the factors follow from BT.601's weights of 0.299, 0.587 and 0.114
    return {part(y + 1.402 * cr), part(y - (0.114 * 1.772 * cb + 0.299 * 1.402 * cr) / 0.587), part(y + 1.772 * cb)};
}

} // namespace desk
