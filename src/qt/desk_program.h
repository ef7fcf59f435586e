#pragma once

#include "platform/machine.h"
#include "platform/native_serial_port.h"
#include "qt/desk_indicators.h"
#include "qt/display_loss.h"
#include "qt/end_watch.h"
#include "qt/event_gate.h"
#include "qt/held_input_filter.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_events.h"
#include "qt/qt_modal_windows.h"
#include "qt/window_adapter.h"
#include "shell/frm_main.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace desk::qt {

/// The desk's main window, using the machine's serial ports.
class desk_program {
public:
    explicit desk_program(std::filesystem::path program_directory);

    /// From now on, ends the program in order at every request and saves what it can when the display is lost.
    /// `watch` must outlive this.
    void end_on(end_watch& watch);

    /// Shows the main window. Returns false if start-up failed (the failure has been shown) or the end was requested.
    bool start();

    /// Ends the program as its close button does, even during a wait; rescues unsaved EDID texts first.
    void end_in_order();

    frm_main& desk() { return desk_; }
    window_adapter& main_window() { return *window_; }
    event_gate& gate() { return gate_; }
    /// 1 after a run-time failure.
    int exit_status() const { return gate_.failure() ? 1 : 0; }

private:
    void leave();
    void show_failure(const runtime_failure& failure);
    std::string rescue();
    void save_all();

    event_gate gate_;
    held_input_filter held_;
    qt_events events_{gate_};
    qt_message_box boxes_{gate_};
    qt_file_dialog files_{gate_};
    qt_modal_windows windows_{gate_};
    local_calendar dates_;
    std::unique_ptr<serial_port> port_;
    machine machine_;
    frm_main desk_{machine_};
    std::unique_ptr<window_adapter> window_;
    std::optional<desk_indicators> indicators_;
    std::optional<display_loss> display_loss_;
};

} // namespace desk::qt
