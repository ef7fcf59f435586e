#include "platform/port_file.h"

#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/terminal_text.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view spaces = " \t\r\n";
constexpr std::string_view com = "com";
constexpr std::string_view pipes = R"(\\.\pipe\)";
constexpr std::size_t most_com_digits = 4;
constexpr std::size_t longest_pipe = 256;
constexpr std::size_t longest_content = 512;

[[noreturn]] void fail(const std::string& why) { throw runtime_failure(failure::path_file_access_error, why); }

std::string_view without_spaces_around(std::string_view text) {
    const std::size_t first = text.find_first_not_of(spaces);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(spaces) + 1 - first);
}

bool is_com_port(std::string_view device) {
    if (!lower_case(device.substr(0, com.size())).starts_with(com)) return false;
    const std::string_view number = device.substr(com.size());
    return !number.empty() && number.size() <= most_com_digits && number.front() != '0' &&
           std::all_of(number.begin(), number.end(), is_digit);
}

bool is_control_character(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

bool is_pipe_name(std::string_view name) {
    return !name.empty() && name.size() <= longest_pipe - pipes.size() && name.find('\\') == std::string_view::npos &&
           std::none_of(name.begin(), name.end(), is_control_character);
}

} // namespace

std::filesystem::path port_file(const std::filesystem::path& folder, int number) {
    return folder / ("port" + std::to_string(number) + ".txt");
}

bool is_pipe(std::string_view device) { return lower_case(device.substr(0, pipes.size())) == pipes; }

std::string device_named_by(std::string_view content) {
    if (content.size() > longest_content) fail("it is longer than " + std::to_string(longest_content) + " bytes");
    if (content.starts_with(byte_order_mark)) content.remove_prefix(byte_order_mark.size());
    const std::string_view device = without_spaces_around(content);
    if (device.empty()) fail("it is empty; write the device into it, such as COM12");
    if (device.find_first_of("\r\n") != std::string_view::npos) fail("it has more than one line");
    if (is_com_port(device)) return upper_case(device);
    if (is_pipe(device) && is_pipe_name(device.substr(pipes.size())))
        return std::string(pipes) + std::string(device.substr(pipes.size()));
    fail("\"" + terminal_text(device) + "\" is neither a COM port, such as COM12, nor a pipe, " + std::string(pipes) +
         "NAME");
}

std::optional<std::string> device_of_port_file(const std::filesystem::path& file) {
    std::string content;
    try {
        content = read_start_of_file(file, longest_content + 1);
    } catch (const runtime_failure& f) {
        if (f.code() == failure::file_not_found) return std::nullopt;
        throw;
    }
    return while_doing([&] { return "the file " + utf8_from_path(file) + " names no device"; },
                       [&] { return device_named_by(content); });
}

} // namespace desk
