#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace desk {
class runtime_failure;
}

namespace desk::robot {

using json = nlohmann::ordered_json;

/// JSON on one line: outside strings, one space after each colon and comma and no others; whole numbers as integers.
std::string json_text(const json& value);

inline std::string ok() { return "ok"; }
std::string ok(const json& value);
std::string refused(std::string_view reason);
/// The reason for a command whose words make no sense.
inline constexpr std::string_view bad_tokens = "the command's words are off";
std::string fatal(const runtime_failure& failure);

} // namespace desk::robot
