#include "edid/format/file_kind.h"

#include "runtime/path_text.h"
#include "runtime/text.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace desk {

namespace {

constexpr std::array<std::pair<std::string_view, file_kind>, 3> kinds = {{
    {"HEX", file_kind::hex},
    {"BIN", file_kind::bin},
    {"DDC", file_kind::ddc},
}};

constexpr std::size_t length_of_extension = 4;

} // namespace

file_kind kind_by_last_characters(std::string_view name) {
    const std::string upper = upper_case(name);
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const auto& k) { return upper.ends_with(k.first); });
    return found == kinds.end() ? file_kind::unknown : found->second;
}

file_kind kind_by_extension(std::string_view name) {
    const std::string_view extension = name.substr(without_extension(name).size());
    if (extension.empty()) return file_kind::bin;
    return extension.size() == length_of_extension ? kind_by_last_characters(extension) : file_kind::unknown;
}

} // namespace desk
