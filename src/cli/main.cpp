#include "cli/command_line.h"
#include "cli/line_words.h"
#include "platform/command_line.h"
#include "platform/end_request.h"
#include "platform/program_directory.h"
#include "runtime/failure.h"

#include <exception>
#include <string>
#include <vector>

namespace desk::cli {

namespace {

command_failure broken(const runtime_failure& f) {
    return {outcome::broken, "run-time failure " + std::to_string(f.number()) + ": " + without_full_stop(f.sentence())};
}

/// Why a command ended without a result.
command_failure end_of(const real_events& events) {
    if (events.failure()) return broken(*events.failure());
    if (!events.waited_for().empty()) return {outcome::unusable, events.waited_for() + ": nothing happens"};
    return {outcome::ended, "ended by a signal"};
}

/// Runs commands and gives their failures.
class command_runner {
public:
    command_runner(const command_line& line, const end_request& request)
        : out_(line.style), session_(program_directory(), line.port, request) {
        session_.boxes().report = [this](const std::string& text) { out_.report(text); };
        session_.events().on_rest = [this] {
            if (session_.started()) out_.show_progress(session_.desk().exchange.progress);
        };
    }

    outcome run(const command& wanted) {
        return reporting("", [&] { wanted(session_, out_); });
    }

    /// Runs the lines of a batch. Returns the status of the first failure.
    outcome run_batch(const batch_of_commands& batch, line_input& lines) {
        outcome first_failure = outcome::done;
        for (int number = 1; const auto line = lines.next(); ++number) {
            const outcome status = run_line(number, *line);
            if (first_failure == outcome::done) first_failure = status;
            if (status == outcome::ended || (status != outcome::done && !batch.keep_going)) break;
        }
        return first_failure;
    }

private:
    outcome run_line(int number, const std::string& line) {
        return reporting("line " + std::to_string(number) + ": ", [&] {
            if (line.size() > line_input::longest)
                throw command_failure(outcome::misused,
                                      "a line has at most " + std::to_string(line_input::longest) + " bytes");
            std::vector<std::string> words;
            try {
                words = words_of_line(line);
            } catch (const unclosed_quote& e) {
                throw command_failure(outcome::misused, e.what());
            }
            if (!words.empty()) parse_line(words)(session_, out_);
        });
    }

    outcome reporting(const std::string& place, const auto& work) {
        out_.begin_command(place);
        try {
            work();
            out_.clear_progress();
            return outcome::done;
        } catch (const command_failure& f) {
            return fail(f);
        } catch (const runtime_failure& f) {
            return fail(broken(f));
        } catch (const program_over&) {
            return fail(end_of(session_.events()));
        }
    }

    /// The next command starts a new desk, as a new run of the program does.
    outcome fail(const command_failure& f) {
        if (f.status() != outcome::misused) session_.end();
        out_.give(f);
        return f.status();
    }

    console out_;
    desk_session session_;
};

outcome run(const std::vector<std::string>& words, const end_request& request) {
    line_input lines(request);
    const command_line line = parse_arguments(words, lines);
    if (const auto* const shown = std::get_if<shown_text>(&line.task)) {
        console(line.style).give_bytes(shown->text);
        return outcome::done;
    }
    command_runner runner(line, request);
    if (const auto* const batch = std::get_if<batch_of_commands>(&line.task)) {
        const outcome status = runner.run_batch(*batch, lines);
        return request.received() ? outcome::ended : status;
    }
    return runner.run(std::get<command>(line.task));
}

outcome run_and_report(const std::vector<std::string>& words) {
    const end_request request;
    console out(style_of(words));
    try {
        return run(words, request);
    } catch (const command_failure& f) {
        out.give(f);
        return f.status();
    } catch (const runtime_failure& f) {
        out.give(broken(f));
        return outcome::broken;
    }
}

} // namespace

} // namespace desk::cli

int main(int argument_count, char** arguments) {
    desk::prepare_standard_streams();
    try {
        return static_cast<int>(desk::cli::run_and_report(desk::program_arguments(argument_count, arguments)));
    } catch (const std::exception& e) {
        // a defect of the program
        desk::write_to_standard_error("velotrace_cli: " + std::string(e.what()) + "\n");
        return static_cast<int>(desk::cli::outcome::broken);
    }
}
