#pragma once

#include "cli/answer.h"
#include "link/work_progress.h"

#include <chrono>
#include <string>

namespace desk::cli {

/// How answers are shown.
struct answer_style {
    bool as_json = false;
    bool quiet = false; ///< no progress, and no answer that only confirms
};

/// What the program writes: answers to standard output, everything else to standard error.
class console {
public:
    explicit console(answer_style style) : style_(style) {}

    /// Throws command_failure if standard output takes no more.
    void give(const answer& a);
    /// Writes bytes to standard output as they are. Throws the same.
    void give_bytes(const std::string& bytes);
    /// Writes the failure of a command: a sentence to standard error, and as JSON an object to standard output.
    void give(const command_failure& f);

    /// A message of the desk, or for the operator.
    void report(const std::string& sentence);
    /// The same, unless --quiet.
    void report_progress(const std::string& sentence);

    /// A command begins: its progress is shown after a second. `place` ("line 3: ") begins its messages.
    void begin_command(const std::string& place);
    void show_progress(const work_progress& progress);
    void clear_progress();

private:
    using clock = std::chrono::steady_clock;

    void write(const std::string& bytes);

    answer_style style_;
    std::string place_;
    std::string last_report_; // of this command
    clock::time_point began_;
    clock::time_point drawn_;
    std::size_t line_length_ = 0;
};

} // namespace desk::cli
