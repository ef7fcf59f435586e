#pragma once

#include "controls/control.h"

#include <QObject>
#include <QString>

class QWidget;

namespace desk::qt {

/// The tooltip of a control: what it does and by which key, the reason that the model gives, and where its text is cut
/// under the pointer, the whole text.
class tool_tips final : public QObject {
public:
    tool_tips(const control& model, QWidget& w);

    /// Brings the tooltip up to date with the model.
    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    const control& model_;
    QWidget& widget_;
    QString shown_;
};

/// What the tooltip of a control says; rich text, empty where there is nothing to say.
QString tool_tip_of(const control& c, const QString& cut_text = "");

} // namespace desk::qt
