#include "edid/format/checksum_rule.h"

#include "edid/format/buffer.h"
#include "runtime/numbers.h"

namespace desk {

namespace {

constexpr std::size_t last_of_block_0 = edid_block_size - 1;
constexpr std::size_t last_of_block_1 = edid_size - 1;

} // namespace

std::int32_t needed_checksum(std::int32_t sum) { return 256 - sum % 256; }

std::optional<block_checksum> checksum_rule::compare(std::uint8_t byte) const {
    if (count_ != last_of_block_0 && count_ != last_of_block_1) return std::nullopt;
    return block_checksum{count_ / edid_block_size, running_, byte == running_};
}

void checksum_rule::take(std::uint8_t byte) {
    running_ = to_long(static_cast<double>(running_) + byte);
    ++count_;
    if (count_ == edid_block_size) running_ = 0;
    if (count_ == last_of_block_0 || count_ == last_of_block_1) running_ = needed_checksum(running_);
}

} // namespace desk
