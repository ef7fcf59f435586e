#pragma once

#include "generator/generator_state.h"

#include <string>

namespace desk {

/// A few lines for a person, without a final line end.
std::string state_text(const generator_state& state);

} // namespace desk
