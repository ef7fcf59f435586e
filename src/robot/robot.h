#pragma once

#include "platform/machine.h"
#include "robot/open_windows.h"
#include "robot/queued_dialogs.h"
#include "robot/tokens.h"
#include "robot/virtual_calendar.h"
#include "robot/virtual_events.h"
#include "robot/virtual_line.h"
#include "shell/frm_main.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk::robot {

/// The whole desk without a screen: each line of text is one action of the operator or the generator, with a one-line
/// answer.
class robot {
public:
    /// Returns the next line, or none at the end of the input.
    using line_source = std::function<std::optional<std::string>()>;
    /// Takes the answer to the line before; empty for an empty line and for a comment.
    using answer_sink = std::function<void(const std::string&)>;

    robot(std::filesystem::path program_directory, line_source next_line, answer_sink give_answer);

    /// Answers lines until `quit` or the end of the input. While a modal window suspends a procedure, further lines are
    /// read inside it.
    void serve_operator();

private:
    using tokens_in = const std::vector<token>&;
    using command = std::function<std::string(tokens_in)>;

    void add_life_commands();
    void add_dialog_commands();
    void add_looking_commands();
    void add_list_commands();
    void add_generator_commands();

    void serve_until(const std::function<bool()>& closed);
    std::optional<std::string> next_line() const { return finished_ ? std::nullopt : next_line_(); }
    std::string answer_line(std::string_view line);
    std::string carry_out(tokens_in tokens, std::string_view line);
    std::string start(tokens_in tokens);
    std::string stop(tokens_in tokens);
    std::string operate(tokens_in tokens);
    std::string press_key(tokens_in tokens);
    std::string after(tokens_in tokens, std::string_view line);
    void wait_until(std::chrono::milliseconds clock_time);
    std::string close(tokens_in tokens);
    std::string buffer(tokens_in tokens);
    void run_later(const std::string& name, const std::string& line);
    std::string do_later(const std::string& name, const std::string& line);
    std::string get(tokens_in tokens);
    std::string on_list(tokens_in tokens, const std::function<std::string(list_view&)>& look);
    std::string queue_file(tokens_in tokens);
    std::string set_port(tokens_in tokens);
    std::string reply(tokens_in tokens);
    std::string sink(tokens_in tokens);

    /// Runs `work`, which may end the program. Returns its answer, or the fatal one.
    std::string run(const std::function<std::string()>& work);
    std::string fatal_end();
    control* find_control(const std::string& name) const;
    /// Why the operator can't use a control now; empty: it is usable.
    std::string reason_out_of_reach(const control& c) const;
    bool running() const { return desk_ != nullptr && !events_.ended_by(); }

    line_source next_line_;
    answer_sink give_answer_;
    virtual_events events_;
    virtual_line line_{events_};
    queued_message_box boxes_;
    queued_file_dialog files_;
    open_windows windows_{events_};
    virtual_calendar dates_{events_};
    machine machine_;
    std::unique_ptr<frm_main> desk_; // kept after a fatal end, for inspection
    json later_ = json::array();
    std::vector<bool*> under_way_; // the nested commands; for an `after` command, whether its answer is in later_
    std::chrono::milliseconds wait_goes_on_until_{0}; // the end of a `wait` during which its window was closed
    bool rescued_ = false;                            // the rescue of the current fatal end is done
    bool finished_ = false;

    std::map<std::string, command> anytime_;    // with or without a program
    std::map<std::string, command> inspecting_; // also after a fatal end
    std::map<std::string, command> operating_;  // while a program runs
};

} // namespace desk::robot
