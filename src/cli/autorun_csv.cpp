#include "cli/autorun_csv.h"

#include "runtime/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>
#include <utility>

namespace desk::cli {

namespace {

constexpr std::string_view header = "step,timing,pattern,seconds";

/// Of a cell, in a message.
constexpr std::size_t longest_quote = 32;

using four_numbers = std::array<int, 4>;

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '\n' || (c == '\r' && text.substr(i + 1, 1) != "\n"))
            lines.emplace_back();
        else if (c != '\r')
            lines.back() += c;
    }
    return lines;
}

std::vector<std::string> cells_of(const std::string& line) {
    std::vector<std::string> cells(1);
    for (const char c : line) {
        if (c == ',')
            cells.emplace_back();
        else
            cells.back() += c;
    }
    return cells;
}

/// Reads the lines of a file and names the bad one.
class csv_reader {
public:
    explicit csv_reader(const autorun_limits& limits) : limits_(limits) {}

    std::vector<autorun_step> read(std::string_view text) {
        if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        bool header_read = false;
        for (const std::string& line : lines_of(text)) {
            ++number_;
            const std::string content = trim(line);
            if (content.empty()) continue;
            if (header_read)
                read_step(content);
            else
                read_header(content);
            header_read = true;
        }
        if (!header_read) bad("the header is missing: " + std::string(header));
        return std::move(steps_);
    }

private:
    [[noreturn]] void bad(const std::string& why) const {
        throw csv_error("line " + std::to_string(number_) + ": " + why);
    }

    void read_header(const std::string& line) const {
        std::string plain = lower_case(line);
        std::erase(plain, ' ');
        if (plain != header) bad("the header has to be " + std::string(header));
    }

    void read_step(const std::string& line) {
        const auto [step, timing, pattern, seconds] = numbers_of(line);
        expect("step", step, limits_.steps);
        expect("timing", timing, limits_.timings);
        expect("pattern", pattern, limits_.patterns);
        if (std::find(limits_.seconds.begin(), limits_.seconds.end(), seconds) == limits_.seconds.end())
            bad(std::to_string(seconds) + " seconds are not on offer: " + offered_seconds());
        if (!named_.insert(step).second) bad("step " + std::to_string(step) + " for the second time");
        steps_.push_back({step, timing, pattern, seconds});
    }

    four_numbers numbers_of(const std::string& line) const {
        const std::vector<std::string> cells = cells_of(line);
        four_numbers numbers{};
        if (cells.size() != numbers.size()) bad("a line has four numbers, separated by commas");
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const std::string cell = trim(cells.at(i));
            const char* const end = cell.data() + cell.size();
            const auto [stop, error] = std::from_chars(cell.data(), end, numbers.at(i));
            if (error != std::errc() || stop != end) bad("\"" + cell.substr(0, longest_quote) + "\" is not a number");
        }
        return numbers;
    }

    void expect(const char* name, int value, int most) const {
        if (value < 1 || value > most)
            bad(std::string(name) + " " + std::to_string(value) + " is not in 1 to " + std::to_string(most));
    }

    std::string offered_seconds() const {
        std::string text;
        for (const int seconds : limits_.seconds)
            text += (text.empty() ? "" : " ") + std::to_string(seconds);
        return text;
    }

    const autorun_limits& limits_;
    int number_ = 0;
    std::set<int> named_;
    std::vector<autorun_step> steps_;
};

} // namespace

std::string csv_of(const std::vector<autorun_step>& steps) {
    std::string text = std::string(header) + "\n";
    for (const autorun_step& s : steps)
        text += std::to_string(s.step) + "," + std::to_string(s.timing) + "," + std::to_string(s.pattern) + "," +
                std::to_string(s.seconds) + "\n";
    return text;
}

std::vector<autorun_step> steps_of_csv(std::string_view text, const autorun_limits& limits) {
    return csv_reader(limits).read(text);
}

} // namespace desk::cli
