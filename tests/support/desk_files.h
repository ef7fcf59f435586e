#pragma once

#include <string>

namespace desk::test {

inline const std::string usual_settings =
    "1\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
    "\"\"\r\n0\r\n0\r\n0\r\n";

/// A catalogue with these numbers of plain rows.
inline std::string plain_catalogue(int timings, int patterns) {
    std::string text = std::to_string(timings) + "\r\n";
    for (int i = 1; i <= timings; ++i)
        text += "\"timing " + std::to_string(i) + "\",800,640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n";
    text += std::to_string(patterns) + "\r\n";
    for (int i = 1; i <= patterns; ++i)
        text += "\"pattern " + std::to_string(i) + "\"\r\n";
    return text;
}

} // namespace desk::test
