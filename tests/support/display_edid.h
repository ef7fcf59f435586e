#pragma once

#include "edid/facts/display_facts.h"
#include "edid/format/buffer.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace desk::test {

/// An EDID put together byte by byte, with correct checksums.
class display_edid {
public:
    using bytes = std::vector<std::uint8_t>;

    /// 1920x1080 at 60 Hz, 148.5 MHz, front porches 88 and 4, sync 44 and 5, 600 mm by 340 mm, both syncs positive.
    static bytes full_hd() {
        return {0x02, 0x3A, 0x80, 0x18, 0x71, 0x38, 0x2D, 0x40, 0x58, 0x2C, 0x45, 0x00, 0x58, 0x54, 0x21, 0, 0, 0x1E};
    }
    /// A display descriptor with a text.
    static bytes text_descriptor(std::uint8_t tag, std::string text) {
        bytes descriptor = {0, 0, 0, tag, 0};
        if (text.size() < 13) text += '\n';
        text.resize(13, ' ');
        descriptor.insert(descriptor.end(), text.begin(), text.end());
        return descriptor;
    }
    static bytes limits() { return {0, 0, 0, 0xFD, 0, 48, 75, 30, 83, 17, 0, '\n', ' ', ' ', ' ', ' ', ' ', ' '}; }

    /// A display of EDID 1.3 or 1.4 about which there is nothing to find: Dell, 60 cm by 34 cm, gamma 2.20.
    explicit display_edid(std::uint8_t revision = 3) : bytes_(edid_block_size) {
        put(0, {0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0x10, 0xAC, 0x34, 0x12, 0x78, 0x56, 0x34, 0x12, 10, 30});
        put(18, {1, revision, 0x80, 60, 34, 120, 0x0A});
        if (revision >= 4) put(20, {0xA5, 60, 34, 120, 0x03});
        // primaries of a wide gamut, white D65
        put(25, {0xEE, 0x95, 0xA9, 0x54, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54});
        put(35, {0x20, 0, 0});
        for (std::size_t i = 38; i < 54; ++i)
            bytes_.at(i) = 1;
        put(54, full_hd());
        put(72, limits());
        put(90, text_descriptor(0xFC, "TEST"));
        put(108, bytes{0, 0, 0, 0x10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    }

    display_edid& put(std::size_t offset, const bytes& values) {
        std::copy(values.begin(), values.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
        return *this;
    }
    /// Adds an extension block with these first bytes.
    display_edid& extend(const bytes& block) {
        const std::size_t offset = bytes_.size();
        bytes_.resize(offset + edid_block_size);
        put(offset, block);
        ++bytes_.at(126);
        return *this;
    }
    /// Adds a CTA-861 block of revision 3 with data blocks and detailed timings.
    display_edid& extend_cta(const bytes& data_blocks, const bytes& timings = {}, std::uint8_t flags = 0) {
        bytes block = {2, 3, static_cast<std::uint8_t>(4 + data_blocks.size()), flags};
        block.insert(block.end(), data_blocks.begin(), data_blocks.end());
        block.insert(block.end(), timings.begin(), timings.end());
        return extend(block);
    }
    /// Adds a DisplayID block with these data blocks.
    display_edid& extend_display_id(std::uint8_t version, const bytes& data_blocks) {
        bytes block = {0x70, version, 121, 0, 0};
        block.insert(block.end(), data_blocks.begin(), data_blocks.end());
        block.resize(edid_block_size - 2);
        unsigned sum = 0;
        for (std::size_t i = 1; i < block.size(); ++i)
            sum += block[i];
        block.push_back(static_cast<std::uint8_t>(256 - sum % 256));
        return extend(block);
    }

    /// The bytes, each block with its checksum.
    bytes finished() const {
        bytes all = bytes_;
        for (std::size_t block = 0; block < all.size(); block += edid_block_size) {
            unsigned sum = 0;
            for (std::size_t i = block; i < block + edid_block_size - 1; ++i)
                sum += all[i];
            all[block + edid_block_size - 1] = static_cast<std::uint8_t>(256 - sum % 256);
        }
        return all;
    }
    facts::display_facts facts() const { return facts::read_display_facts(finished()); }

private:
    bytes bytes_;
};

/// The findings whose text contains `part`.
inline std::vector<facts::finding> findings_about(const facts::display_facts& facts, std::string_view part) {
    std::vector<facts::finding> found;
    std::copy_if(facts.findings.begin(), facts.findings.end(), std::back_inserter(found),
                 [&](const facts::finding& f) { return f.text.find(part) != std::string::npos; });
    return found;
}

/// All findings, a line each, for messages.
inline std::string list_of_findings(const facts::display_facts& facts) {
    std::string list;
    for (const facts::finding& f : facts.findings)
        list += std::string(name_of(f.level)) + " " + std::to_string(f.block) + ":" + std::to_string(f.offset) + " " +
                f.text + "\n";
    return list;
}

} // namespace desk::test
