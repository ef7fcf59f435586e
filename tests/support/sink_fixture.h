#pragma once

#include "edid/sink_transfers.h"
#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>

namespace desk::test {

/// A sink that holds `good_edid`, and a WRITE window with the same.
class sink_test : public test::edid_fixture {
protected:
    sink_test() {
        for (button* b : {&view.cmd_write, &view.cmd_verify, &view.cmd_read_translate, &view.cmd_sum_read})
            b->enabled = true;
        buffers.write_buff = buffer_of(good_edid());
        buffers.read_buff.fill(0x33);
        view.txt_msg.text = "old";
        view.lab_pass.caption = "PASS";
        fields.read_ok = true;
    }

    /// The bytes of a WRITE, one by one as they went out.
    static strings bytes_one_by_one(const std::string& data) {
        strings all;
        for (const char byte : data)
            all.emplace_back(1, byte);
        return all;
    }
    static strings joined(strings all, const strings& more) {
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    /// Does something in the first pump after a command's answer that waits for the next answer.
    void after_command(const std::string& command, const std::function<void()>& work) {
        m.events.on_pump = [this, command, work, answered = false, begun = false]() mutable {
            if (!last_written(command) || begun) return;
            answered = answered || link.rx_done;
            begun = answered && !link.rx_done;
            if (begun) work();
        };
    }
    bool last_written(const std::string& command) const {
        const auto last = std::find_if(m.port.done.rbegin(), m.port.done.rend(),
                                       [](const std::string& done) { return done.starts_with("write "); });
        return last != m.port.done.rend() && *last == "write " + command;
    }

    /// The frame's caption, its text with "|" for each line's end, and its mark with the state of OK: "WRITE: a|b PASS
    /// enabled".
    std::string frame_text() const {
        std::string text = view.txt_msg.text;
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;)
            text.replace(at, 2, "|");
        return view.fra_compare.caption.get() + ": " + text + " " + view.lab_pass.caption.get() +
               (view.cmd_ok.enabled ? " enabled" : " disabled") + (view.fra_compare.visible ? "" : " hidden");
    }
    void expect_mark(bool pass) {
        EXPECT_EQ(view.lab_pass.fore_color, pass ? 65280U : 255U);
        EXPECT_EQ(view.lab_pass.caption, pass ? "PASS" : "FAIL");
    }
    /// Tries a transfer with the answers to its two commands missing, one after the other, and with the port closed.
    void try_link_failures(const std::string& command, const std::function<void(const strings& written)>& expect) {
        for (const std::string& missing : {std::string("ESC001"), command}) {
            answers = {{missing, ""}};
            m.port.take_written();
            expect(missing == "ESC001" ? strings{"ESC001", "ESC001"} : strings{"ESC001", command, command});
        }
        answers.clear();
        link.cmd_disconn_click();
        m.port.take_written();
        expect({});
        EXPECT_EQ(m.boxes.all.back(), test::box_disconnected);
    }
};

/// The answers to a WRITE, in the rounds of its wait.
class sink_write : public sink_test {
protected:
    static constexpr int limit = 150;
    static constexpr int round_ms = 15; ///< 10 ms and a bit

    void take(const std::string& written) override {
        sink_test::take(written);
        if (written.size() != 1 || bytes_written != 256) return;
        last_byte = m.events.now;
        if (after_last_byte) after_last_byte();
    }
    /// The answer is there in one of the waits, counted from 1.
    void answer_in_round(int round, const std::string& answer) {
        write_result = "";
        after_last_byte = [this, round, answer] {
            m.events.in(round * round_ms - m.events.step, [this, answer] {
                link.rx_text = answer;
                link.rx_done = true;
            });
        };
    }
    std::function<void()> after_last_byte;
    std::int64_t last_byte = 0; ///< when it went out
};

} // namespace desk::test
