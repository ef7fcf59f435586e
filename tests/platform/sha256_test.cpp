#include "platform/sha256.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace desk {
namespace {

std::string digest_of(const std::string& text) { return sha256(std::vector<std::uint8_t>(text.begin(), text.end())); }

// the examples of FIPS 180-4, and of its test vectors for messages of whole bytes
TEST(sha256, has_the_digests_of_the_standard) {
    EXPECT_EQ(digest_of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(digest_of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(digest_of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(digest_of(std::string(1'000'000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(sha256, takes_bytes_of_every_value) {
    EXPECT_EQ(digest_of("\xBD"), "68325720aabd7c82f30f554b313d0570c95accbb7dc4b5aae11204c08ffe732b");
    // 55, 56 and 64 zero bytes end at the edges of a block
    EXPECT_EQ(digest_of(std::string(55, '\0')), "02779466cdec163811d078815c633f21901413081449002f24aa3e80f0b88ef7");
    EXPECT_EQ(digest_of(std::string(56, '\0')), "d4817aa5497628e7c77e6b606107042bbba3130888c5f47a375e6179be789fbb");
    EXPECT_EQ(digest_of(std::string(64, '\0')), "f5a5fd42d16a20302798ef6ed309979b43003d2320d9f0e8ea9831a92759fb4b");
}

} // namespace
} // namespace desk
