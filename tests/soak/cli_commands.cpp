#include "soak/cli_commands.h"

#include "platform/sha256.h"
#include "runtime/bytes.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <set>

namespace desk::test {

namespace {

using std::string;

struct panel_group {
    const char* name;
    int simulator_memory::*value;
    int first; ///< the number of the first value
    std::vector<const char*> values;
};

const std::vector<panel_group> groups = {
    {"output", &simulator_memory::output, 1, {"pc", "hd", "dvi", "hdmi"}},
    {"hdcp", &simulator_memory::hdcp, 0, {"off", "on"}},
    {"audio", &simulator_memory::audio, 1, {"ext-7.1", "ext-opt", "int-sine"}},
    {"lpcm", &simulator_memory::lpcm, 1, {"2", "5.1", "7.1"}},
    {"color-space", &simulator_memory::color_space, 1, {"rgb444", "yuv444", "yuv422"}},
    {"deep-color", &simulator_memory::deep_color, 1, {"8", "10", "12"}},
    {"autorun", &simulator_memory::autorun, 0, {"off", "on"}},
    {"favorite", &simulator_memory::favorite, 0, {"off", "on"}},
};
constexpr int int_sine = 3;

string value_of(const panel_group& group, const simulator_memory& m) {
    return group.values.at(static_cast<std::size_t>(m.*group.value - group.first));
}

bool is_row(const json& answer, int row, const std::vector<string>& names) {
    return answer == json{{"row", row}, {"name", names.at(static_cast<std::size_t>(row) - 1)}};
}

/// The byte that makes the block's sum 0.
void correct_checksum(bytes& edid, std::size_t block) {
    const auto begin = edid.begin() + static_cast<std::ptrdiff_t>(128 * block);
    const unsigned sum = std::accumulate(begin, begin + 127, 0U);
    begin[127] = static_cast<std::uint8_t>(256 - sum % 256);
}

bytes with_serial(bytes edid, std::int64_t serial) {
    for (std::size_t i = 0; i < 4; ++i)
        edid.at(12 + i) = static_cast<std::uint8_t>(serial >> (8 * i));
    correct_checksum(edid, 0);
    return edid;
}

/// Whether the desk can't open or stamp it: a block needs the checksum 256, which does not fit into a byte.
bool checksum_does_not_fit(const bytes& edid, std::ptrdiff_t block) {
    const auto begin = edid.begin() + 128 * block;
    return std::accumulate(begin, begin + 127, 0U) % 256 == 0;
}

bool can_be_opened(const bytes& edid) { return !checksum_does_not_fit(edid, 0) && !checksum_does_not_fit(edid, 1); }

/// A command with a file that can't be used, whatever the generator does.
tried_command with_unusable_file(const string& line) {
    tried_command c{line, "unusable file"};
    c.uses_port = false;
    c.fixed_status = 3;
    c.agrees = [](const answered_command& a) { return a.after == a.before; };
    return c;
}

int differences(const bytes& a, const bytes& b) {
    int count = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        count += a.at(i) == b.at(i) ? 0 : 1;
    return count;
}

} // namespace

cli_commands::cli_commands(const simulator_control& generator, std::uint64_t seed)
    : generator_(generator), random_(seed) {}

void cli_commands::take_names(std::vector<string> timings, std::vector<string> patterns) {
    timings_ = std::move(timings);
    patterns_ = std::move(patterns);
}

tried_command cli_commands::next() {
    struct choice {
        int weight;
        tried_command (cli_commands::*make)();
    };
    static constexpr std::array choices = {
        choice{400, &cli_commands::set_row},     choice{120, &cli_commands::status},
        choice{160, &cli_commands::press},       choice{40, &cli_commands::panel},
        choice{50, &cli_commands::version},      choice{30, &cli_commands::list},
        choice{45, &cli_commands::text},         choice{35, &cli_commands::color},
        choice{12, &cli_commands::favorites},    choice{8, &cli_commands::autorun},
        choice{16, &cli_commands::edid_read},    choice{12, &cli_commands::edid_verify},
        choice{14, &cli_commands::edid_write},   choice{4, &cli_commands::edid_stamp},
        choice{3, &cli_commands::reset},         choice{25, &cli_commands::misused},
        choice{12, &cli_commands::without_file}, choice{14, &cli_commands::comment}};
    int place = below(
        std::accumulate(choices.begin(), choices.end(), 0, [](int sum, const choice& c) { return sum + c.weight; }));
    for (const choice& c : choices) {
        if (place < c.weight) return (this->*c.make)();
        place -= c.weight;
    }
    return comment();
}

tried_command cli_commands::set_row() {
    const bool timing = below(2) == 0;
    const std::vector<string>& names = timing ? timings_ : patterns_;
    const int row = between(1, static_cast<int>(names.size()));
    const string kind = timing ? "set timing" : "set pattern";
    const bool by_name = below(4) == 0;
    const string word = by_name ? "\"" + names.at(static_cast<std::size_t>(row) - 1) + "\"" : std::to_string(row);
    tried_command c{kind + " " + word, kind};
    c.has = [=](const answered_command& a) {
        return is_row(a.last(), row, names) && (timing ? a.after.timing : a.after.pattern) == row;
    };
    return c;
}

tried_command cli_commands::status() {
    tried_command c{"status", "status"};
    c.agrees = [this](const answered_command& a) {
        static constexpr std::array outputs = {"PC", "HD", "DVI", "HDMI"};
        return is_row(a.last().at("timing"), a.after.timing, timings_) &&
               is_row(a.last().at("pattern"), a.after.pattern, patterns_) &&
               a.last().at("output") == outputs.at(static_cast<std::size_t>(a.after.output) - 1) &&
               a.last().at("hdcp") == (a.after.hdcp == 1 ? "ON" : "OFF");
    };
    return c;
}

tried_command cli_commands::panel() {
    tried_command c{"panel", "panel"};
    c.agrees = [](const answered_command& a) {
        return std::all_of(groups.begin(), groups.end(), [&](const panel_group& group) {
            return a.last().at(group.name) == value_of(group, a.after);
        });
    };
    return c;
}

tried_command cli_commands::press() {
    const panel_group group = any_of(groups);
    const int place = below(static_cast<int>(group.values.size()));
    const char* const value = group.values.at(static_cast<std::size_t>(place));
    tried_command c{string("panel ") + group.name + " " + value, "panel GROUP VALUE"};
    const auto has = [=](const answered_command& a) {
        return a.last().at(group.name) == value && a.after.*group.value == group.first + place;
    };
    if (group.value != &simulator_memory::lpcm) {
        c.has = has;
        return c;
    }
    // a refusal that arrives with another digit is taken for an echo
    c.agrees = [=](const answered_command& a) { return a.status() != 0 || has(a); };
    c.status = [=](const answered_command& a) { return place > 0 && a.before.audio == int_sine ? 1 : 0; };
    return c;
}

tried_command cli_commands::reset() {
    tried_command c{"panel reset", "panel reset"};
    c.has = [](const answered_command& a) {
        const simulator_memory& m = a.after;
        return m.timing == 1 && m.pattern == 1 && m.output == 4 && m.hdcp == 0 && m.audio == int_sine && m.lpcm == 1 &&
               m.color_space == 1 && m.deep_color == 1 && m.autorun == 0 && m.favorite == 0 && m.autorun_steps == 0;
    };
    c.agrees = [](const answered_command& a) {
        return std::all_of(groups.begin(), groups.end(),
                           [&](const panel_group& group) { return a.last().at(group.name).is_null(); });
    };
    return c;
}

tried_command cli_commands::version() {
    tried_command c{"version", "version"};
    c.has = [](const answered_command& a) { return a.last().at("program") == "v1.3G"; };
    // of VER012
    c.agrees = [](const answered_command& a) { return a.last().at("firmware") == "v1.2"; };
    return c;
}

tried_command cli_commands::list() {
    const bool timing = below(2) == 0;
    tried_command c{timing ? "list timings" : "list patterns", "list"};
    c.uses_port = false;
    c.fixed_status = 0;
    c.has = [names = timing ? timings_ : patterns_](const answered_command& a) {
        const json& rows = a.last().at("rows");
        bool same = rows.size() == names.size();
        for (std::size_t i = 0; same && i < names.size(); ++i)
            same = is_row(rows.at(i), static_cast<int>(i) + 1, names);
        return same;
    };
    return c;
}

tried_command cli_commands::color() {
    const auto agrees = [](const answered_command& a) {
        return a.last() == json{{"mode", a.after.color_space == 1 ? "rgb" : "ycbcr"}, {"values", a.after.colors}};
    };
    tried_command c{"color", "color"};
    c.agrees = agrees;
    if (below(2) == 0) return c;
    const std::array<int, 3> values{below(256), below(256), below(256)};
    c.kind = "color VALUES";
    for (const int value : values)
        c.line += " " + std::to_string(value);
    c.has = [=](const answered_command& a) { return a.last().at("values") == values && a.after.colors == values; };
    return c;
}

tried_command cli_commands::text() {
    tried_command c{"string", "string"};
    c.agrees = [](const answered_command& a) { return a.last() == json{{"text", a.after.custom_string}}; };
    if (below(2) == 0) return c;
    string text;
    const int length = below(13);
    for (int i = 0; i < length; ++i)
        text += any_of(string("ABCabc019 #-"));
    // the desk trims what it sends
    const std::size_t first = text.find_first_not_of(' ');
    text = first == string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
    c.kind = "string TEXT";
    // what begins with a dash is an option
    c.line += " -- '" + text + "'";
    // no answer follows the text: a generator that has missed its command misses it too
    c.has = [=](const answered_command& a) { return a.last() == json{{"text", text}}; };
    return c;
}

tried_command cli_commands::favorites() {
    const bool timing = below(2) == 0;
    const int simulator_memory::*const count =
        timing ? &simulator_memory::favorite_timings : &simulator_memory::favorite_patterns;
    tried_command c{timing ? "favorites timings" : "favorites patterns", "favorites"};
    c.agrees = [=](const answered_command& a) {
        return a.last().at("rows").size() == static_cast<std::size_t>(a.after.*count);
    };
    if (below(3) > 0) return c;
    c.kind = "favorites ROWS";
    // without any the generator keeps its default favorites
    std::set<int> rows = timing ? std::set{1, 23} : std::set{1};
    const int all = static_cast<int>(timing ? timings_.size() : patterns_.size());
    const int choice = below(3);
    if (choice == 0) {
        c.line += " --none";
    } else if (choice == 1) {
        c.line += " --all";
        for (int row = 1; row <= all; ++row)
            rows.insert(row);
    } else {
        rows.clear();
        for (int i = between(1, 5); i > 0; --i)
            rows.insert(between(1, all));
        for (const int row : rows)
            c.line += " " + std::to_string(row);
    }
    c.has = [=](const answered_command& a) {
        return a.last() == json{{"rows", rows}} && static_cast<std::size_t>(a.after.*count) == rows.size();
    };
    return c;
}

tried_command cli_commands::autorun() {
    tried_command c{"autorun", "autorun"};
    c.agrees = [](const answered_command& a) {
        return a.last().at("steps").size() == static_cast<std::size_t>(a.after.autorun_steps);
    };
    if (below(3) > 0) return c;
    json steps = json::array();
    string csv = "step,timing,pattern,seconds\n";
    for (int step = 1; step <= 32; ++step) {
        if (below(4) > 0) continue;
        const int timing = between(1, static_cast<int>(timings_.size()));
        const int pattern = between(1, static_cast<int>(patterns_.size()));
        const int seconds = any_of(std::array{5, 10, 60, 150, 600});
        steps.push_back({{"step", step}, {"timing", timing}, {"pattern", pattern}, {"seconds", seconds}});
        csv += std::to_string(step) + "," + std::to_string(timing) + "," + std::to_string(pattern) + "," +
               std::to_string(seconds) + "\n";
    }
    folder_.put("steps.csv", csv);
    c.kind = "autorun FILE";
    c.line += " " + file("steps.csv");
    c.has = [=](const answered_command& a) {
        return a.last() == json{{"steps", steps}} && static_cast<std::size_t>(a.after.autorun_steps) == steps.size();
    };
    return c;
}

int cli_commands::some_sink(string& line) {
    static constexpr std::array sources = {"hdmi-out", "hdmi-in", "vga"};
    const int place = below(3);
    if (place > 0 || below(2) == 0) line += string(" --source ") + sources.at(static_cast<std::size_t>(place));
    return place + 1;
}

bytes cli_commands::some_edid() {
    bytes edid(256);
    for (std::uint8_t& byte : edid)
        byte = static_cast<std::uint8_t>(below(256));
    correct_checksum(edid, 0);
    correct_checksum(edid, 1);
    return edid;
}

void cli_commands::put(const string& name, const bytes& content) const {
    folder_.put(name, {reinterpret_cast<const char*>(content.data()), content.size()});
}

tried_command cli_commands::edid_read() {
    const string name = any_of(std::array{"read.bin", "read.hex", "-"});
    tried_command c{"edid read " + (name == "-" ? name : file(name)), "edid read"};
    const int sink = some_sink(c.line);
    c.has = [=, this](const answered_command& a) {
        if (name != "read.bin") return true;
        return a.last().at("sha256") == sha256(bytes_of(folder_.content(name)));
    };
    c.agrees = [=, this](const answered_command& a) { return a.last().at("sha256") == sha256(generator_.sink(sink)); };
    return c;
}

tried_command cli_commands::edid_verify() {
    string options;
    const int sink = some_sink(options);
    bytes edid = generator_.sink(sink);
    const int changed = below(2) == 0 ? 0 : between(1, 5);
    for (int i = 0; i < changed; ++i)
        edid.at(static_cast<std::size_t>(below(256))) ^= 0x5A;
    put("verify.bin", edid);
    tried_command c{"edid verify " + file("verify.bin") + options, "edid verify"};
    if (!can_be_opened(edid)) return with_unusable_file(c.line);
    const auto wrong = [=, this] { return differences(generator_.sink(sink), edid); };
    c.status = [=](const answered_command&) { return wrong() == 0 ? 0 : 1; };
    c.agrees = [=](const answered_command& a) {
        return a.last().at("verified") == (wrong() == 0) &&
               (wrong() == 0 || a.last().value("differences", 0) == wrong());
    };
    return c;
}

tried_command cli_commands::edid_write() {
    const bytes edid = some_edid();
    put("write.bin", edid);
    const bool verifies = below(4) > 0;
    tried_command c{"edid write " + file("write.bin") + (verifies ? "" : " --no-verify"), "edid write"};
    const int sink = some_sink(c.line);
    if (!can_be_opened(edid)) return with_unusable_file(c.line);
    const auto written = [=, this](const answered_command&) { return generator_.sink(sink) == edid; };
    (verifies ? c.has : c.agrees) = written;
    return c;
}

tried_command cli_commands::edid_stamp() {
    const bytes edid = some_edid();
    put("stamp.bin", edid);
    const std::int64_t serial = below(2) == 0 ? below(1000) : 4294967000 + below(200);
    const int count = between(1, 2);
    const int step = between(1, 90);
    tried_command c{"edid stamp " + file("stamp.bin") + " --serial " + std::to_string(serial) + " --step " +
                        std::to_string(step) + " --count " + std::to_string(count),
                    "edid stamp"};
    const int sink = some_sink(c.line);
    if (!can_be_opened(edid)) return with_unusable_file(c.line);
    c.answers = count;
    const auto serial_of = [=](std::int64_t unit) { return serial + unit * step; };
    c.status = [=](const answered_command&) {
        for (int unit = 0; unit < count; ++unit) {
            if (checksum_does_not_fit(with_serial(edid, serial_of(unit)), 0)) return 4;
        }
        return 0;
    };
    c.has = [=, this](const answered_command& a) {
        std::int64_t unit = 0;
        for (const json& answer : a.answers) {
            if (answer.at("serial") != serial_of(unit++) || answer.at("result") != "PASS") return false;
        }
        // a unit that could not be read back passes, with a message
        return a.last().contains("message") || generator_.sink(sink) == with_serial(edid, serial_of(count - 1));
    };
    c.agrees = [](const answered_command& a) { return !a.last().contains("message"); };
    return c;
}

tried_command cli_commands::erase() {
    tried_command c{"edid erase --yes", "edid erase"};
    const int sink = some_sink(c.line);
    c.has = [=, this](const answered_command& a) {
        return a.last() == json::object() && generator_.sink(sink) == bytes(256, 0xFF);
    };
    return c;
}

tried_command cli_commands::misused() {
    const std::vector<string> lines = {"set timing 80",
                                       "set timing 0",
                                       "set pattern no-such-pattern",
                                       "set timing 640x480",
                                       "panel output vga",
                                       "panel colour red",
                                       "color 1 2",
                                       "color 1 2 256",
                                       "string 'thirteen signs'",
                                       "favorites timings 1 --all",
                                       "favorites timings 1 80",
                                       "edid erase",
                                       "edid read unknown.txt",
                                       "edid stamp stamp.bin",
                                       "edid stamp stamp.bin --serial 1 --wait-key",
                                       "edid stamp stamp.bin --serial 4294967295 --count 2",
                                       "edid write write.bin --source dvi",
                                       "version now",
                                       "status --help",
                                       "set 'timing 1",
                                       "nothing",
                                       "-"};
    tried_command c{any_of(lines), "misused"};
    c.uses_port = false;
    c.fixed_status = 2;
    c.agrees = [](const answered_command& a) { return a.after == a.before; };
    return c;
}

tried_command cli_commands::without_file() {
    const std::vector<string> lines = {"edid write " + file("missing.bin"), "edid verify " + file("missing.hex"),
                                       "edid stamp " + file("missing.bin") + " --serial 1",
                                       "autorun " + file("missing.csv")};
    return with_unusable_file(any_of(lines));
}

tried_command cli_commands::comment() {
    tried_command c{any_of(std::array{"", "   ", "# set timing 1", "\t# nothing"}), "comment"};
    c.answers = 0;
    c.uses_port = false;
    return c;
}

} // namespace desk::test
