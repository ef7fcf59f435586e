#pragma once

#include <string_view>

namespace desk::facts {

/// The company of a PNP id of three letters, in UTF-8; empty if the list has none. Static.
std::string_view name_of_pnp_id(std::string_view id);

} // namespace desk::facts
