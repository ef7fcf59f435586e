#include "link/commands.h"

#include "runtime/trim_and_pad.h"

namespace desk::command {

std::string set(std::string_view mnemonic, int argument) { return std::string(mnemonic) + zero_pad3(argument); }

std::string query(std::string_view mnemonic) { return std::string(mnemonic) + "999"; }

} // namespace desk::command
