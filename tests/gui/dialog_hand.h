#pragma once

#include "hand.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace desk::gui {

// What the operator does in a window that the desk waits in. Each is prepared before the click that opens it, since
// that comes back only when the window is gone; it looks for its window for `ms` milliseconds at most.

/// What a message box on the screen says; empty where there is none.
struct seen_box {
    QString text;
    QString title;
};

/// Notes the next message box and presses the button.
void answer_next_box(std::vector<seen_box>& seen, int button, int ms = 20000);

struct seen_dialog {
    QString title;
    QString folder;
    QString file_name;
    QStringList filters;
    QString above; ///< the window that it opened over
};
/// Notes the next file dialog, chooses a filter (from 1), types a path and takes it; an empty path cancels.
void answer_next_file_dialog(std::vector<seen_dialog>& seen, const QString& path, int filter = 1, int ms = 20000);

/// Lets a hand work in the next modal window of the desk that has this name.
void in_next_window(const QString& name, std::function<void(const hand&)> work, int ms = 20000);

} // namespace desk::gui
