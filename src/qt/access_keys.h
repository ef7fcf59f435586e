#pragma once

#include "controls/window.h"
#include "qt/event_gate.h"

#include <QKeySequence>
#include <QObject>

class QWidget;

namespace desk::qt {

// The keys that work a control from anywhere in its window. An underlined letter is pressed with Alt; the other keys
// are in the tooltips. In the EDID view the READ side has the keys of the WRITE side with Shift.

/// Empty: the control has none.
QKeySequence access_key(const control& c);

/// The position of the key's letter in a caption; -1: it has none, or not with Alt alone.
int underlined_letter(const control& c, const std::string& caption);

/// Works the controls of a window by their keys. Which control a key means is decided when it is pressed: the one on
/// show that can be used and that nothing covers. A button, a check box or an option button is clicked, any other
/// control gets the focus, and so do the buttons of the panel, whose rows a key walks along.
class access_keys : public QObject {
public:
    access_keys(QWidget& adapter, desk::window& model, event_gate& gate);

    /// The control that a key works now; none: nullptr.
    control* meant_by(const QKeySequence& key) const;

private:
    void press(const QKeySequence& key);

    desk::window& model_;
    event_gate& gate_;
};

} // namespace desk::qt
