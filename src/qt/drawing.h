#pragma once

#include "qt/scheme.h"

#include <QPainter>
#include <QRect>
#include <QStyle>
#include <QStyleOption>

class QWidget;

namespace desk::qt {

/// What the style draws, and where.
struct sketch {
    sketch(QPainter& on, const QStyleOption& what, const QWidget* in);

    bool is(QStyle::StateFlag state) const { return (option.state & state) != 0; }
    bool enabled() const { return is(QStyle::State_Enabled); }
    bool hovered() const { return enabled() && is(QStyle::State_MouseOver); }
    /// Text colour.
    QColor ink() const { return enabled() ? colors.text : colors.disabled; }
    /// Border colour of an interactive element.
    QColor outline() const;
    /// Fill colour of a pressable element.
    QColor face() const;

    /// A rounded box with a hairline inside its edge.
    void box(const QRectF& place, const QColor& fill, const QColor& border, double radius) const;
    /// The arrow of lists, trees and scroll bars.
    void chevron(const QRectF& place, Qt::ArrowType points_to, const QColor& color) const;

    QPainter& painter;
    const QStyleOption& option;
    const QWidget* widget;
    const scheme_colors& colors;
    double scale;
    double line; ///< hairline width
};

// ---- buttons and boxes ----

void draw_button(const sketch& s);
void draw_tool_button(const sketch& s);
/// Centred in its place.
void draw_check_mark(const sketch& s);
void draw_option_mark(const sketch& s);
void draw_text_field(const sketch& s);
void draw_combo_box(const sketch& s, const QStyleOptionComboBox& combo, const QRect& arrow);
QRect combo_box_part(QStyle::SubControl part, const QStyleOptionComboBox& combo, const QWidget* widget);

// ---- sliders and scroll bars ----

/// A scroll bar that is a control is drawn as a slider with arrows.
bool is_slider(const QWidget* bar);
void draw_scroll_bar(const sketch& s, const QStyleOptionSlider& bar);
QRect scroll_bar_part(QStyle::SubControl part, const QStyleOptionSlider& bar, const QWidget* widget);

// ---- frames ----

void draw_group(const sketch& s, const QStyleOptionGroupBox& group);
QFont title_font(const QWidget& group);
QRect title_place(const QStyleOptionGroupBox& group, const QWidget& widget);
void draw_area_frame(const sketch& s);
void draw_line(const sketch& s);
void draw_tool_tip(const sketch& s);

// ---- lists ----

void draw_row(const sketch& s);
/// The check box of a row accepts clicks in a square larger than its mark.
QRect row_part(QStyle::SubElement part, const QStyleOptionViewItem& row, const QWidget* widget);
void draw_header_section(const sketch& s);
void draw_branch(const sketch& s);

// ---- message boxes ----

QIcon box_sign(QStyle::StandardPixmap sign);

} // namespace desk::qt
