#pragma once

#include "qt/text_page.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace desk::qt {

/// Exposes a text page to screen readers as read-only text with a cursor and a selection. Positions count UTF-16
/// units, with one unit for each line break.
class accessible_text_page final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit accessible_text_page(text_page& p) : QAccessibleWidget(&p, QAccessible::EditableText), page_(p) {}

    QAccessible::State state() const override;
    QString text(QAccessible::Text what) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    QString textBeforeOffset(int position, QAccessible::TextBoundaryType kind, int* start, int* end) const override;
    QString textAfterOffset(int position, QAccessible::TextBoundaryType kind, int* start, int* end) const override;
    QString textAtOffset(int position, QAccessible::TextBoundaryType kind, int* start, int* end) const override;
    int characterCount() const override;
    QRect characterRect(int position) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int position, int* start, int* end) const override;

private:
    const text_lines& lines() const;
    int position_of(std::size_t offset) const;
    std::size_t offset_of(int position) const;
    text_lines::range part_at(std::size_t offset, QAccessible::TextBoundaryType kind) const;
    QString part_text(text_lines::range part, int* start, int* end) const;

    text_page& page_;
};

} // namespace desk::qt
