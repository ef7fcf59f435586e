#pragma once

#include "cli/dialogs.h"
#include "cli/real_events.h"
#include "platform/machine.h"
#include "shell/frm_main.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace desk::cli {

/// The desk with its port open, for one or more commands. The settings file is read and never written.
class desk_session {
public:
    /// `port`: 1 to 8, or the path of a device; none: the port in the settings file.
    desk_session(const std::filesystem::path& program_directory, const std::optional<std::string>& port,
                 const end_request& request);
    /// On this port; if it is chosen, it is opened even if the settings file names none.
    desk_session(std::filesystem::path program_directory, std::unique_ptr<serial_port> port, bool port_is_chosen,
                 const end_request& request);
    ~desk_session();
    desk_session(const desk_session&) = delete;
    desk_session& operator=(const desk_session&) = delete;

    /// The desk; the first call starts it. Throws command_failure if its port can't be opened, runtime_failure if it
    /// can't start.
    frm_main& desk();
    bool started() const { return desk_ != nullptr; }

    /// The catalogue alone, without a port.
    frm_main& catalogue_only();

    /// Ends the desk and closes the port; the next command starts it anew.
    void end();

    /// Waits until the port has sent everything, and a moment longer: some adapters hold a few bytes of their own,
    /// and closing the port discards them. Throws command_failure if the device has vanished.
    void let_the_line_finish();

    real_events& events() { return events_; }
    answered_boxes& boxes() { return boxes_; }
    named_file& files() { return files_; }
    worked_windows& windows() { return windows_; }

    /// The sentences of the failures that the window does not show, since the last call.
    std::vector<std::string> take_silent_failures() { return std::exchange(silent_failures_, {}); }

private:
    void start();

    real_events events_;
    bool port_is_chosen_;
    answered_boxes boxes_;
    named_file files_;
    worked_windows windows_;
    local_calendar dates_;
    std::unique_ptr<serial_port> port_;
    machine machine_;
    std::vector<std::string> silent_failures_;
    std::unique_ptr<frm_main> desk_;
    std::unique_ptr<frm_main> catalogue_only_;
};

} // namespace desk::cli
