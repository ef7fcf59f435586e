#pragma once

#include "bench_fixture.h"
#include "line_to_pull.h"

#include <QColor>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace desk::gui {

/// A bench with a generator on a pullable cable, and an operator who answers every message box with its first button.
class unplug_bench : public bench {
public:
    unplug_bench();

    using bench::program;
    ui_driver at() { return driver(); }
    /// The texts of boxes since the last call.
    QStringList box_texts();

    /// Chooses a row of a catalogue list in its view.
    void choose_row(const QString& view, const QString& list, int row);
    /// Opens the file of a good EDID in the EDID view.
    void open_edid();
    /// Opens the automatic run, presses RUN, records what it shows, and closes it.
    void run_automatically();

    void expect_resting(const QString& button);
    QColor color_of(const QString& button);
    int lit(const QString& group, int count);

    line_to_pull cable{directory.path().toStdString()};

    // results of the automatic run
    QString auto_msg;
    QString auto_mark;
    bool auto_usable = false;

private:
    void TestBody() override {}

    QTimer watch_;
    QStringList box_texts_;
};

/// One of the desk's transfers: how the operator prepares and starts it.
struct transfer {
    std::string name;
    std::function<void(unplug_bench&)> prepare;
    std::function<void(unplug_bench&)> act;
};

/// A transfer, a moment in it, and what the desk shows if the cable is pulled then.
struct pulled_transfer {
    std::string name;
    transfer what;
    pull_moment moment;
    std::function<void(unplug_bench&)> expect;
    bool takes_minutes = false;

    friend std::ostream& operator<<(std::ostream& out, const pulled_transfer& p) { return out << p.name; }
};

std::vector<pulled_transfer> all_pulled_transfers();

} // namespace desk::gui
