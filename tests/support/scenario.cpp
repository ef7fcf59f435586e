#include "support/scenario.h"

#include "robot/answers.h"
#include "robot/tokens.h"
#include "runtime/windows_1252.h"
#include "support/robot_at_hand.h"
#include "support/temporary_directory.h"
#include "support/view_controls.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace desk::test {

namespace {

constexpr std::string_view default_settings = "1\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n"
                                              "\"\"\r\n\"\"\r\n0\r\n0\r\n0\r\n";

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size())
        text.replace(at, what.size(), by);
    return text;
}

std::string in_digits(int number, std::size_t digits) {
    std::string text = std::to_string(number);
    text.insert(0, digits - std::min(digits, text.size()), '0');
    return text;
}

/// The lines of a recipe, which are separated by " ;; ".
std::vector<std::string> lines_of_recipe(std::string_view text) {
    static constexpr std::string_view separator = " ;; ";
    std::vector<std::string> lines;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;
         text.remove_prefix(end + separator.size()))
        lines.push_back(trimmed(text.substr(0, end)));
    lines.push_back(trimmed(text));
    return lines;
}

/// Replaces every match of `what` in the text.
template <class WriteOut>
std::string with_all_written_out(const std::string& text, const std::regex& what, WriteOut write_out) {
    std::string all;
    auto from = text.cbegin();
    for (std::smatch found; std::regex_search(from, text.cend(), found, what); from = found.suffix().first) {
        all.append(from, found[0].first);
        write_out(found, all);
    }
    return all.append(from, text.cend());
}

/// Expands runs: "{1..3:FT-%3}".
std::string with_runs(const std::string& text) {
    static const std::regex run(R"(\{(\d+)\.\.(\d+)(:|, )([^}]*)\})");
    return with_all_written_out(text, run, [](const std::smatch& found, std::string& all) {
        const int last = std::stoi(found[2]);
        for (int number = std::stoi(found[1]); number <= last; ++number) {
            all += replaced(replaced(found[4], "%2", in_digits(number, 2)), "%3", in_digits(number, 3));
            if (found[3] == ", " && number < last) all += ", ";
        }
    });
}

/// Expands repetitions: "{12*00}".
std::string with_repetitions(const std::string& text) {
    static const std::regex repetition(R"(\{(\d+)\*([^{}]*)\})");
    return with_all_written_out(text, repetition, [](const std::smatch& found, std::string& all) {
        for (int i = std::stoi(found[1]); i > 0; --i)
            all += found[2];
    });
}

/// Bytes in hexadecimal digits as the windows show them: eight to a line, each line with the index of its last byte,
/// an empty line after byte 127.
std::string window_text_of(const std::string& digits) {
    std::ostringstream text;
    text << std::uppercase << std::hex;
    const std::size_t count = digits.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        text << digits.substr(2 * i, 2) << ' ';
        if (i % 8 == 7) text << "//" << i << R"(\r\n)";
        if (i == 127) text << R"(\r\n)";
    }
    return text.str();
}

/// Expands window texts: "{text 00FF}".
std::string with_window_texts(const std::string& text) {
    static constexpr std::string_view opening = "{text ";
    std::string all = text;
    for (std::size_t at = 0; (at = all.find(opening, at)) != std::string::npos;) {
        const std::size_t end = all.find('}', at);
        if (end == std::string::npos) throw std::runtime_error("unterminated window text: " + text);
        const std::size_t from = at + opening.size();
        all.replace(at, end + 1 - at, window_text_of(all.substr(from, end - from)));
    }
    return all;
}

/// Removes the first word of a text and returns it.
std::string take_word(std::string& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string word = text.substr(0, end);
    text = trimmed(text.substr(end));
    return word;
}

/// A JSON string as bytes, one for each character; after "hex:", bytes in hexadecimal digits.
std::string bytes_of_json(const std::string& text) {
    if (text.starts_with("hex:")) {
        const auto bytes = robot::bytes_of_hex(std::string_view(text).substr(4));
        if (!bytes) throw std::runtime_error("not hexadecimal digits: " + text);
        return *bytes;
    }
    const auto value = nlohmann::json::parse(text, nullptr, false);
    if (!value.is_string()) throw std::runtime_error("not a JSON string: " + text);
    std::string bytes;
    for (const char32_t c : characters_of(value.get<std::string>())) {
        if (c > 0xFF) throw std::runtime_error("not a byte: a character above 255: " + text);
        bytes.push_back(static_cast<char>(c));
    }
    return bytes;
}

class run {
public:
    explicit run(std::string_view default_catalogue) {
        directory_.put("marlo_rs232.ini", default_settings);
        directory_.put("timing_pattern.ini", default_catalogue);
    }

    std::vector<std::string> failures;

    void line(const scenario_line& l) {
        now_ = &l;
        try {
            const std::string text =
                with_window_texts(with_runs(with_repetitions(replaced(l.text, "$DIR", directory_.plain_name()))));
            if (text.front() == '!')
                directive(trimmed(text.substr(1)));
            else
                command(text);
        } catch (const std::exception& e) {
            fail("a valid line", e.what());
        }
    }

    using directive_table = std::map<std::string, std::function<void(run&, std::string)>>;

    static const directive_table& directives() {
        static const directive_table all = {
            {"settings", [](run& r, const std::string& text) { r.put_file("marlo_rs232.ini", text); }},
            {"catalogue", [](run& r, const std::string& text) { r.put_file("timing_pattern.ini", text); }},
            {"file",
             [](run& r, std::string text) {
                 const std::string file = take_word(text);
                 r.put_file(file, text);
             }},
            {"expect_file",
             [](run& r, std::string text) {
                 const std::string file = take_word(text);
                 r.expect_file(file, text);
             }},
            {"file_holds",
             [](run& r, std::string text) {
                 const std::string file = take_word(text);
                 r.expect_file_holds(file, text);
             }},
            {"on_show", [](run& r, const std::string& names) { r.expect_on_show(names); }},
            {"lit",
             [](run& r, std::string text) {
                 const std::string group = take_word(text);
                 r.expect_lit(group, text == "none" ? -1 : number(text));
             }},
            {"mark", [](run& r, const std::string&) { r.mark_ = r.clock(); }},
            {"passed",
             [](run& r, std::string text) {
                 const int least = number(take_word(text));
                 r.expect_passed(least, number(text));
             }},
        };
        return all;
    }

private:
    void fail(const std::string& expected, const std::string& got) {
        failures.push_back("line " + std::to_string(now_->number) + ": " + now_->text + "\n    expected " + expected +
                           "\n    got      " + got);
    }

    void command(const std::string& text) {
        const std::size_t arrow = text.find("  -> ");
        const std::string said = trimmed(text.substr(0, arrow));
        const std::string answer = robot_.answer(said);
        if (arrow == std::string::npos) {
            if (answer != "ok" && !answer.starts_with("ok ")) fail("ok", answer);
            return;
        }
        const std::string expected = trimmed(text.substr(arrow + 5));
        if (expected.starts_with("~ ")) {
            if (!std::regex_search(answer, std::regex(expected.substr(2)))) fail(expected, answer);
        } else if (answer != expected) {
            fail(expected, answer);
        }
    }

    void directive(std::string text) {
        const auto found = directives().find(take_word(text));
        if (found == directives().end()) return fail("a directive", now_->text);
        found->second(*this, text);
    }

    void put_file(const std::string& name, const std::string& text) const {
        if (text == "none")
            std::filesystem::remove(directory_ / name);
        else
            directory_.put(name, bytes_of_json(text));
    }

    /// Whether a file with exactly this name exists: some file systems ignore case.
    bool is_there(const std::string& name) const {
        const std::filesystem::path wanted = directory_ / name;
        std::error_code no_folder;
        const std::filesystem::directory_iterator files(wanted.parent_path(), no_folder);
        return std::any_of(begin(files), end(files), [&](const std::filesystem::directory_entry& file) {
            return file.path().filename() == wanted.filename();
        });
    }

    void expect_file(const std::string& name, const std::string& text) {
        const bool wanted = text != "none";
        const std::string expected = wanted ? bytes_of_json(text) : "";
        if (is_there(name) != wanted)
            fail(wanted ? "the file " + name : "no file " + name, wanted ? "none" : "one");
        else if (wanted && directory_.content(name) != expected)
            fail(text, robot::json_text(text_from_bytes(directory_.content(name))));
    }

    void expect_file_holds(const std::string& name, const std::string& pattern) {
        if (!directory_.has(name)) return fail("the file " + name, "none");
        const std::string content = robot::json_text(text_from_bytes(directory_.content(name)));
        // without its quotes, so that the pattern can match its ends
        const std::string text = content.substr(1, content.size() - 2);
        if (!std::regex_search(text, std::regex(pattern))) fail(pattern, text);
    }

    void expect_on_show(std::string names) {
        std::vector<std::string> expected;
        while (!names.empty())
            expected.push_back(take_word(names));
        for (const std::string& name : expected) {
            if (std::find(view_controls.begin(), view_controls.end(), name) == view_controls.end())
                fail("a control that views show and hide", name);
        }
        for (const std::string& name : view_controls) {
            const bool wanted = std::find(expected.begin(), expected.end(), name) != expected.end();
            const std::string answer = robot_.answer("get " + name + ".shown");
            if (answer != (wanted ? "ok true" : "ok false")) fail(name + (wanted ? " shown" : " not shown"), answer);
        }
    }

    void expect_lit(const std::string& group, int lit) {
        int count = 0;
        while (true) {
            const std::string member = group + "(" + std::to_string(count) + ")";
            const std::string answer = robot_.answer("get " + member + ".back_color");
            if (!answer.starts_with("ok ")) break;
            const bool wanted = count == lit;
            if (answer != (wanted ? "ok 65280" : "ok 2147483663")) fail(member + (wanted ? " lit" : " dark"), answer);
            ++count;
        }
        if (count == 0 || lit >= count) fail("a group with this button", group);
    }

    void expect_passed(int least, int most) {
        const int passed = clock() - mark_;
        if (passed < least || passed > most)
            fail(std::to_string(least) + " to " + std::to_string(most) + " ms", std::to_string(passed));
    }

    int clock() { return number(robot_.answer("clock").substr(3)); }

    static int number(const std::string& text) {
        int value = 0;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ec != std::errc() || result.ptr != text.data() + text.size())
            throw std::runtime_error("no number: " + text);
        return value;
    }

    temporary_directory directory_;
    robot_at_hand robot_{path_from_utf8(directory_.plain_name())};
    const scenario_line* now_ = nullptr;
    int mark_ = 0;
};

} // namespace

std::vector<scenario> scenarios_of(std::string_view text) {
    std::vector<scenario> scenarios;
    std::istringstream lines{std::string(text)};
    std::string line;
    std::vector<std::pair<std::string, std::string>> names;
    for (int number = 1; std::getline(lines, line); ++number) {
        line = trimmed(line);
        if (line.empty() || line.front() == '#') continue;
        for (const auto& [name, meaning] : names)
            line = replaced(std::move(line), name, meaning);
        if (line.starts_with("let $")) {
            const std::size_t equals = line.find(" = ");
            if (equals == std::string::npos)
                throw std::runtime_error("line " + std::to_string(number) + " gives no text");
            names.emplace_back(line.substr(4, equals - 4), line.substr(equals + 3));
            continue;
        }
        if (line.starts_with("== ")) {
            scenarios.push_back({line.substr(3), {}});
            continue;
        }
        if (scenarios.empty()) throw std::runtime_error("line " + std::to_string(number) + " belongs to no scenario");
        for (std::string& part : lines_of_recipe(line))
            scenarios.back().lines.push_back({number, std::move(part)});
    }
    return scenarios;
}

std::vector<std::string> run_scenario(const scenario& s, std::string_view default_catalogue) {
    run r(default_catalogue);
    for (const scenario_line& line : s.lines)
        r.line(line);
    return r.failures;
}

std::vector<std::string> directive_names() {
    std::vector<std::string> names;
    for (const auto& [name, carry_out] : run::directives())
        names.push_back(name);
    return names;
}

int run_scenario_file(const std::filesystem::path& file) {
    const std::string catalogue = read_whole_file(file.parent_path() / "default_catalogue.ini");
    const std::vector<scenario> scenarios = scenarios_of(read_whole_file(file));
    int failed = scenarios.empty() ? 1 : 0;
    if (scenarios.empty()) std::cout << file.filename() << " contains no scenario\n";
    for (const scenario& s : scenarios) {
        const std::vector<std::string> failures = run_scenario(s, catalogue);
        if (failures.empty()) continue;
        ++failed;
        std::cout << file.filename() << ": " << s.rule << "\n";
        for (const std::string& failure : failures)
            std::cout << "  " << failure << "\n";
    }
    std::cout << scenarios.size() << " scenarios, " << failed << " failed\n";
    return failed;
}

} // namespace desk::test
