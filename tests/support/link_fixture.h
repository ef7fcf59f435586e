#pragma once

#include "link/exchange.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace desk::test {

/// The link on a scripted machine, with a port that is not yet open.
class link_test : public testing::Test {
protected:
    link_test() {
        m.events.ticking = &link.tim_rx;
        for (int port = 1; port <= 8; ++port)
            link.cbo_com.add_item("COM" + std::to_string(port) + ":", port - 1);
        link.selected_pattern = [this] { return selected_pattern; };
    }
    void connect() {
        link.com_port = 1;
        link.set_comm();
        m.port.done.clear();
    }
    void expect_connected_look() {
        EXPECT_TRUE(link.rs232_connected);
        EXPECT_EQ(link.cmd_conn.back_color, 0x00FF00U);
        EXPECT_EQ(link.cmd_disconn.back_color, 0x8000000FU);
    }
    void expect_disconnected_look() {
        EXPECT_FALSE(link.rs232_connected);
        EXPECT_EQ(link.cmd_conn.back_color, 0x8000000FU);
        EXPECT_EQ(link.cmd_disconn.back_color, 0x0000FFU);
    }
    /// Lets the receiver find these bytes.
    void receive(std::string_view text) {
        m.port.arrive(text);
        link.tim_rx_timer();
    }

    fake_machine m;
    exchange link{m.host};
    int selected_pattern = 1;
};

} // namespace desk::test
