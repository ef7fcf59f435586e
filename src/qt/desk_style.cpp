#include "qt/desk_style.h"

#include "qt/drawing.h"
#include "qt/metrics.h"

#include <QAbstractItemView>
#include <QIcon>
#include <QLabel>
#include <QPalette>

namespace desk::qt {

desk_style::desk_style() : QProxyStyle("Fusion") {}

void desk_style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
    const sketch s(*painter, *option, widget);
    switch (element) {
    case PE_PanelButtonCommand:
        return draw_button(s);
    case PE_PanelButtonTool:
        return draw_tool_button(s);
    case PE_IndicatorCheckBox:
        return draw_check_mark(s);
    case PE_IndicatorItemViewItemCheck:
        return draw_check_mark(s);
    case PE_IndicatorRadioButton:
        return draw_option_mark(s);
    case PE_PanelLineEdit:
        return draw_text_field(s);
    case PE_Frame:
        return draw_area_frame(s);
    case PE_PanelTipLabel:
        return draw_tool_tip(s);
    case PE_PanelItemViewItem:
        return draw_row(s);
    case PE_PanelItemViewRow:
        if (s.is(State_Selected)) draw_row(s);
        return;
    case PE_IndicatorBranch:
        return draw_branch(s);
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, s.colors.surface);
        return;
    case PE_FrameLineEdit:
    case PE_FrameGroupBox:
    case PE_FrameButtonBevel:
    case PE_FrameDefaultButton:
    case PE_FrameFocusRect: // the focus ring shows the focus
        return;
    case PE_IndicatorArrowDown:
    case PE_IndicatorArrowUp:
    case PE_IndicatorArrowLeft:
    case PE_IndicatorArrowRight: {
        const Qt::ArrowType arrow = element == PE_IndicatorArrowUp      ? Qt::UpArrow
                                    : element == PE_IndicatorArrowLeft  ? Qt::LeftArrow
                                    : element == PE_IndicatorArrowRight ? Qt::RightArrow
                                                                        : Qt::DownArrow;
        return s.chevron(option->rect, arrow, s.is(State_Selected) ? s.colors.on_accent : s.ink());
    }
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void desk_style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
    const sketch s(*painter, *option, widget);
    switch (element) {
    case CE_PushButtonBevel:
        return draw_button(s);
    case CE_HeaderSection:
        return draw_header_section(s);
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, s.colors.window);
        return;
    case CE_HeaderLabel:
        if (const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
            painter->setPen(s.colors.secondary);
            painter->drawText(header->rect, Qt::AlignLeft | Qt::AlignVCenter, header->text);
        }
        return;
    case CE_ShapedFrame:
        if (const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option)) {
            if (frame->frameShape == QFrame::HLine || frame->frameShape == QFrame::VLine) return draw_line(s);
            if (frame->frameShape == QFrame::NoFrame) return;
            return draw_area_frame(s);
        }
        return;
    default:
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void desk_style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const {
    const sketch s(*painter, *option, widget);
    if (const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        control == CC_ScrollBar && bar != nullptr)
        return draw_scroll_bar(s, *bar);
    if (const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        control == CC_ComboBox && combo != nullptr)
        return draw_combo_box(s, *combo, combo_box_part(SC_ComboBoxArrow, *combo, widget));
    if (const auto* const group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        control == CC_GroupBox && group != nullptr)
        return draw_group(s, *group);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect desk_style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    switch (element) {
    case SE_LineEditContents: {
        const int inset = scaled(metric::text_inset - 2, widget);
        return option->rect.adjusted(inset, 1, -inset, -1);
    }
    case SE_CheckBoxClickRect:
    case SE_RadioButtonClickRect: {
        // the whole height beside mark and text is clickable
        const bool check = element == SE_CheckBoxClickRect;
        const QRect text =
            QProxyStyle::subElementRect(check ? SE_CheckBoxContents : SE_RadioButtonContents, option, widget);
        const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
        const int width = button == nullptr ? text.width() : button->fontMetrics.horizontalAdvance(button->text);
        QRect taken = option->rect;
        taken.setRight(std::min(taken.right(), text.left() + width + scaled(metric::mark_to_text, widget)));
        return taken;
    }
    case SE_ItemViewItemCheckIndicator:
    case SE_ItemViewItemText:
        if (const auto* const item = qstyleoption_cast<const QStyleOptionViewItem*>(option);
            item != nullptr && (item->features & QStyleOptionViewItem::HasDecoration) == 0)
            return row_part(element, *item, widget);
        return QProxyStyle::subElementRect(element, option, widget);
    default:
        return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect desk_style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                 const QWidget* widget) const {
    if (const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        control == CC_ScrollBar && bar != nullptr)
        return scroll_bar_part(part, *bar, widget);
    if (const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        control == CC_ComboBox && combo != nullptr)
        return combo_box_part(part, *combo, widget);
    if (const auto* const group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        control == CC_GroupBox && part == SC_GroupBoxLabel && group != nullptr && widget != nullptr)
        return title_place(*group, *widget);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize desk_style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                   const QWidget* widget) const {
    QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_ItemViewItem: {
        const bool drops_down = widget != nullptr && widget->window()->windowType() == Qt::Popup;
        const int row = scaled(drops_down ? metric::choice_row : metric::row, widget);
        size.setHeight(std::max(option->fontMetrics.height(), row));
        // row_part() subtracts the inset from the text
        size.rwidth() += scaled(metric::row_inset, widget);
        break;
    }
    case CT_HeaderSection:
        size.setHeight(scaled(metric::header, widget));
        break;
    case CT_PushButton:
        size.setHeight(std::max(size.height(), scaled(metric::box_button, widget)));
        break;
    default:
        break;
    }
    return size;
}

int desk_style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_DefaultFrameWidth:
        return scaled(metric::area_frame, widget);
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return scaled(
            qobject_cast<const QAbstractItemView*>(widget) != nullptr ? metric::check_hit : metric::check_mark, widget);
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return scaled(metric::check_mark, widget);
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return scaled(metric::mark_to_text, widget);
    case PM_ScrollBarExtent:
        return scaled(metric::scroll_bar, widget);
    case PM_ScrollBarSliderMin:
        return scaled(metric::shortest_thumb, widget);
    case PM_ScrollView_ScrollBarSpacing:
    case PM_ScrollView_ScrollBarOverlap:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    case PM_FocusFrameHMargin:
        // the text of a row has one more pixel of padding
        return scaled(metric::row_inset / 2, widget) - 1;
    case PM_HeaderMargin:
        return scaled(4, widget);
    case PM_MessageBoxIconSize:
        return metric::box_sign;
    case PM_ToolTipLabelFrameWidth:
        return 4;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int desk_style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* more) const {
    switch (hint) {
    case SH_EtchDisabledText: // it makes grey letters harder to read
    case SH_ComboBox_Popup:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ScrollView_FrameOnlyAroundContents:
    case SH_Widget_Animate:
    case SH_Widget_Animation_Duration:
        return 0;
    case SH_ItemView_ShowDecorationSelected:
    case SH_GroupBox_TextLabelVerticalAlignment:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, more);
    }
}

QIcon desk_style::standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const {
    switch (sign) {
    case SP_MessageBoxCritical:
    case SP_MessageBoxWarning:
    case SP_MessageBoxQuestion:
    case SP_MessageBoxInformation:
        return box_sign(sign);
    default:
        return QProxyStyle::standardIcon(sign, option, widget);
    }
}

QPalette desk_style::standardPalette() const { return palette_of(scheme::light); }

void desk_style::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    // rows show hover too
    if (auto* const view = qobject_cast<QAbstractItemView*>(widget)) view->viewport()->setAttribute(Qt::WA_Hover);
    if (auto* const label = qobject_cast<QLabel*>(widget); label != nullptr && label->objectName() == "qt_msgbox_label")
        label->setMinimumWidth(metric::box_text_width);
}

} // namespace desk::qt
