#include "platform/sha256.h"

#include <array>

#include <sha2.h>
#include <sys/types.h>

namespace desk {

std::string sha256(std::span<const std::uint8_t> bytes) {
    std::array<char, SHA256_DIGEST_STRING_LENGTH> digest{};
    ::SHA256Data(bytes.data(), bytes.size(), digest.data());
    return digest.data();
}

} // namespace desk
