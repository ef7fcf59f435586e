#include "cli/command_line.h"

#include "link/commands.h"
#include "runtime/text.h"
#include "runtime/version.h"
#include "runtime/windows_1252.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <map>
#include <memory>

namespace desk::cli {

namespace {

constexpr const char* description = "Operates a VELOTRACE generator from the command line, as the desk does.";
constexpr const char* footer = R"(
Exit status: 0 done; 1 the generator did not answer, or not as required; 2 the command line makes no sense;
3 the port or a file can't be used; 4 a run-time failure of the desk; 130 ended by a signal.)";

constexpr std::int64_t largest_serial = 4294967295;
/// A command has room for three digits.
constexpr int most_rows = 999;

[[noreturn]] void misused(const std::string& why) { throw command_failure(outcome::misused, why); }

/// The number that decimal digits name. CLI11 would take "010" for eight and nothing for zero.
std::int64_t number_in(const std::string& word, std::int64_t least, std::int64_t most) {
    std::int64_t number = 0;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc() || stop != end || number < least || number > most)
        misused("\"" + word + "\" is not a number from " + std::to_string(least) + " to " + std::to_string(most));
    return number;
}

std::vector<int> numbers_in(const std::vector<std::string>& words, int least, int most) {
    std::vector<int> numbers;
    numbers.reserve(words.size());
    for (const std::string& word : words)
        numbers.push_back(static_cast<int>(number_in(word, least, most)));
    return numbers;
}

/// Throws command_failure (misused) for a name that no file has.
void expect_file_name(const std::string& file) {
    if (file.empty()) misused("the name of the file is missing");
    if (file.find('\0') != std::string::npos) misused("the name of a file has no zero byte");
}

void expect_edid_file(const std::string& file, const std::vector<std::string>& extensions) {
    expect_file_name(file);
    expect_extension(file, extensions);
}

bool is_control_character(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

/// Help without types and ranges, which the descriptions give.
class plain_help final : public CLI::Formatter {
    std::string make_option_opts(const CLI::Option* /*option*/) const override { return ""; }
    std::string make_option_usage(const CLI::Option* option) const override {
        return option->get_required() ? option->get_name(true) : "[" + option->get_name(true) + "]";
    }
};

/// A command that gives one answer.
template <class Make>
command answering(Make make) {
    return [make](desk_session& session, console& out) { out.give(make(session)); };
}

/// The subcommands with their arguments. A parser is used once.
class command_parser {
public:
    /// `keys`: for --wait-key; null inside a batch.
    command_parser(CLI::App& app, line_input* keys) : app_(app), keys_(keys) {
        app_.require_subcommand(1);
        app_.fallthrough(false);
        app_.allow_windows_style_options(false); // "/srv/master.bin" is a file
        add_signal_commands();
        add_panel();
        add_autorun();
        add_edid_commands();
    }

    command chosen;

private:
    /// A subcommand; `choose` makes the command from the parsed arguments.
    template <class Choose>
    CLI::App& add(CLI::App& parent, const std::string& name, const std::string& what, Choose choose) {
        CLI::App* const sub = parent.add_subcommand(name, what);
        sub->callback([this, choose] { chosen = choose(); });
        return *sub;
    }

    void add_signal_commands() {
        add(app_, "version", "The versions of the program and the generator's firmware",
            [] { return answering(get_version); });
        add_of_catalogue("list", "The rows of the catalogue; no port is needed",
                         [](catalogue_list which) { return answering([=](auto& s) { return list_rows(s, which); }); });
        add(app_, "status", "What the generator outputs", [] { return answering(get_status); });

        CLI::App& setting = *app_.add_subcommand("set", "Outputs a timing or a pattern");
        setting.require_subcommand(1);
        for (const auto& [name, which] : singular) {
            CLI::App& sub = add(setting, name, "Outputs this " + std::string(name), [this, which = which] {
                return answering([which, row = word_](auto& s) { return set_row(s, which, row); });
            });
            sub.add_option("ROW-OR-NAME", word_, "A row, a name, or a part of a name that only one row has")
                ->required();
        }

        CLI::App& colors = add(app_, "color", "Reads or sets the colour of the colour pattern", [this] {
            if (words_.empty()) return answering(get_color);
            if (words_.size() != 3) misused("color needs three values: R G B, or Cr Y Cb");
            return answering([values = numbers_in(words_, 0, 255)](auto& s) { return set_color(s, values); });
        });
        // still optional: with 0, CLI11 takes none after "--"
        colors.add_option("VALUE", words_, "R G B, or Cr Y Cb, from 0 to 255")->expected(1, 3);

        CLI::App& text = add(app_, "string", "Reads or sets the custom string", [this] {
            if (string_text_->count() == 0) return answering(get_string);
            if (std::any_of(word_.begin(), word_.end(), is_control_character))
                misused("the custom string has no control characters");
            if (character_count(word_) > custom_string_length)
                misused("the custom string has at most " + std::to_string(custom_string_length) + " characters");
            if (text_from_bytes(bytes_from_text(word_)) != as_utf8(word_))
                misused("the generator has no code for a character of \"" + word_ + "\"");
            return answering([text = word_](auto& s) { return set_string(s, text); });
        });
        string_text_ = text.add_option("TEXT", word_, "At most 12 characters");

        CLI::App& favorite = *app_.add_subcommand("favorites", "Reads or sets the favorite rows");
        favorite.require_subcommand(1);
        for (const auto& [name, which] : plural) {
            CLI::App& sub = add(favorite, name, "The favorite " + std::string(name), [this, which = which] {
                favorites_.rows = numbers_in(words_, 1, most_rows);
                if (!favorites_.any()) return answering([which](auto& s) { return get_favorites(s, which); });
                return answering([which, choice = favorites_](auto& s) { return set_favorites(s, which, choice); });
            });
            auto* const rows = sub.add_option("ROW", words_, "These rows and no others")->expected(1, -1);
            auto* const all = sub.add_flag("--all", favorites_.all, "All rows")->excludes(rows);
            sub.add_flag("--none", favorites_.none, "No rows; the generator keeps its default favorites")
                ->excludes(rows)
                ->excludes(all);
        }
    }

    template <class Make>
    void add_of_catalogue(const std::string& name, const std::string& what, Make make) {
        CLI::App& parent = *app_.add_subcommand(name, what);
        parent.require_subcommand(1);
        for (const auto& [list_name, which] : plural)
            add(parent, list_name, "The " + std::string(list_name), [make, which = which] { return make(which); });
    }

    void add_panel() {
        CLI::App& sub =
            add(app_, "panel", "Reads the panel, or presses one of its switches", [this] { return panel_command(); });
        std::string groups;
        for (const panel_group& group : panel_groups()) {
            groups += std::string(groups.empty() ? "" : "\n") + "  " + group.name;
            for (const char* const value : group.values)
                groups += std::string(" ") + value;
        }
        sub.add_option("GROUP VALUE", words_, "A group and its new value; or reset")->expected(1, 2);
        sub.footer("Groups and values:\n" + groups);
    }

    command panel_command() const {
        if (words_.empty()) return answering(get_panel);
        if (words_.size() == 1 && words_.front() == "reset") return answering(reset_panel);
        const auto& groups = panel_groups();
        const auto group = std::find_if(groups.begin(), groups.end(),
                                        [this](const panel_group& g) { return words_.front() == g.name; });
        if (group == groups.end()) misused("the panel has no group \"" + words_.front() + "\"; see panel --help");
        const std::string wanted = words_.size() == 2 ? words_.back() : "";
        std::string values;
        for (std::size_t i = 0; i < group->values.size(); ++i) {
            if (wanted == group->values.at(i))
                return answering([group = *group, i](auto& s) { return press_panel(s, group, i); });
            values += std::string(" ") + group->values.at(i);
        }
        misused(std::string(group->name) + " needs one of" + values);
    }

    void add_autorun() {
        CLI::App& sub = add(app_, "autorun", "Reads the autorun list as CSV, or sets it from such a file", [this] {
            if (csv_output_->count() > 0) expect_file_name(output_);
            if (csv_input_->count() == 0)
                return answering([output = output_](auto& s) { return get_autorun(s, output); });
            expect_file_name(word_);
            return answering([file = word_](auto& s) { return set_autorun(s, file); });
        });
        csv_input_ = sub.add_option("FILE", word_, "Sets the list from this file: step,timing,pattern,seconds");
        csv_output_ = sub.add_option("-o,--output", output_, "Writes the CSV to this file")->excludes(csv_input_);
    }

    void add_edid_commands() {
        edid_ = app_.add_subcommand("edid", "Reads and writes the EDID of the sink");
        edid_->require_subcommand(1);

        CLI::App& read = add_edid("read", "Reads the EDID and saves it as .hex or .bin", [this] {
            if (word_ != "-") expect_edid_file(word_, {".hex", ".bin"});
            if (c_style_ && word_ != "-") expect_edid_file(word_, {".hex"});
            return command([file = word_, c_style = c_style_, source = source()](auto& s, auto& out) {
                out.give(read_edid(s, out, source, file, c_style));
            });
        });
        read.add_option("FILE", word_, "\"-\": HEX to standard output")->required();
        read.add_flag("--c", c_style_, "Saves the HEX file as an initialiser in C");

        CLI::App& write = add_edid("write", "Writes a file to the sink and verifies it", [this] {
            expect_edid_file(word_, readable);
            return answering([file = word_, verify = !no_verify_, source = source()](auto& s) {
                return write_edid(s, source, file, verify);
            });
        });
        write.add_option("FILE", word_)->required();
        write.add_flag("--no-verify", no_verify_, "Does not read it back");

        CLI::App& verify = add_edid("verify", "Compares the sink with a file", [this] {
            expect_edid_file(word_, readable);
            return answering([file = word_, source = source()](auto& s) { return verify_edid(s, source, file); });
        });
        verify.add_option("FILE", word_)->required();

        CLI::App& erase = add_edid("erase", "Erases the sink's EDID; takes up to three minutes", [this] {
            if (!yes_) misused("edid erase needs --yes: nothing brings the EDID back");
            return answering([source = source()](auto& s) { return erase_edid(s, source); });
        });
        erase.add_flag("--yes", yes_, "Really erases");

        add_stamp();
    }

    template <class Choose>
    CLI::App& add_edid(const std::string& name, const std::string& what, Choose choose) {
        CLI::App& sub = add(*edid_, name, what, choose);
        sub.add_option("--source", source_, "hdmi-out (the default), hdmi-in or vga");
        return sub;
    }

    edid_source source() const {
        static const std::map<std::string, edid_source> sources = {
            {"hdmi-out", edid_source::hdmi_out}, {"hdmi-in", edid_source::hdmi_in}, {"vga", edid_source::vga}};
        const auto found = sources.find(source_);
        if (found == sources.end()) misused("--source needs hdmi-out, hdmi-in or vga");
        return found->second;
    }

    void add_stamp() {
        CLI::App& sub =
            add_edid("stamp", "Writes a file to one unit after the other, each with its serial number, and verifies it",
                     [this] { return stamp_command(); });
        sub.add_option("FILE", word_)->required();
        sub.add_option("--serial", serial_, "The serial number of the first unit")->required();
        sub.add_option("--count", count_, "The number of units; 1 by default");
        sub.add_option("--step", step_, "From one number to the next; 1 by default");
        sub.add_flag("--wait-key", wait_key_, "Waits for Enter between the units");
    }

    command stamp_command() {
        expect_edid_file(word_, readable);
        stamping wanted{source(), word_, number_in(serial_, 0, largest_serial), number_in(count_, 1, largest_serial),
                        number_in(step_, 1, largest_serial)};
        if (wanted.count - 1 > (largest_serial - wanted.serial) / wanted.step)
            misused("the last serial number is beyond " + std::to_string(largest_serial));
        if (wait_key_ && keys_ == nullptr) misused("--wait-key reads standard input, which holds the commands");
        if (wait_key_) wanted.keys = keys_;
        return [wanted](desk_session& session, console& out) { stamp_edid(session, out, wanted); };
    }

    inline static const std::vector<std::pair<const char*, catalogue_list>> singular = {
        {"timing", catalogue_list::timings}, {"pattern", catalogue_list::patterns}};
    inline static const std::vector<std::pair<const char*, catalogue_list>> plural = {
        {"timings", catalogue_list::timings}, {"patterns", catalogue_list::patterns}};
    inline static const std::vector<std::string> readable = {".hex", ".bin", ".ddc"};

    CLI::App& app_;
    line_input* keys_;
    CLI::App* edid_ = nullptr;
    CLI::Option* string_text_ = nullptr;
    CLI::Option* csv_input_ = nullptr;
    CLI::Option* csv_output_ = nullptr;

    // the parsed arguments; only one subcommand is used
    std::string word_;
    std::vector<std::string> words_;
    std::string output_;
    favorite_choice favorites_;
    std::string source_ = "hdmi-out";
    bool c_style_ = false;
    bool no_verify_ = false;
    bool yes_ = false;
    bool wait_key_ = false;
    std::string serial_;
    std::string count_ = "1";
    std::string step_ = "1";
};

/// The name of a subcommand with those before it: "velotrace_cli edid stamp".
std::string full_name(const CLI::App& app) {
    return app.get_parent() == nullptr ? app.get_name() : full_name(*app.get_parent()) + " " + app.get_name();
}

/// "++" would end a subcommand for CLI11, but after "--" it is a word like any other.
std::vector<std::string> with_plain_plus(std::vector<std::string> words) {
    const auto first = std::find_if(words.begin(), words.end(), [](const auto& w) { return w == "++" || w == "--"; });
    if (first != words.end() && *first == "++") words.insert(first, "--");
    return words;
}

/// Runs CLI11. Returns a text if help was asked for.
std::optional<std::string> parse(CLI::App& app, const std::vector<std::string>& words) {
    std::vector<std::string> last_first = with_plain_plus(words);
    std::reverse(last_first.begin(), last_first.end());
    try {
        app.parse(std::move(last_first));
    } catch (const CLI::CallForHelp&) {
        const CLI::App* asked = &app;
        while (!asked->get_subcommands().empty())
            asked = asked->get_subcommands().front();
        return asked->help(asked->get_parent() == nullptr ? "" : full_name(*asked->get_parent()));
    } catch (const CLI::CallForVersion&) {
        return version_line("velotrace_cli");
    } catch (const CLI::ParseError& e) {
        // a word that is no command is reported as a missing one
        std::vector<std::string> unknown = app.remaining(true);
        std::erase(unknown, "--");
        if (!unknown.empty()) misused("\"" + unknown.front() + "\" is not understood; see --help");
        misused(e.what());
    }
    return std::nullopt;
}

/// "-" in place of a command is the subcommand batch, since no subcommand can have that name.
std::vector<std::string> with_batch(std::vector<std::string> words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string& word = words.at(i);
        if (word == "-")
            word = "batch";
        else if (word == "--port")
            ++i;
        else if (!word.starts_with("--"))
            break;
        else
            continue;
        if (word == "batch") break;
    }
    return words;
}

} // namespace

command_line parse_arguments(const std::vector<std::string>& words, line_input& keys) {
    CLI::App app(description, "velotrace_cli");
    app.formatter(std::make_shared<plain_help>());
    command_line line;
    std::string port;
    bool keep_going = false;
    auto* const port_option =
        app.add_option("--port", port, "1 to 8, or the path of a device; by default the desk's port");
    app.add_flag("--json", line.style.as_json, "Answers with one JSON object, the last line of standard output");
    app.add_flag("--quiet", line.style.quiet, "No progress, and no answer that only confirms");
    app.set_version_flag("--version", "");
    command_parser parser(app, &keys);
    CLI::App* const batch = app.add_subcommand("batch", "Or \"-\": commands from standard input, one a line");
    batch->add_flag("--keep-going", keep_going, "Goes on after a failure");
    app.footer(footer); // not for the subcommands
    if (const auto text = parse(app, with_batch(words))) {
        line.task = shown_text{*text};
        return line;
    }
    if (port_option->count() > 0) {
        const bool number = std::all_of(port.begin(), port.end(), is_digit);
        if (number && (port.size() != 1 || port < "1" || port > "8"))
            misused("--port needs 1 to 8, or the path of a device");
        line.port = port;
    }
    if (batch->parsed())
        line.task = batch_of_commands{keep_going};
    else
        line.task = parser.chosen;
    return line;
}

command parse_line(const std::vector<std::string>& words) {
    CLI::App app("", "");
    command_parser parser(app, nullptr);
    if (parse(app, words)) misused("--help is for the command line of the program");
    return parser.chosen;
}

answer_style style_of(const std::vector<std::string>& words) {
    const auto has = [&](const char* option) { return std::find(words.begin(), words.end(), option) != words.end(); };
    return {has("--json"), has("--quiet")};
}

} // namespace desk::cli
