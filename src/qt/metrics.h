#pragma once

#include "qt/plan_scale.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace desk::qt {

/// Sizes in pixels at 1:1, on a grid of 4.
namespace metric {

inline constexpr double radius = 4;
inline constexpr double focus_ring = 2;
inline constexpr double area_frame = 2; ///< around lists and text pages, whose corners lie inside the round border

inline constexpr double check_mark = 16;
inline constexpr double check_hit = 20;
inline constexpr double mark_to_text = 6;
inline constexpr double row = 20;
inline constexpr double choice_row = 24; ///< of a drop-down list
inline constexpr double row_inset = 4;   ///< beside the text of a row
inline constexpr double header = 24;
inline constexpr double text_inset = 6;
inline constexpr double page_inset = 4; ///< beside the lines of a text

inline constexpr double scroll_bar = 12;
inline constexpr double scroll_thumb = 6;
inline constexpr double shortest_thumb = 28;
inline constexpr double slider_groove = 6;
inline constexpr double slider_handle = 16;
inline constexpr double slider_arrow = 22;

inline constexpr double combo_arrow = 24;
inline constexpr double chevron = 4; ///< half its width

inline constexpr int title_text = 15;
inline constexpr int small_text = 12;
inline constexpr double title_left = 12;
inline constexpr double page_title_left = 6;
inline constexpr double title_top = 6;
inline constexpr double group_title_left = 8;
inline constexpr double group_title_top = 4;

inline constexpr double column_caption_left = 14; ///< beside the mark of the current view
inline constexpr double tall_button = 40;         ///< from this height on, the caption is a title
inline constexpr double shadow = 16;
inline constexpr double shadow_drop = 4;
inline constexpr int box_sign = 32;
inline constexpr int box_text_width = 280; ///< so that a message box's title fits in its title bar
inline constexpr double box_button = 28;

} // namespace metric

/// Scales a size to the window of `w`.
inline int scaled(double pixels, const QWidget* w) { return std::max(1, qRound(pixels * plan_scale(w))); }

/// Border width: a whole number of screen pixels, at least one.
inline double hairline(const QWidget* w) {
    const double on_screen = w == nullptr ? 1 : w->devicePixelRatioF();
    return std::max(1.0, std::floor(plan_scale(w) * on_screen)) / on_screen;
}

} // namespace desk::qt
