#pragma once

#include "controls/control.h"

#include <QObject>
#include <QString>

class QWidget;

namespace desk::qt {

/// The tooltip of a control: what it does, its key, the model's reason, and the full text of what is elided under the
/// pointer.
class tool_tips final : public QObject {
public:
    tool_tips(const control& model, QWidget& w);

    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    const control& model_;
    QWidget& widget_;
    QString shown_;
};

/// The tooltip as rich text; empty if there is nothing to say.
QString tool_tip_of(const control& c, const QString& elided_text = "");

} // namespace desk::qt
