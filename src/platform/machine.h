#pragma once

#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/local_date_time.h"
#include "platform/modal_windows.h"
#include "platform/serial_port.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace desk {

/// What the desk needs from the computer that it runs on.
struct machine {
    serial_port& port;
    event_pump& events;
    message_box& boxes;
    file_dialog& files;
    modal_windows& windows;
    calendar& dates;
    std::filesystem::path program_directory; ///< the program's own directory

    /// Receives the sentence of a failure that silently ends its event. The desk on the screen writes it to standard
    /// error.
    std::function<void(std::string_view sentence)> report_silent_failure = [](std::string_view) {};
};

} // namespace desk
