#pragma once

#include "cli/command_line.h"
#include "cli/line_words.h"
#include "cli/simulated_port.h"
#include "controls/operator_actions.h"
#include "platform/end_request.h"
#include "support/desk_files.h"
#include "support/fake_machine.h"
#include "support/signal_fixture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace desk::test {

inline constexpr int few_timings = 25;  // with the default favorites
inline constexpr int few_patterns = 45; // with the rows of colour and string

inline const temporary_directory& folder_of_desk(const temporary_directory& folder) {
    folder.put("marlo_rs232.ini", usual_settings);
    folder.put("timing_pattern.ini", numbered_catalogue(few_timings, few_patterns));
    return folder;
}

/// The desk that an operator works, on a simulated generator and a clock that waits for nothing.
class operated_desk {
public:
    operated_desk() {
        folder_of_desk(folder);
        m.events.ticking = &desk.exchange.tim_rx;
        desk.form.on_load();
        desk.form.visible = true;
    }

    /// A click on what the operator can click.
    void press(button& b) {
        EXPECT_TRUE(b.usable()) << b.full_name();
        click(b);
    }
    void choose(list_view& l, int row) {
        EXPECT_TRUE(l.usable()) << l.full_name();
        choose_row(l, row);
    }
    void choose(combo_box& c, int place) {
        EXPECT_TRUE(c.usable()) << c.full_name();
        choose_item(c, place);
    }
    void choose(option_button& o) {
        EXPECT_TRUE(o.usable()) << o.full_name();
        click(o);
    }
    void tick(list_view& l, int row) {
        EXPECT_TRUE(l.usable()) << l.full_name();
        set_check(l, row, true);
    }
    void type(text_box& t, const std::string& text) {
        EXPECT_TRUE(t.usable()) << t.full_name();
        type_text(t, text);
    }
    void move(slider& s, int value) {
        EXPECT_TRUE(s.usable()) << s.full_name();
        move_slider(s, value);
    }

    temporary_directory folder;
    fake_machine m;
    simulated_port port{few_timings, few_patterns, [this] { return std::chrono::milliseconds(m.events.now); }};
    machine host{port, m.events, m.boxes, m.files, m.windows, m.dates, folder.path()};
    frm_main desk{host};
};

/// Commands of the command line on the same generator, in real time.
class commanded_desk {
public:
    commanded_desk() : commanded_desk(new simulated_port(few_timings, few_patterns, steady)) {}

    /// Runs a line of a batch and returns its answers, a JSON object each. Throws command_failure.
    std::vector<cli::json> run(const std::string& line) {
        std::vector<cli::json> answers;
        std::istringstream written(written_by(line));
        for (std::string one; std::getline(written, one);)
            answers.push_back(cli::json::parse(one));
        return answers;
    }
    /// The same as people see it.
    std::string text_of(const std::string& line) {
        cli::console plain({});
        return output_of([&] { cli::parse_line(cli::words_of_line(line))(session, plain); });
    }
    /// The failure of a line.
    cli::command_failure failure_of(const std::string& line) {
        try {
            const auto answers = run(line);
            ADD_FAILURE() << line << " succeeds";
        } catch (const cli::command_failure& f) {
            return f;
        }
        return {cli::outcome::done, ""};
    }

    temporary_directory folder;
    end_request request;
    std::vector<std::string> reported; ///< what goes to standard error
    simulated_port* port;
    cli::desk_session session;

private:
    explicit commanded_desk(simulated_port* p)
        : port(p), session(folder_of_desk(folder).path(), std::unique_ptr<serial_port>(p), false, request) {
        session.boxes().report = [this](const std::string& text) { reported.push_back(text); };
    }

    static simulated_port::time steady() { return std::chrono::steady_clock::now().time_since_epoch(); }

    std::string written_by(const std::string& line) {
        cli::console as_json({true, true});
        return output_of([&] { cli::parse_line(cli::words_of_line(line))(session, as_json); });
    }
    static std::string output_of(const std::function<void()>& work) {
        testing::internal::CaptureStdout();
        try {
            work();
        } catch (...) {
            testing::internal::GetCapturedStdout();
            throw;
        }
        return testing::internal::GetCapturedStdout();
    }
};

} // namespace desk::test
