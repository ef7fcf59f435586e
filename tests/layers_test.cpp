#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using names = std::set<std::string>;

struct layer {
    std::string folder;  ///< under src
    std::string content; ///< for docs/architecture.md
    names includes;      ///< the folders, and single headers of other folders, that the folder uses
};

/// Every folder under src, with exactly what it includes. A folder always includes itself.
const std::vector<layer> layers = {
    {"runtime",
     "checked numbers, conversion of numbers and text, the single-byte character set, files and safe saving, run-time "
     "failures",
     {}},
    {"drawing",
     "drawings of plain figures as SVG, and the writer of markup, which escapes every text: knows no EDID",
     {"runtime"}},
    {"controls", "control models, windows, layout tables, operator actions on a control", {"runtime"}},
    {"edid/format",
     "the bytes of an EDID, and the texts and files that hold them: buffer, checksum rule, text scanner, canonical "
     "text, readers, writers, kinds of files",
     {"runtime"}},
    {"edid/facts",
     "what an EDID says about its display: bytes in, one struct and its findings out; tables and formulas of timings",
     {"runtime", "edid/format"}},
    {"platform",
     "interfaces to the machine: serial port, clock and pump, boxes, dialogs, modal windows, date and time; the parts "
     "that differ between systems",
     {"runtime", "controls"}},
    {"translate/decode",
     "the decoders: bytes in, lines of text out; where descriptors and data blocks lie, and the table of the kinds of "
     "data blocks",
     {"runtime", "edid/format/buffer.h"}},
    {"report/text",
     "the report of a whole EDID as a function: bytes in, one text out",
     {"runtime", "edid/format", "translate/decode"}},
    {"report/page",
     "the page of a display and the index of a collection: the facts of an EDID in, HTML out",
     {"runtime", "drawing", "edid/format", "edid/facts"}},
    {"link", "the exchange with the generator: receiver, delay, commands", {"runtime", "controls", "platform"}},
    {"edid",
     "the READ and WRITE sides: buffers, window text, OPEN and SAVE, transfers, compare and recover, rescue",
     {"runtime", "controls", "platform", "link", "edid/format"}},
    {"translate",
     "the translation panel: the tree and the dispatch of its nodes",
     {"runtime", "controls", "edid", "translate/decode"}},
    {"signal",
     "catalogue, SET, panel, colour settings, Refresh, Download, Upload, autorun, favorites",
     {"runtime", "controls", "link"}},
    {"report",
     "the window of the report",
     {"runtime", "controls", "platform", "edid", "translate", "translate/decode", "report/text"}},
    {"programmer",
     "frm_diag with its three pages: the sum, the style of a HEX file, the automatic run",
     {"runtime", "controls", "platform", "link", "edid"}},
    {"generator",
     "the simulated generator: a model, and the program that serves it on a pseudo terminal or pipe and takes lines "
     "on a socket or pipe",
     {"runtime", "platform/command_line.h", "platform/port_file.h", "platform/program_directory.h",
      "platform/windows_standard_input.h"}},
    {"shell",
     "the main window: layout, views, settings file, start-up, shut-down, About",
     {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal", "report",
      "programmer"}},
    {"batch",
     "`edid_report`: the report of many files, or their facts as JSON or pages, without a window",
     {"runtime", "edid/format", "edid/facts", "translate/decode", "report/text", "report/page",
      "platform/command_line.h", "platform/file_names.h", "platform/local_date_time.h", "platform/sha256.h"}},
    {"qt",
     "the adapter that draws the models as widgets: `velotrace`",
     {"runtime", "controls", "platform", "link", "edid", "signal", "shell"}},
    {"cli",
     "the adapter that does what the command line says: `velotrace_cli`",
     {"runtime", "controls", "platform", "link", "edid/format", "signal", "shell"}},
    {"robot",
     "the adapter that runs the desk from a script: `desk_robot`",
     {"runtime", "controls", "platform", "edid", "shell", "generator"}},
};

/// The folders and files that include headers from outside the project.
const names with_qt = {"qt"};
const names with_json = {"robot", "cli"};
const names with_options_library = {"cli/command_line.cpp"};
const names with_system_headers = {"platform", "generator", "runtime/posix_disk.cpp", "runtime/windows_api.h"};

const layer* layer_of(const std::string& folder) {
    const auto found = std::find_if(layers.begin(), layers.end(), [&](const layer& l) { return l.folder == folder; });
    return found == layers.end() ? nullptr : &*found;
}

/// The folder of a path under src; a folder in a folder counts if it has a layer of its own.
std::string folder_of(const std::string& path) {
    const std::size_t first = path.find('/');
    if (first == std::string::npos) return "";
    const std::size_t second = path.find('/', first + 1);
    const std::string inner = path.substr(0, second == std::string::npos ? first : second);
    return layer_of(inner) != nullptr ? inner : path.substr(0, first);
}

struct include {
    bool ours; ///< in quotes
    std::string name;
};

/// The include directive of a line; nothing for other lines.
std::optional<include> include_of(const std::string& line) {
    static const std::regex directive("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]");
    std::smatch part;
    if (line.find("include") == std::string::npos || !std::regex_search(line, part, directive)) return std::nullopt;
    return include{part[1] == "\"", part[2]};
}

/// The entry of a folder's layer that allows it to include one of our headers; nullptr: none does.
const std::string* allowance_for(const std::string& folder, const std::string& included) {
    const layer* const own = layer_of(folder);
    if (own == nullptr) return nullptr;
    const auto found = std::find_if(own->includes.begin(), own->includes.end(), [&](const std::string& allowed) {
        return allowed == folder_of(included) || allowed == included;
    });
    return found == own->includes.end() ? nullptr : &*found;
}

bool is_system_header(const std::string& name) {
    // a header of the standard library has neither a point nor a slash
    return name.find_first_of("./") != std::string::npos && !name.starts_with("Q") && !name.starts_with("nlohmann");
}

/// What is wrong with an include directive in a file; nothing if it is allowed there.
std::optional<std::string> fault_of(const std::string& file, const std::string& line) {
    const auto found = include_of(line);
    if (!found) return std::nullopt;
    const bool ours = found->ours;
    const std::string& included = found->name;
    const std::string folder = folder_of(file);
    const auto fault_unless = [&](bool allowed, const std::string& why) {
        return allowed ? std::nullopt : std::optional(file + " includes " + included + ": " + why);
    };
    if (ours) {
        const bool made_by_qt = with_qt.contains(folder) && included.ends_with(".moc");
        const bool own = folder_of(included) == folder && layer_of(folder) != nullptr;
        return fault_unless(made_by_qt || own || allowance_for(folder, included) != nullptr, "up, sideways or unknown");
    }
    if (included.starts_with("Q")) return fault_unless(with_qt.contains(folder), "Qt");
    if (included.starts_with("nlohmann")) return fault_unless(with_json.contains(folder), "JSON");
    if (included.starts_with("CLI/")) return fault_unless(with_options_library.contains(file), "the options library");
    if (!is_system_header(included)) return std::nullopt;
    return fault_unless(with_system_headers.contains(folder) || with_system_headers.contains(file), "a system header");
}

std::vector<std::string> source_files() {
    const std::filesystem::path root = SOURCE_DIRECTORY;
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string ending = entry.path().extension().string();
        if (ending == ".h" || ending == ".cpp")
            files.push_back(std::filesystem::relative(entry.path(), root).generic_string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> lines_of(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::vector<include> includes_of(const std::string& source_file) {
    std::vector<include> all;
    for (const std::string& line : lines_of(std::filesystem::path(SOURCE_DIRECTORY) / source_file))
        if (auto found = include_of(line)) all.push_back(std::move(*found));
    return all;
}

/// A folder's number: one more than the highest that it includes. A cycle has numbers beyond the count of the layers.
std::map<std::string, std::size_t> layer_numbers() {
    std::map<std::string, std::size_t> numbers;
    for (std::size_t round = 0; round <= layers.size(); ++round)
        for (const layer& l : layers) {
            std::size_t& number = numbers[l.folder];
            number = std::max<std::size_t>(number, 1);
            for (const std::string& below : l.includes)
                number = std::max(number, numbers[layer_of(below) != nullptr ? below : folder_of(below)] + 1);
        }
    return numbers;
}

TEST(layers, allow_every_include) {
    int includes = 0;
    for (const std::string& name : source_files()) {
        for (const std::string& line : lines_of(std::filesystem::path(SOURCE_DIRECTORY) / name)) {
            if (line.find("#include") != std::string::npos) ++includes;
            const auto fault = fault_of(name, line);
            EXPECT_FALSE(fault.has_value()) << *fault;
        }
    }
    EXPECT_GT(includes, 100) << "the files are read";
}

TEST(layers, allow_nothing_that_no_file_uses) {
    names used;
    for (const std::string& file : source_files()) {
        const std::string folder = folder_of(file);
        for (const include& i : includes_of(file)) {
            if (const std::string* allowed = i.ours ? allowance_for(folder, i.name) : nullptr)
                used.insert(folder + " -> " + *allowed);
            if (i.name.starts_with("Q")) used.insert(folder + " -> Qt");
            if (i.name.starts_with("nlohmann")) used.insert(folder + " -> JSON");
            if (!i.ours && is_system_header(i.name))
                used.insert((with_system_headers.contains(folder) ? folder : file) + " -> system");
        }
    }
    for (const layer& l : layers)
        for (const std::string& allowed : l.includes)
            EXPECT_TRUE(used.contains(l.folder + " -> " + allowed)) << l.folder << " does not use " << allowed;
    for (const std::string& folder : with_qt)
        EXPECT_TRUE(used.contains(folder + " -> Qt")) << folder;
    for (const std::string& folder : with_json)
        EXPECT_TRUE(used.contains(folder + " -> JSON")) << folder;
    for (const std::string& place : with_system_headers)
        EXPECT_TRUE(used.contains(place + " -> system")) << place;
}

TEST(layers, are_known_for_every_folder) {
    for (const std::string& name : source_files())
        EXPECT_NE(layer_of(folder_of(name)), nullptr) << name;
}

TEST(layers, have_no_cycle) {
    for (const auto& [folder, number] : layer_numbers()) {
        EXPECT_NE(layer_of(folder), nullptr) << folder << " is not a folder under src";
        EXPECT_LE(number, layers.size()) << folder;
    }
}

/// The source files that a program of these files is built from: with each header the file of its definitions.
names closure_of(names files) {
    const std::vector<std::string> all = source_files();
    std::vector<std::string> open(files.begin(), files.end());
    const auto add = [&](const std::string& file) {
        if (std::binary_search(all.begin(), all.end(), file) && files.insert(file).second) open.push_back(file);
    };
    while (!open.empty()) {
        const std::string file = open.back();
        open.pop_back();
        for (const include& i : includes_of(file)) {
            if (!i.ours) continue;
            add(i.name);
            const std::filesystem::path header(i.name);
            for (const char* system : {"", "posix_", "windows_"})
                add((header.parent_path() / (system + header.stem().string() + ".cpp")).generic_string());
        }
    }
    return files;
}

TEST(edid_report, is_built_without_controls_exchange_and_serial_port) {
    names folders;
    names platform_parts;
    for (const std::string& file : closure_of({"batch/main.cpp"})) {
        folders.insert(folder_of(file));
        if (file.starts_with("platform/") && file.ends_with(".h")) platform_parts.insert(file);
    }
    EXPECT_EQ(folders, (names{"batch", "drawing", "edid/facts", "edid/format", "platform", "report/page", "report/text",
                              "runtime", "translate/decode"}));
    EXPECT_EQ(platform_parts, (names{"platform/command_line.h", "platform/file_names.h", "platform/local_date_time.h",
                                     "platform/numeric_date.h", "platform/sha256.h"}));
}

std::vector<std::string> table_of_layers() {
    const auto numbers = layer_numbers();
    std::vector<std::string> lines = {"| Layer | Folder | Content | Includes |", "| --- | --- | --- | --- |"};
    for (std::size_t number = 1; number <= layers.size(); ++number)
        for (const layer& l : layers) {
            if (numbers.at(l.folder) != number) continue;
            std::string includes;
            for (const std::string& below : l.includes)
                includes += (includes.empty() ? "`" : ", `") + below + (layer_of(below) != nullptr ? "/`" : "`");
            lines.push_back("| " + std::to_string(number) + " | `" + l.folder + "/` | " + l.content + " | " + includes +
                            " |");
        }
    return lines;
}

// LAYERS_UPDATE=1 build/tests/test_layers writes the table anew.
TEST(layers, are_listed_in_the_architecture_document) {
    const auto path = std::filesystem::path(SOURCE_DIRECTORY).parent_path() / "docs" / "architecture.md";
    std::vector<std::string> document = lines_of(path);
    const auto begin = std::find(document.begin(), document.end(), "<!-- layers: tests/layers_test.cpp -->");
    const auto end = std::find(begin, document.end(), "<!-- end of layers -->");
    ASSERT_NE(end, document.end()) << "the document has no markers";
    const std::vector<std::string> table = table_of_layers();
    if (std::getenv("LAYERS_UPDATE") != nullptr) {
        document.insert(document.erase(begin + 1, end), table.begin(), table.end());
        std::ofstream file(path, std::ios::binary);
        for (const std::string& line : document)
            file << line << "\n";
        return;
    }
    EXPECT_EQ(std::vector<std::string>(begin + 1, end), table) << "LAYERS_UPDATE=1 build/tests/test_layers rewrites it";
}

TEST(check_of_layers, finds_an_include_that_points_up) {
    EXPECT_TRUE(fault_of("runtime/text.h", "#include \"controls/color.h\""));
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include \"link/exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "  #  include \"shell/frm_main.h\" // why"));
    EXPECT_TRUE(fault_of("signal/catalogue.cpp", "#include \"report/report.h\""));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include \"robot/robot.h\""));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include \"generator/answer.h\""));
}

TEST(check_of_layers, finds_an_include_that_points_sideways) {
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include \"platform/machine.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"edid/buffers.h\""));
    EXPECT_TRUE(fault_of("signal/catalogue.cpp", "#include \"translate/tree.h\""));
    EXPECT_TRUE(fault_of("report/report.cpp", "#include \"programmer/options.h\""));
    EXPECT_TRUE(fault_of("qt/adapter.cpp", "#include \"robot/robot.h\""));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include \"qt/adapter.h\""));
    EXPECT_TRUE(fault_of("generator/main.cpp", "#include \"link/commands.h\""));
    EXPECT_TRUE(fault_of("translate/decode/audio.cpp", "#include \"edid/transfer.h\""));
    EXPECT_TRUE(fault_of("translate/decode/audio.cpp", "#include \"controls/tree_view.h\""));
    EXPECT_TRUE(fault_of("translate/decode/audio.cpp", "#include \"edid/format/file_readers.h\""));
    EXPECT_TRUE(fault_of("edid/format/file_readers.cpp", "#include \"edid/buffers.h\""));
    EXPECT_TRUE(fault_of("report/text/report_text.cpp", "#include \"report/frm_report.h\""));
    EXPECT_TRUE(fault_of("batch/main.cpp", "#include \"platform/serial_port.h\""));
}

TEST(check_of_layers, finds_an_include_without_its_folder) {
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"nowhere/exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"../runtime/text.h\""));
}

TEST(check_of_layers, finds_headers_from_outside) {
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include <QString>"));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include <QtWidgets/QLabel>"));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include <nlohmann/json.hpp>"));
    EXPECT_TRUE(fault_of("qt/adapter.cpp", "#include <nlohmann/json.hpp>"));
    EXPECT_TRUE(fault_of("runtime/files.cpp", "#include <unistd.h>"));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include <windows.h>"));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include <sys/ioctl.h>"));
    EXPECT_TRUE(fault_of("edid/files.cpp", "#include <string.h>"));
}

TEST(check_of_layers, accepts_what_is_allowed) {
    EXPECT_FALSE(fault_of("runtime/posix_disk.cpp", "#include <unistd.h>"));
    EXPECT_FALSE(fault_of("shell/frm_main.cpp", "#include \"link/exchange.h\""));
    EXPECT_FALSE(fault_of("shell/frm_main.cpp", "#include \"shell/views.h\""));
    EXPECT_FALSE(fault_of("translate/tree.cpp", "#include \"translate/decode/vendor.h\""));
    EXPECT_FALSE(fault_of("translate/decode/vendor.cpp", "#include \"edid/format/buffer.h\""));
    EXPECT_FALSE(fault_of("qt/adapter.cpp", "#include <QString>"));
    EXPECT_FALSE(fault_of("qt/adapter.cpp", "#include \"adapter.moc\""));
    EXPECT_FALSE(fault_of("robot/answers.h", "#include <nlohmann/json.hpp>"));
    EXPECT_FALSE(fault_of("platform/posix_serial_port.cpp", "#include <termios.h>"));
    EXPECT_FALSE(fault_of("runtime/text.cpp", "#include <algorithm>"));
    EXPECT_FALSE(fault_of("runtime/text.cpp", "// an #include \"shell/frm_main.h\" in words"));
}

} // namespace
} // namespace desk
