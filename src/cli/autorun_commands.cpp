#include "cli/autorun_csv.h"
#include "cli/commands.h"
#include "cli/exchange_result.h"
#include "cli/operator.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/numbers.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk::cli {

namespace {

std::vector<int> intervals_of(const combo_box& offered) {
    std::vector<int> seconds;
    for (const std::string& item : offered.items())
        seconds.push_back(to_integer(val(item)));
    return seconds;
}

/// The row of a name in the list, which holds names alone. Throws runtime_failure for a name that is not in the
/// catalogue, which a download can't show.
int row_with_name(const combo_box& names, const std::string& name) {
    for (int i = 0; i < names.list_count(); ++i) {
        if (names.item(i) == name) return i + 1;
    }
    throw runtime_failure(failure::invalid_procedure_call, "\"" + name + "\" is not in the catalogue");
}

std::vector<autorun_step> used_steps(const frm_main& desk) {
    const list_view& list = desk.autorun.lstv_auto;
    std::vector<autorun_step> steps;
    for (int i = 1; i <= list.row_count(); ++i) {
        if (list.sub_item(i, 3) == autorun_unused) continue;
        steps.push_back({i, row_with_name(desk.catalogue.cbo_timing, list.sub_item(i, 1)),
                         row_with_name(desk.catalogue.cbo_pattern, list.sub_item(i, 2)),
                         to_integer(val(list.sub_item(i, 3)))});
    }
    return steps;
}

answer steps_answer(const std::vector<autorun_step>& steps) {
    answer a{{{"steps", json::array()}}, csv_of(steps), false};
    for (const autorun_step& s : steps)
        a.fields["steps"].push_back(
            {{"step", s.step}, {"timing", s.timing}, {"pattern", s.pattern}, {"seconds", s.seconds}});
    return a;
}

std::string text_of_file(const std::string& file) {
    try {
        return read_whole_file(path_from_utf8(file));
    } catch (const runtime_failure& f) {
        throw command_failure(outcome::unusable, file + " can't be read: " + f.what());
    }
}

/// Fills the list as the operator does, a row at a time.
void fill_list(frm_main& desk, const std::vector<autorun_step>& steps) {
    std::vector<const autorun_step*> step_of(autorun_rows + 1, nullptr);
    for (const autorun_step& s : steps)
        step_of.at(static_cast<std::size_t>(s.step)) = &s;
    const std::vector<int> intervals = intervals_of(desk.autorun.cbo_interval);
    for (int row = 1; row <= autorun_rows; ++row) {
        select(desk.autorun.lstv_auto, row);
        const autorun_step* const step = step_of.at(static_cast<std::size_t>(row));
        if (step == nullptr) {
            press(desk.autorun.cmd_delete);
            continue;
        }
        select(desk.catalogue.cbo_timing, step->timing - 1);
        select(desk.catalogue.cbo_pattern, step->pattern - 1);
        const auto interval = std::find(intervals.begin(), intervals.end(), step->seconds);
        select(desk.autorun.cbo_interval, static_cast<int>(interval - intervals.begin()));
        press(desk.autorun.cmd_replace);
    }
}

} // namespace

answer get_autorun(desk_session& session, const std::string& output) {
    frm_main& desk = session.desk();
    press(desk.autorun.cmd_auto);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_download); });
    answer a = steps_answer(used_steps(desk));
    if (output.empty()) return a;
    try {
        replace_whole_file(path_from_utf8(output), a.text);
    } catch (const runtime_failure& f) {
        throw command_failure(outcome::unusable, output + " can't be written: " + f.what());
    }
    a.text = std::to_string(a.fields["steps"].size()) + " steps in " + output + "\n";
    a.confirmation = true;
    return a;
}

answer set_autorun(desk_session& session, const std::string& file) {
    frm_main& rows = session.catalogue_only();
    if (rows.autorun.cbo_interval.list_count() == 0) rows.autorun.fill_intervals();
    const autorun_limits limits{autorun_rows, rows.catalogue.lstv_timing.row_count(),
                                rows.catalogue.lstv_pattern.row_count(), intervals_of(rows.autorun.cbo_interval)};
    std::vector<autorun_step> steps;
    try {
        steps = steps_of_csv(text_of_file(file), limits);
    } catch (const csv_error& e) {
        throw command_failure(outcome::unusable, file + ", " + e.what());
    }
    frm_main& desk = session.desk();
    press(desk.autorun.cmd_auto);
    fill_list(desk, steps);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_run); });
    answer a = steps_answer(used_steps(desk));
    a.confirmation = true;
    return a;
}

} // namespace desk::cli
