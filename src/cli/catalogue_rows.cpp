#include "cli/catalogue_rows.h"

#include "runtime/text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

namespace desk::cli {

namespace {

constexpr std::size_t most_listed = 8;

std::optional<int> number_of(const std::string& word) {
    int number = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

/// "640x480 60Hz" of "[03] 640x480 60Hz".
std::string without_number(const std::string& name) {
    const std::size_t end = name.find(']');
    return name.starts_with('[') && end != std::string::npos ? trim(name.substr(end + 1)) : name;
}

std::vector<int> rows_that(const list_view& rows, const auto& fit) {
    std::vector<int> found;
    for (int row = 1; row <= rows.row_count(); ++row) {
        if (fit(lower_case(rows.text(row)))) found.push_back(row);
    }
    return found;
}

} // namespace

int row_of(const list_view& rows, const std::string& word, const std::string& kind) {
    const std::string wanted = lower_case(trim(word));
    const auto misused = [](const std::string& why) { return command_failure(outcome::misused, why); };
    if (wanted.empty()) throw misused("a " + kind + " needs a row or a name");
    if (const auto number = number_of(wanted)) {
        if (*number >= 1 && *number <= rows.row_count()) return *number;
        throw misused("there is no " + kind + " " + wanted + ": the rows are 1 to " + std::to_string(rows.row_count()));
    }
    std::vector<int> found =
        rows_that(rows, [&](const std::string& name) { return name == wanted || without_number(name) == wanted; });
    if (found.empty())
        found = rows_that(rows, [&](const std::string& name) { return name.find(wanted) != std::string::npos; });
    if (found.size() == 1) return found.front();
    if (found.empty()) throw misused("no " + kind + " has \"" + word + "\" in its name");
    std::string names;
    for (std::size_t i = 0; i < std::min(found.size(), most_listed); ++i)
        names += (i == 0 ? "" : ", ") + rows.text(found.at(i));
    if (found.size() > most_listed) names += ", ...";
    throw misused("\"" + word + "\" fits more than one " + kind + ": " + names);
}

json row_object(const list_view& rows, int row) { return {{"row", row}, {"name", rows.text(row)}}; }

std::string row_line(const list_view& rows, int row) {
    const std::string number = std::to_string(row);
    return std::string(number.size() < 3 ? 3 - number.size() : 0, ' ') + number + "  " + rows.text(row) + "\n";
}

} // namespace desk::cli
