#include "qt/tool_tips.h"

#include "qt/access_keys.h"
#include "qt/elided_text.h"
#include "qt/help_lines.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QStringList>
#include <QToolTip>
#include <QWidget>

namespace desk::qt {

tool_tips::tool_tips(const control& model, QWidget& w) : model_(model), widget_(w) {
    w.installEventFilter(this);
    // the open list is a separate window
    if (auto* const combo = qobject_cast<QComboBox*>(&w)) combo->view()->viewport()->installEventFilter(this);
}

void tool_tips::follow() {
    const QString now = tool_tip_of(model_);
    if (shown_ == now) return;
    shown_ = now;
    widget_.setToolTip(now);
}

bool tool_tips::eventFilter(QObject* watched, QEvent* e) {
    if (e->type() != QEvent::ToolTip) return QObject::eventFilter(watched, e);
    auto* const under = static_cast<QWidget*>(watched);
    const auto& help = *static_cast<QHelpEvent*>(e);
    const QString cut = elided_text_at(*under, help.pos());
    if (cut.isEmpty()) return false;
    // a name from a file is not markup
    const QString alone = "<qt>" + cut.toHtmlEscaped() + "</qt>";
    QToolTip::showText(help.globalPos(), under == &widget_ ? tool_tip_of(model_, cut) : alone, under);
    return true;
}

QString tool_tip_of(const control& c, const QString& elided_text) {
    const QString keys = access_key(c).toString(QKeySequence::NativeText);
    QString help = help_line(c);
    if (!keys.isEmpty()) help = help.isEmpty() ? keys : help + " (" + keys + ")";
    // rich text wraps even short lines
    QStringList said;
    if (!elided_text.isEmpty()) said << elided_text.toHtmlEscaped();
    if (!help.isEmpty()) said << "<nobr>" + help.toHtmlEscaped() + "</nobr>";
    if (!c.tool_tip.get().empty()) said << QString::fromStdString(c.tool_tip).toHtmlEscaped();
    return said.isEmpty() ? QString() : "<qt>" + said.join("<br>") + "</qt>";
}

} // namespace desk::qt
