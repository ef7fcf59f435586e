#pragma once

#include "platform/machine.h"
#include "platform/native_serial_port.h"
#include "qt/event_gate.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_events.h"
#include "qt/qt_modal_windows.h"
#include "qt/window_face.h"
#include "shell/frm_main.h"

#include <filesystem>
#include <memory>

namespace desk::qt {

/// The desk on the screen: the main window over the machine's own serial ports.
class desk_program {
public:
    explicit desk_program(std::filesystem::path program_directory);

    /// Start-up up to the shown window. False: it has failed, and the program has told so.
    bool start();

    frm_main& desk() { return desk_; }
    window_face& main_window() { return *window_; }
    event_gate& gate() { return gate_; }
    /// 1 after a run-time failure.
    int exit_status() const { return gate_.failure() ? 1 : 0; }

private:
    void leave();

    event_gate gate_;
    qt_events events_{gate_};
    qt_message_box boxes_{gate_};
    qt_file_dialog files_{gate_};
    qt_modal_windows windows_{gate_};
    local_calendar dates_;
    std::unique_ptr<serial_port> port_;
    machine machine_;
    frm_main desk_{machine_};
    std::unique_ptr<window_face> window_;
};

} // namespace desk::qt
