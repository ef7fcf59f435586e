#include "cli/console.h"

#include "platform/command_line.h"

#include <algorithm>

namespace desk::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto quick = 1s;
constexpr auto between_pictures = 100ms;
constexpr std::size_t bar_width = 40;

std::string bar(const work_progress& progress) {
    if (progress.has_no_measure()) return "working ...";
    const auto full = static_cast<std::size_t>(progress.fraction() * bar_width);
    return "[" + std::string(full, '#') + std::string(bar_width - full, '.') + "] " +
           std::to_string(static_cast<int>(progress.fraction() * 100)) + " %";
}

} // namespace

void console::give(const answer& a) {
    clear_progress();
    if (style_.as_json)
        // bytes that are not UTF-8 can only come from a file name
        write(a.fields.dump(-1, ' ', false, json::error_handler_t::replace) + "\n");
    else if (!style_.quiet || !a.confirmation)
        write(a.text);
}

void console::give_bytes(const std::string& bytes) {
    clear_progress();
    write(bytes);
}

void console::give(const command_failure& f) {
    clear_progress();
    const std::string sentence = f.what();
    if (sentence != last_report_) report(sentence);
    if (!style_.as_json) return;
    json fields = f.fields();
    fields["error"] = sentence;
    fields["status"] = static_cast<int>(f.status());
    // nobody is left to tell if this fails
    write_to_standard_output(fields.dump(-1, ' ', false, json::error_handler_t::replace) + "\n");
}

void console::report(const std::string& sentence) {
    clear_progress();
    last_report_ = sentence;
    write_to_standard_error("velotrace_cli: " + place_ + sentence + "\n");
}

void console::report_progress(const std::string& sentence) {
    clear_progress();
    if (!style_.quiet) write_to_standard_error(sentence + "\n");
}

void console::write(const std::string& bytes) {
    if (!write_to_standard_output(bytes))
        throw command_failure(outcome::unusable, "standard output can't be written to");
}

void console::begin_command(const std::string& place) {
    place_ = place;
    last_report_.clear();
    began_ = clock::now();
}

void console::show_progress(const work_progress& progress) {
    const auto now = clock::now();
    if (style_.quiet || !progress.at_work() || now - began_ < quick || now - drawn_ < between_pictures) return;
    if (!standard_error_is_a_terminal()) return;
    drawn_ = now;
    std::string line = bar(progress);
    const std::size_t length = line.size();
    line.resize(std::max(length, line_length_), ' ');
    overwrite_terminal_line(line);
    line_length_ = length;
}

void console::clear_progress() {
    if (line_length_ == 0) return;
    overwrite_terminal_line(std::string(line_length_, ' '));
    overwrite_terminal_line("");
    line_length_ = 0;
}

} // namespace desk::cli
