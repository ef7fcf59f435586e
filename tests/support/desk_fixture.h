#pragma once

#include "shell/frm_main.h"
#include "support/fake_machine.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace desk::test {

inline const std::string usual_settings =
    "1\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
    "\"\"\r\n0\r\n0\r\n0\r\n";

/// A catalogue of so many plain rows.
inline std::string plain_catalogue(int timings, int patterns) {
    std::string text = std::to_string(timings) + "\r\n";
    for (int i = 1; i <= timings; ++i)
        text += "\"timing " + std::to_string(i) + "\",800,640,16,96,\"-\",525,480,10,2,\"+\",25.175\r\n";
    text += std::to_string(patterns) + "\r\n";
    for (int i = 1; i <= patterns; ++i)
        text += "\"pattern " + std::to_string(i) + "\"\r\n";
    return text;
}

/// The main window on a scripted machine, with its files in a directory of its own.
class desk_fixture : public testing::Test {
protected:
    desk_fixture() {
        directory.put("marlo_rs232.ini", usual_settings);
        directory.put("timing_pattern.ini", plain_catalogue(30, 45));
        m.host.program_directory = directory.path();
        m.events.ticking = &desk.link.tim_rx;
    }

    temporary_directory directory;
    fake_machine m;
    frm_main desk{m.host};
};

} // namespace desk::test
