#pragma once

#include "generator/pseudo_terminal.h"

#include <QTimer>

namespace desk::gui {

/// Delays this thread's events while the system delays data in pseudo terminals: on a busy machine that can take 784
/// ms, longer than a try of an exchange. Sends a byte through its own terminal in each step of the desk's clock to
/// detect this.
class terminal_pace {
public:
    terminal_pace();
    ~terminal_pace();
    terminal_pace(const terminal_pace&) = delete;
    terminal_pace& operator=(const terminal_pace&) = delete;

private:
    void pass();

    pseudo_terminal line_;
    int far_end_;
    QTimer turns_;
};

} // namespace desk::gui
