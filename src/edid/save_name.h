#pragma once

#include "platform/machine.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// Lets the operator choose where to save, and asks again where a file would be lost. `prepare` sets the dialog up each
/// time. Nothing is chosen where the operator cancels.
std::optional<file_choice> ask_where_to_save(machine& m, file_dialog_setup& setup,
                                             const std::function<void()>& prepare);

/// The name with an ending of four characters, which is compared without regard to case.
/// The desk behaves so: the last four characters go whatever they are, and the new name is not looked for again.
/// Throws failure::invalid_procedure_call for a name that is shorter.
std::string with_ending(const std::string& name, std::string_view ending);

} // namespace desk
