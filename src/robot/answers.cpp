#include "robot/answers.h"

#include "runtime/failure.h"
#include "runtime/windows_1252.h"

#include <cmath>

namespace desk::robot {

namespace {

void append(std::string& text, const json& value) {
    if (value.is_object()) {
        text += '{';
        const char* separator = "";
        for (const auto& [key, member] : value.items()) {
            text += separator + json(key).dump() + ": ";
            append(text, member);
            separator = ", ";
        }
        text += '}';
    } else if (value.is_array()) {
        text += '[';
        const char* separator = "";
        for (const json& element : value) {
            text += separator;
            append(text, element);
            separator = ", ";
        }
        text += ']';
    } else if (value.is_string()) {
        // a path need not be valid UTF-8
        text += json(as_utf8(value.get_ref<const std::string&>())).dump();
    } else if (value.is_number_float() && std::floor(value.get<double>()) == value.get<double>() &&
               std::abs(value.get<double>()) < 1e15) {
        text += std::to_string(static_cast<long long>(value.get<double>()));
    } else {
        text += value.dump();
    }
}

} // namespace

std::string json_text(const json& value) {
    std::string text;
    append(text, value);
    return text;
}

std::string ok(const json& value) { return "ok " + json_text(value); }

std::string refused(std::string_view reason) { return "refused " + json_text(std::string(reason)); }

std::string fatal(const runtime_failure& failure) {
    return "fatal " + std::to_string(failure.number()) + " " + json_text(std::string(failure.text()));
}

} // namespace desk::robot
