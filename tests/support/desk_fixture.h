#pragma once

#include "shell/frm_main.h"
#include "support/desk_files.h"
#include "support/fake_machine.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

namespace desk::test {

/// The main window on a scripted machine, with its files in a temporary directory.
class desk_fixture : public testing::Test {
protected:
    desk_fixture() {
        directory.put("marlo_rs232.ini", usual_settings);
        directory.put("timing_pattern.ini", plain_catalogue(30, 45));
        m.host.program_directory = directory.path();
        m.events.ticking = &desk.exchange.tim_rx;
    }

    temporary_directory directory;
    fake_machine m;
    frm_main desk{m.host};
};

} // namespace desk::test
