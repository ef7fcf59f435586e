#pragma once

#include "controls/controls.h"
#include "link/exchange.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace desk::test {

using strings = std::vector<std::string>;
using boxes = std::vector<noted_boxes::shown>;

/// State of a button: "red disabled", "green enabled", "grey enabled".
inline std::string look_of(const button& b) {
    const std::map<color, std::string> names{{255, "red"}, {65280, "green"}, {0x8000000F, "grey"}};
    const auto found = names.find(b.back_color);
    return (found == names.end() ? "?" : found->second) + (b.enabled ? " enabled" : " disabled");
}

/// An open line on a scripted machine, with an answering generator.
class generator_fixture : public testing::Test {
protected:
    generator_fixture() {
        m.events.ticking = &link.tim_rx;
        m.port.on_write = [this](const std::string& written) {
            if (look_at_write_) add_frame(written + ": " + look_at_write_());
            if (written.size() == 6) answer(written);
            take(written);
        };
        link.com_port = 1;
        link.set_comm();
    }

    /// Further effects of a command or raw bytes on the generator.
    virtual void take(const std::string& /*written*/) {}

    /// From now on records `look` at each pump, at each write ("TIM001: ...") and at each box ("box: ..."). Skips
    /// repeated frames.
    void film(const std::function<std::string()>& look) {
        m.events.on_pump = [this, look] { add_frame(look()); };
        m.boxes.on_show = [this, look] { add_frame("box: " + look()); };
        look_at_write_ = look;
    }

    fake_machine m;
    exchange link{m.host};

    /// Answers by command: empty for none, and an echo for commands without an entry. Raw bytes get no answer.
    std::map<std::string, std::string> answers;
    bool unplugged = false; ///< no answer at all
    strings frames;

private:
    void answer(const std::string& cmd) {
        const auto found = answers.find(cmd);
        const std::string text = found == answers.end() ? cmd : found->second;
        if (!unplugged) m.events.in(10, [this, text] { m.port.arrive(text); });
    }
    void add_frame(const std::string& frame) {
        if (frames.empty() || frames.back() != frame) frames.push_back(frame);
    }

    std::function<std::string()> look_at_write_;
};

} // namespace desk::test
