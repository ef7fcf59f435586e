#pragma once

#include "generator/pseudo_terminal.h"

#include <QTimer>

namespace desk::gui {

/// Holds up this thread's events while the system holds up what was written to its pseudo terminals: beside other work
/// that was seen to take 784 ms, longer than a try of an exchange lasts. A byte through a terminal of its own, once in
/// each step of the desk's clock, shows it.
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
