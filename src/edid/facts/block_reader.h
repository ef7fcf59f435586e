#pragma once

#include "edid/facts/display_facts.h"
#include "edid/format/buffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace desk::facts {

/// One block while it is read: its bytes, and where its facts and findings go.
class block_reader {
public:
    block_reader(display_facts& facts_read_so_far, std::span<const std::uint8_t, edid_block_size> bytes,
                 std::size_t number)
        : facts(facts_read_so_far), bytes_(bytes), number_(static_cast<std::uint16_t>(number)) {}

    display_facts& facts;

    std::uint16_t number() const { return number_; }
    /// A byte of the block; 0 beyond its end.
    std::uint8_t operator[](std::size_t offset) const { return offset < bytes_.size() ? bytes_[offset] : 0; }
    bool bit(std::size_t offset, unsigned number) const { return ((*this)[offset] >> number & 1) != 0; }
    /// Two and three bytes, the lowest first.
    std::uint32_t word(std::size_t offset) const { return (*this)[offset] | (*this)[offset + 1] * 256U; }
    std::uint32_t three_bytes(std::size_t offset) const { return word(offset) | (*this)[offset + 2] * 65536U; }

    place at(std::size_t offset, std::size_t length) const {
        return {number_, static_cast<std::uint8_t>(offset), static_cast<std::uint8_t>(length)};
    }
    void name(std::size_t offset, std::size_t length, part what, std::string_view name_of_bytes) const {
        facts.bytes.push_back({at(offset, length), what, name_of_bytes});
    }
    void find(severity level, std::size_t offset, std::string text, std::string_view clause) const {
        facts.findings.push_back({level, number_, static_cast<std::uint8_t>(offset), std::move(text), clause});
    }
    void keep_unknown(std::size_t offset, std::size_t length, std::string_view what) const;

private:
    std::span<const std::uint8_t, edid_block_size> bytes_;
    std::uint16_t number_;
};

/// A payload in a block: a data block of CTA-861 or DisplayID without its header.
class payload {
public:
    payload(const block_reader& in_block, std::size_t offset, std::size_t size)
        : block(in_block), offset_(offset), size_(size) {}

    const block_reader& block;

    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    /// A byte; 0 beyond the payload.
    std::uint8_t operator[](std::size_t i) const { return i < size_ ? block[offset_ + i] : 0; }
    bool bit(std::size_t i, unsigned number) const { return ((*this)[i] >> number & 1) != 0; }
    std::uint32_t word(std::size_t i) const { return (*this)[i] | (*this)[i + 1] * 256U; }
    std::uint32_t three_bytes(std::size_t i) const { return word(i) | (*this)[i + 2] * 65536U; }
    /// The offset of a byte in the block.
    std::size_t offset(std::size_t i = 0) const { return offset_ + i; }
    place where() const { return block.at(offset_, size_); }
    place at(std::size_t i, std::size_t length) const { return block.at(offset_ + i, length); }
    /// The payload from a byte on.
    payload from(std::size_t i) const { return {block, offset_ + std::min(i, size_), size_ - std::min(i, size_)}; }
    payload first(std::size_t count) const { return {block, offset_, std::min(count, size_)}; }

private:
    std::size_t offset_;
    std::size_t size_;
};

/// The readers of the kinds of blocks.
void read_base_block(const block_reader& block);
void read_cta_block(const block_reader& block);
void read_display_id_block(const block_reader& block);
void read_video_timing_block(const block_reader& block);

} // namespace desk::facts
