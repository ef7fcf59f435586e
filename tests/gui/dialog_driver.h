#pragma once

#include "ui_driver.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace desk::gui {

// Operator actions in modal windows. Call each before the click that opens the window, since that click returns only
// after the window has closed; each waits up to `ms` milliseconds for its window.

/// Contents of a message box; empty if there is none.
struct seen_box {
    QString text;
    QString title;
};

/// Records the next message box and presses a button.
void answer_next_box(std::vector<seen_box>& seen, int button, int ms = 20000);

struct seen_dialog {
    QString title;
    QString folder;
    QString file_name;
    QStringList filters;
    QString above; ///< the window below it
};
/// Records the next file dialog, chooses a filter (from 1), types a path and accepts; an empty path cancels.
void answer_next_file_dialog(std::vector<seen_dialog>& seen, const QString& path, int filter = 1, int ms = 20000);

/// Calls `work` in the desk's next modal window with this name.
void in_next_window(const QString& name, std::function<void(const ui_driver&)> work, int ms = 20000);

} // namespace desk::gui
