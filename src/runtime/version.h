#pragma once

#include <string>
#include <string_view>

namespace desk {

/// Number, commit and commit date, such as "1.3 (commit 2e132642b9a7 of 2026-11-22)". Without git, "1.3 (unknown
/// commit)", with the date of the sources if known.
std::string_view build_version();

/// The answer of `program` to --version, with a line end.
inline std::string version_line(std::string_view program) {
    return std::string(program) + ' ' + std::string(build_version()) + '\n';
}

} // namespace desk
