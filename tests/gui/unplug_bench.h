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

/// A bench whose generator hangs on a cable that can be pulled, and an operator who answers every message box with its
/// first button.
class unplug_bench : public bench {
public:
    unplug_bench();

    using bench::program;
    hand at() { return operator_hand(); }
    /// What the boxes have said since the last call.
    QStringList told();

    /// A row of the catalogue's lists, chosen in its view.
    void choose_row(const QString& view, const QString& list, int row);
    /// Opens the file of a good EDID in the EDID view.
    void open_edid();
    /// Opens the automatic run, presses RUN, notes what it shows, and closes it again.
    void run_automatically();

    void expect_resting(const QString& button);
    /// The colour of a button on the screen.
    QColor color_of(const QString& button);
    /// The lit one of a group of buttons; -1: none.
    int lit(const QString& group, int count);

    line_to_pull cable{directory.filePath("com1").toStdString()};

    // what the automatic run showed
    QString auto_msg;
    QString auto_mark;
    bool auto_usable = false;

private:
    void TestBody() override {}

    QTimer watch_;
    QStringList said_;
};

/// One transfer of the desk: how the operator comes to it, and what starts it.
struct transfer {
    std::string name;
    std::function<void(unplug_bench&)> prepare;
    std::function<void(unplug_bench&)> act;
};

/// A transfer, a moment in it, and what the desk must show when the cable is pulled then.
struct pulled_transfer {
    std::string name;
    transfer what;
    pull_moment moment;
    std::function<void(unplug_bench&)> expect;
    bool takes_minutes = false;

    friend std::ostream& operator<<(std::ostream& out, const pulled_transfer& p) { return out << p.name; }
};

/// All of them.
std::vector<pulled_transfer> all_pulled_transfers();

} // namespace desk::gui
