#pragma once

#include "controls/window.h"
#include "qt/event_gate.h"

#include <QKeySequence>
#include <QObject>

class QWidget;

namespace desk::qt {

// Keys that work a control from anywhere in its window. An underlined letter is pressed with Alt; the tooltips name
// the other keys. In the EDID view, the READ side has the keys of the WRITE side plus Shift.

/// Empty if the control has no key.
QKeySequence access_key(const control& c);

/// Position of the key's letter in a caption, or -1 if it has none or needs more than Alt.
int underlined_letter(const control& c, const std::string& caption);

/// Works the controls of a window by their keys. The target is chosen on each press: the visible, enabled control
/// that nothing covers. A button, check box or option button is clicked; any other control, and each button of the
/// panel, takes the focus.
class access_keys : public QObject {
public:
    access_keys(QWidget& adapter, desk::window& model, event_gate& gate);

    /// The control that a key works now, or nullptr.
    control* target_of(const QKeySequence& key) const;

private:
    void press(const QKeySequence& key);

    desk::window& model_;
    event_gate& gate_;
};

} // namespace desk::qt
