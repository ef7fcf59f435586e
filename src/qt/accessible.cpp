#include "qt/accessible.h"

#include "qt/accessible_text_page.h"
#include "qt/text_label.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFrame>

namespace desk::qt {

namespace {

/// A label for screen readers: a link if it can be clicked, else a text; absent if empty.
class accessible_label final : public QAccessibleWidget {
public:
    explicit accessible_label(text_label& l) : QAccessibleWidget(&l), label_(l) {}

    QAccessible::Role role() const override {
        if (label_.on_click && label_.focusPolicy() != Qt::NoFocus) return QAccessible::Link;
        return label_.accessibleName().isEmpty() ? QAccessible::Whitespace : QAccessible::StaticText;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (role() == QAccessible::Link) names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& name) override {
        if (name != pressAction())
            QAccessibleWidget::doAction(name);
        else if (label_.isEnabled())
            label_.on_click();
    }

private:
    text_label& label_;
};

QAccessibleInterface* interface_of(const QString& /*class_name*/, QObject* object) {
    if (auto* const l = qobject_cast<text_label*>(object)) return new accessible_label(*l);
    if (auto* const p = qobject_cast<text_page*>(object)) return new accessible_text_page(*p);
    auto* const f = qobject_cast<QFrame*>(object);
    if (f != nullptr && (f->frameShape() == QFrame::HLine || f->frameShape() == QFrame::VLine))
        return new QAccessibleWidget(f, QAccessible::Separator);
    return nullptr;
}

} // namespace

void make_accessible() { QAccessible::installFactory(interface_of); }

} // namespace desk::qt
