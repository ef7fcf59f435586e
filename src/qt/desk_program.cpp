#include "qt/desk_program.h"

#include "edid/rescue.h"
#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "qt/failure_box.h"
#include "runtime/failure.h"
#include "runtime/version.h"

#include <QApplication>

#include <sstream>

namespace desk::qt {

desk_program::desk_program(std::filesystem::path program_directory)
    : port_(make_native_serial_port(program_directory))
    , machine_{*port_, events_, boxes_, files_, windows_, dates_, std::move(program_directory)} {
    machine_.report_silent_failure = [](std::string_view sentence) {
        write_to_standard_error("velotrace: " + std::string(sentence) + "\n");
    };
    gate_.timer_starts = [this] { events_.share_phase(); };
    gate_.leave = [this] { leave(); };
    desk_.about.cmd_about.tool_tip = "VELOTRACE Desk " + std::string(build_version());
}

bool desk_program::start() {
    window_ = std::make_unique<window_adapter>(desk_.form, gate_);
    indicators_.emplace(*window_, desk_);
    boxes_.parent = window_.get();
    files_.parent = window_.get();
    windows_.parent = window_.get();
    gate_.follow = [this] {
        window_->follow();
        windows_.follow();
        indicators_->follow();
        if (QWidget* const modal = windows_.on_top()) indicators_->follow_in(*modal);
    };
    gate_.end_loops = [this] { windows_.hide_all(); };
    gate_.run([this] {
        desk_.form.on_load();
        desk_.form.visible = true;
    });
    return !gate_.over();
}

void desk_program::end_on(end_watch& watch) {
    watch.end = [this] { end_in_order(); };
    gate_.end_requested = [&watch] { return watch.requested() || display_loss::occurred(); };
    gate_.end_in_order = [this] { end_in_order(); };
    display_loss_.emplace([this] {
        if (gate_.over()) return;
        save_all();
        gate_.finish();
    });
}

void desk_program::end_in_order() {
    if (gate_.over()) {
        // the program is ending already, and a failure box may delay it
        gate_.end_waits();
        return;
    }
    gate_.run([this] {
        save_all();
        gate_.finish();
    });
}

void desk_program::save_all() {
    // before start-up is complete, nothing has changed, and values not yet read must not be written
    if (!desk_.form.visible) return;
    rescue();
    desk_.form.on_unload();
}

std::string desk_program::rescue() {
    std::string lines =
        rescue_window_texts(desk_.workbench, desk_.shared_fields, machine_.program_directory, user_data_directory);
    std::istringstream each(lines);
    for (std::string line; std::getline(each, line);)
        write_to_standard_error("velotrace: " + line + "\n");
    return lines;
}

void desk_program::leave() {
    if (const auto& failure = gate_.failure()) show_failure(*failure);
    if (window_) window_->hide();
    QApplication::exit(exit_status());
}

void desk_program::show_failure(const runtime_failure& failure) {
    const std::string rescued = rescue();
    failure_box box(failure, rescued, window_.get());
    // nobody can close it after the end was requested
    if (!gate_.end_requested || !gate_.end_requested()) box.exec();
}

} // namespace desk::qt
