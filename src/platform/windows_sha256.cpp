#include "platform/sha256.h"
#include "runtime/failure.h"
#include "runtime/text.h"
#include "runtime/windows_api.h"

#include <array>

#include <bcrypt.h>

namespace desk {

std::string sha256(std::span<const std::uint8_t> bytes) {
    std::array<std::uint8_t, 32> digest{};
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    NTSTATUS status = BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0);
    BCRYPT_HASH_HANDLE hash = nullptr;
    if (status >= 0) status = BCryptCreateHash(algorithm, &hash, nullptr, 0, nullptr, 0, 0);
    // the function reads the input only
    if (status >= 0)
        status = BCryptHashData(hash, const_cast<PUCHAR>(bytes.data()), static_cast<ULONG>(bytes.size()), 0);
    if (status >= 0) status = BCryptFinishHash(hash, digest.data(), static_cast<ULONG>(digest.size()), 0);
    if (hash != nullptr) BCryptDestroyHash(hash);
    if (algorithm != nullptr) BCryptCloseAlgorithmProvider(algorithm, 0);
    if (status < 0) throw runtime_failure(failure::invalid_procedure_call, "Windows can't compute a SHA-256 digest");
    std::string text;
    for (const std::uint8_t byte : digest)
        text += lower_case(hex2(byte));
    return text;
}

} // namespace desk
