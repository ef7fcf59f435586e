#pragma once

#include "platform/machine.h"
#include "platform/native_serial_port.h"
#include "qt/desk_aids.h"
#include "qt/end_watch.h"
#include "qt/event_gate.h"
#include "qt/held_input.h"
#include "qt/lost_display.h"
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

/// The desk on the screen: the main window over the machine's own serial ports.
class desk_program {
public:
    explicit desk_program(std::filesystem::path program_directory);

    /// From now on ends the program in order at every request, and saves what it can when the display goes away.
    /// `watch` outlives this.
    void end_on(end_watch& watch);

    /// Start-up up to the shown window. False: the program is over, because start-up has failed and the failure has
    /// been shown, or because its end was requested meanwhile.
    bool start();

    /// Ends the program as its close button does, whatever it waits for; EDID texts that no file holds are rescued
    /// first.
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
    held_input held_;
    qt_events events_{gate_};
    qt_message_box boxes_{gate_};
    qt_file_dialog files_{gate_};
    qt_modal_windows windows_{gate_};
    local_calendar dates_;
    std::unique_ptr<serial_port> port_;
    machine machine_;
    frm_main desk_{machine_};
    std::unique_ptr<window_adapter> window_;
    std::optional<desk_aids> aids_;
    std::optional<lost_display> lost_display_;
};

} // namespace desk::qt
