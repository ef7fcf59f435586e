#include "link/module_text.h"

#include "runtime/failure.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

namespace desk {

std::string zero_pad3(int value) {
    const std::string text = number_text(value);
    if (text.size() > 3)
        throw runtime_failure(failure::invalid_procedure_call, text + " has more than three characters");
    return std::string(3 - text.size(), '0') + text;
}

std::string pad_left(std::string& text, std::string_view pad, int width) {
    if (pad.empty() || width < 0)
        throw runtime_failure(failure::invalid_procedure_call, "there is nothing to pad \"" + text + "\" with");
    text = trim(text);
    const auto wanted = static_cast<std::size_t>(width);
    if (text.size() <= wanted)
        text.insert(0, wanted - text.size(), pad.front());
    else
        text = text.substr(text.size() - wanted);
    return text;
}

std::string path_part(const std::string& path, int part) {
    const std::size_t at = path.find_last_of("\\/");
    if (at == std::string::npos) return part == 0 ? "" : path;
    switch (part) {
    case 0:
        return path.substr(0, at);
    case 1: {
        const bool third = character_count(std::string_view(path).substr(0, at)) == 2;
        return third ? path : std::string(first_characters(path, 3)) + "..." + path.substr(at);
    }
    default:
        return path.substr(at + 1);
    }
}

std::string trim_tabs(std::string& text) {
    constexpr const char* taken = " \t";
    text.erase(text.find_last_not_of(taken) + 1);
    text.erase(0, text.find_first_not_of(taken));
    return text;
}

} // namespace desk
