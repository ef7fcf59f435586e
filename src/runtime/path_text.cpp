#include "runtime/path_text.h"

#include "runtime/windows_1252.h"

namespace desk {

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

std::string_view without_extension(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos || point == 0 ? name : name.substr(0, point);
}

} // namespace desk
