#pragma once

#include "platform/machine.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Asks the operator where to save, and whether to overwrite an existing file. `prepare` sets up the dialog each time.
/// Nothing if the operator cancels.
std::optional<file_choice> ask_where_to_save(machine& m, file_dialog_setup& setup,
                                             const std::function<void()>& prepare);

/// The name with an extension of four characters, compared without regard to case.
/// Intended: it replaces the last four characters whatever they are, and does not check whether a file of the new name
/// exists. Throws failure::invalid_procedure_call for a shorter name.
std::string with_ending(const std::string& name, std::string_view ending);

} // namespace desk
