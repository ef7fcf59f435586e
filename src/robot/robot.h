#pragma once

#include "platform/machine.h"
#include "robot/open_windows.h"
#include "robot/queued_dialogs.h"
#include "robot/second_stack.h"
#include "robot/tokens.h"
#include "robot/virtual_calendar.h"
#include "robot/virtual_events.h"
#include "robot/virtual_line.h"
#include "shell/frm_main.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace desk::robot {

/// The whole desk without a screen: one line of text is one thing the operator or the generator does, and has one line
/// of answer.
class robot {
public:
    explicit robot(std::filesystem::path program_directory);

    /// Carries out a line and gives its answer; empty for a blank line or one that begins with "#".
    std::string answer(std::string_view line);

    /// `quit` has been said.
    bool finished() const { return finished_; }

private:
    using tokens_in = const std::vector<token>&;
    using command = std::function<std::string(tokens_in)>;

    void add_life_commands();
    void add_dialog_commands();
    void add_looking_commands();
    void add_list_commands();
    void add_generator_commands();

    void serve_operator();
    void serve_until(const std::function<bool()>& closed);
    std::string answer_line(std::string_view line);
    std::string carry_out(tokens_in tokens, std::string_view line);
    std::string start(tokens_in tokens);
    std::string stop(tokens_in tokens);
    std::string operate(tokens_in tokens);
    std::string press_key(tokens_in tokens);
    std::string after(tokens_in tokens, std::string_view line);
    void wait_until(std::int64_t clock_ms);
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

    /// Runs what can end the program. The answer is that of `work`, or the fatal one.
    std::string run(const std::function<std::string()>& work);
    std::string fatal_end();
    control* find_control(const std::string& name) const;
    /// Whether the operator reaches a control now; an empty reason: yes.
    std::string reason_out_of_reach(const control& c) const;
    bool running() const { return desk_ != nullptr && !events_.ended_by(); }

    virtual_events events_;
    virtual_line line_{events_};
    queued_message_box boxes_;
    queued_file_dialog files_;
    open_windows windows_{events_};
    virtual_calendar dates_{events_};
    machine machine_;
    std::unique_ptr<frm_main> desk_; // also after a fatal end, for looking at what it left
    json later_ = json::array();
    std::vector<bool*> under_way_;        // what is being done: of an `after` command whether its answer is kept
    std::int64_t wait_goes_on_until_ = 0; // a `wait` whose window was closed in the middle of it
    bool rescued_ = false;                // the windows' texts have been looked after in a fatal end
    bool finished_ = false;

    std::map<std::string, command> anytime_;    // whether a program runs or not
    std::map<std::string, command> inspecting_; // also after a fatal end
    std::map<std::string, command> operating_;  // while a program runs

    second_stack desk_side_{[this] { serve_operator(); }}; // last: it uses all of the above
};

} // namespace desk::robot
