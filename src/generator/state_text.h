#pragma once

#include "generator/generator_state.h"

#include <string>

namespace desk {

/// The state in a few lines for a person, without a line end at the end.
std::string state_text(const generator_state& state);

} // namespace desk
