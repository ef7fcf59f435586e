#include "crash/saving_desk.h"

#include "generator/sink_edids.h"
#include "support/robot_at_hand.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace desk::test {

namespace {

constexpr const char* saved_names[] = {"marlo_rs232.ini", "saved.hex", "saved.txt"};

std::string edid_of_sink(int number) { return string_of(first_sink_edid(number)); }

} // namespace

saving_desk::saving_desk(int rounds) {
    add("start");
    for (int i = 0; i < rounds; ++i)
        add_round(i % 2 == 0 ? "one.bin" : "two.bin");

    begin_again();
    robot_at_hand robot(folder());
    files_after_.push_back(saved_files());
    std::ofstream file(script_file());
    for (const std::string& line : script_) {
        file << line << '\n';
        if (const std::string answer = robot.answer(line); !answer.starts_with("ok"))
            throw std::runtime_error(line + ": " + answer);
        files_after_.push_back(saved_files());
    }
}

void saving_desk::add_round(const std::string& edid) {
    add("click cmd_edid");
    add("file " + path_in_script(edid));
    add("click cmd_load");
    add("file " + path_in_script("saved.hex") + " 1");
    add("answer yes");
    add("click cmd_save_write");
    add("click frm_diag.cmd_ok");
    add("click cmd_write_translate");
    add("click cmd_edid_report");
    add("file " + path_in_script("saved.txt"));
    add("answer yes");
    add("click frm_report.cmd_save");
    add("click frm_report.cmd_exit");
    add("stop");
    add("start");
}

void saving_desk::begin_again() const {
    for (const auto& file : std::filesystem::directory_iterator(folder()))
        std::filesystem::remove_all(file);
    // remove the answers of the previous desk, in case this one is killed early
    std::filesystem::remove(answer_file());
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"})
        std::filesystem::copy_file(std::filesystem::path(FIRST_FILES) / name, directory_ / name);
    directory_.put("one.bin", edid_of_sink(1));
    directory_.put("two.bin", edid_of_sink(3));
    directory_.put("saved.hex", "an older file");
    directory_.put("saved.txt", "an older file");
}

std::vector<std::string> saving_desk::saved_files() const {
    std::vector<std::string> contents;
    for (const char* name : saved_names)
        contents.push_back(directory_.has(name) ? directory_.content(name) : "no file");
    return contents;
}

std::string saving_desk::fault_after(std::size_t answered) const {
    const std::vector<std::string> found = saved_files();
    const std::vector<std::string>& before = files_after_.at(answered);
    const std::vector<std::string>& after = files_after_.at(std::min(answered + 1, script_.size()));
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (found[i] != before[i] && found[i] != after[i])
            return std::string(saved_names[i]) + " after " + std::to_string(answered) + " lines is\n" + found[i];
    }
    return "";
}

std::size_t saving_desk::left_behind() const {
    const std::filesystem::directory_iterator files(folder());
    return static_cast<std::size_t>(
        std::count_if(begin(files), end(files), [](const auto& file) { return file.path().extension() == ".new"; }));
}

} // namespace desk::test
