#pragma once

#include <QColor>
#include <QPalette>

namespace desk::qt {

/// The ground of bytes that differ between two EDIDs, under the text of a palette.
inline QColor difference_color(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0x5A, 0x4A, 0x14) : QColor(0xFF, 0xE9, 0xA8);
}

} // namespace desk::qt
