#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace desk {
namespace {

using names = std::set<std::string>;

/// The floors of the house: which folder under src may include which others. A folder may always include itself.
const std::map<std::string, names> floors = {
    {"runtime", {}},
    {"controls", {"runtime"}},
    {"platform", {"runtime", "controls"}},
    {"link", {"runtime", "controls", "platform"}},
    {"edid", {"runtime", "controls", "platform", "link"}},
    {"translate", {"runtime", "controls", "platform", "link", "edid", "translate/decode"}},
    {"translate/decode", {"runtime", "edid/buffer"}},
    {"signal", {"runtime", "controls", "platform", "link", "edid"}},
    {"report", {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal"}},
    {"programmer", {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal"}},
    {"shell",
     {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal", "report",
      "programmer"}},
    {"qt",
     {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal", "report",
      "programmer", "shell"}},
    {"robot",
     {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal", "report",
      "programmer", "shell", "generator"}},
    {"batch",
     {"runtime", "controls", "platform", "link", "edid", "translate", "translate/decode", "signal", "report",
      "programmer", "shell"}},
    {"generator", {"runtime", "platform/command_line", "platform/program_directory"}},
};

/// Where the headers of the outside world may stand.
const names with_qt = {"qt"};
const names with_json = {"robot"};
const names with_the_system = {
    "platform", "generator", "qt", "runtime/posix_disk.cpp", "runtime/windows_disk.cpp", "runtime/windows_api.h"};

/// The folder of a path under src; a folder inside a folder counts where it has a floor of its own.
std::string folder_of(const std::string& path) {
    const std::size_t first = path.find('/');
    if (first == std::string::npos) return "";
    const std::size_t second = path.find('/', first + 1);
    const std::string inner = path.substr(0, second == std::string::npos ? first : second);
    return floors.contains(inner) ? inner : path.substr(0, first);
}

/// Whether a file of `folder` may include one of ours.
bool may_include(const std::string& folder, const std::string& included) {
    const std::string other = folder_of(included);
    if (other == folder) return true;
    const auto floor = floors.find(folder);
    if (floor == floors.end()) return false;
    // an entry with a slash that is no folder names the one header that may be included
    return std::any_of(floor->second.begin(), floor->second.end(), [&](const std::string& allowed) {
        return allowed == other || (!floors.contains(allowed) && included.starts_with(allowed));
    });
}

/// What is wrong with an include directive in a file; nothing where it may stand there.
std::optional<std::string> fault_of(const std::string& file, const std::string& line) {
    static const std::regex directive("^\\s*#\\s*include\\s*([<\"])([^>\"]+)[>\"]");
    std::smatch part;
    if (!std::regex_search(line, part, directive)) return std::nullopt;
    const bool ours = part[1] == "\"";
    const std::string included = part[2];
    const std::string folder = folder_of(file);
    const auto wrong = [&](const std::string& why) { return file + " includes " + included + ": " + why; };
    if (ours) {
        const bool made_by_qt = with_qt.contains(folder) && included.ends_with(".moc");
        if (made_by_qt || may_include(folder, included)) return std::nullopt;
        return wrong("up, sideways or unknown");
    }
    if (included.starts_with("Q")) return with_qt.contains(folder) ? std::nullopt : std::optional(wrong("Qt"));
    if (included.starts_with("nlohmann"))
        return with_json.contains(folder) ? std::nullopt : std::optional(wrong("JSON"));
    // a header of the language's library has no ending
    const bool standard = included.find_first_of("./") == std::string::npos;
    if (standard || with_the_system.contains(folder) || with_the_system.contains(file)) return std::nullopt;
    return wrong("a header of the system");
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

TEST(floors, are_kept_by_every_include) {
    int includes = 0;
    for (const std::string& name : source_files()) {
        std::ifstream file(std::filesystem::path(SOURCE_DIRECTORY) / name);
        for (std::string line; std::getline(file, line);) {
            if (line.find("#include") != std::string::npos) ++includes;
            const auto fault = fault_of(name, line);
            EXPECT_FALSE(fault.has_value()) << *fault;
        }
    }
    EXPECT_GT(includes, 100) << "the files are read";
}

TEST(floors, are_known_for_every_folder) {
    for (const std::string& name : source_files())
        EXPECT_TRUE(floors.contains(folder_of(name))) << name;
}

TEST(floors, lead_downwards_alone) {
    for (const auto& [folder, below] : floors) {
        for (const std::string& other : below) {
            const auto floor = floors.find(other);
            const bool back = floor != floors.end() && floor->second.contains(folder);
            EXPECT_FALSE(back) << folder << " and " << other;
        }
    }
}

TEST(the_check_of_floors, finds_an_include_that_points_up) {
    EXPECT_TRUE(fault_of("runtime/text.h", "#include \"controls/color.h\""));
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include \"link/exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "  #  include \"shell/frm_main.h\" // why"));
    EXPECT_TRUE(fault_of("signal/catalogue.cpp", "#include \"report/report.h\""));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include \"robot/robot.h\""));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include \"generator/answer.h\""));
}

TEST(the_check_of_floors, finds_an_include_that_points_sideways) {
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include \"platform/machine.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"edid/buffers.h\""));
    EXPECT_TRUE(fault_of("signal/catalogue.cpp", "#include \"translate/tree.h\""));
    EXPECT_TRUE(fault_of("report/report.cpp", "#include \"programmer/options.h\""));
    EXPECT_TRUE(fault_of("qt/face.cpp", "#include \"robot/robot.h\""));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include \"qt/face.h\""));
    EXPECT_TRUE(fault_of("generator/main.cpp", "#include \"link/commands.h\""));
    EXPECT_TRUE(fault_of("translate/decode/audio.cpp", "#include \"edid/transfer.h\""));
    EXPECT_TRUE(fault_of("translate/decode/audio.cpp", "#include \"controls/tree_view.h\""));
}

TEST(the_check_of_floors, finds_an_include_without_its_folder) {
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"nowhere/exchange.h\""));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include \"../runtime/text.h\""));
}

TEST(the_check_of_floors, finds_headers_of_the_outside_world) {
    EXPECT_TRUE(fault_of("controls/window.cpp", "#include <QString>"));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include <QtWidgets/QLabel>"));
    EXPECT_TRUE(fault_of("shell/frm_main.cpp", "#include <nlohmann/json.hpp>"));
    EXPECT_TRUE(fault_of("qt/face.cpp", "#include <nlohmann/json.hpp>"));
    EXPECT_TRUE(fault_of("runtime/files.cpp", "#include <unistd.h>"));
    EXPECT_TRUE(fault_of("link/exchange.cpp", "#include <windows.h>"));
    EXPECT_TRUE(fault_of("robot/robot.cpp", "#include <sys/ioctl.h>"));
    EXPECT_TRUE(fault_of("edid/files.cpp", "#include <string.h>"));
}

TEST(the_check_of_floors, leaves_what_may_stand) {
    EXPECT_FALSE(fault_of("runtime/posix_disk.cpp", "#include <unistd.h>"));
    EXPECT_FALSE(fault_of("shell/frm_main.cpp", "#include \"link/exchange.h\""));
    EXPECT_FALSE(fault_of("shell/frm_main.cpp", "#include \"shell/views.h\""));
    EXPECT_FALSE(fault_of("translate/tree.cpp", "#include \"translate/decode/vendor.h\""));
    EXPECT_FALSE(fault_of("translate/decode/vendor.cpp", "#include \"edid/buffers.h\""));
    EXPECT_FALSE(fault_of("qt/face.cpp", "#include <QString>"));
    EXPECT_FALSE(fault_of("qt/face.cpp", "#include \"face.moc\""));
    EXPECT_FALSE(fault_of("robot/answers.h", "#include <nlohmann/json.hpp>"));
    EXPECT_FALSE(fault_of("platform/posix_serial_port.cpp", "#include <termios.h>"));
    EXPECT_FALSE(fault_of("runtime/text.cpp", "#include <algorithm>"));
    EXPECT_FALSE(fault_of("runtime/text.cpp", "// an #include \"shell/frm_main.h\" in words"));
}

} // namespace
} // namespace desk
