#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace desk {

/// The SHA-256 digest (FIPS 180-4) as 64 lower-case hexadecimal digits.
std::string sha256(std::span<const std::uint8_t> bytes);

} // namespace desk
