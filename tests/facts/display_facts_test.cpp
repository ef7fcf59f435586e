#include "edid/facts/pnp_ids.h"
#include "support/display_edid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace desk::facts {
namespace {

using test::display_edid;
using test::findings_about;
using test::list_of_findings;
using bytes = display_edid::bytes;

TEST(display_facts, have_texts) {
    const display_facts f = display_edid()
                                .put(108, display_edid::text_descriptor(0xFE, "<b>&\"'"))
                                .put(90, display_edid::text_descriptor(0xFC, "THIRTEEN CHAR"))
                                .facts();
    EXPECT_EQ(f.name, "THIRTEEN CHAR");
    EXPECT_EQ(f.strings, std::vector<std::string>{"<b>&\"'"});
    EXPECT_EQ(f.serial_text, "");
    // a byte of Windows-1252 becomes its character
    EXPECT_EQ(display_edid().put(95, {0xE4, '\n', ' ', ' ', ' '}).facts().name, "\xC3\xA4");
}

TEST(display_facts, have_range_limits) {
    const display_facts f = display_edid().facts();
    ASSERT_TRUE(f.limits);
    EXPECT_EQ(f.limits->min_v_hz, 48U);
    EXPECT_EQ(f.limits->max_v_hz, 75U);
    EXPECT_EQ(f.limits->min_h_khz, 30U);
    EXPECT_EQ(f.limits->max_h_khz, 83U);
    EXPECT_EQ(f.limits->max_clock_mhz, 170U);
    EXPECT_EQ(f.limits->formula, "default GTF");
}

TEST(display_facts, have_range_limits_with_offsets) {
    // 2: the maximum has 255 more; 3: both have
    const range_limits v = display_edid(4).put(76, {0x02}).facts().limits.value();
    EXPECT_EQ(v.min_v_hz, 48U);
    EXPECT_EQ(v.max_v_hz, 75U + 255);
    EXPECT_EQ(v.max_h_khz, 83U);
    const range_limits h = display_edid(4).put(76, {0x0C}).facts().limits.value();
    EXPECT_EQ(h.min_h_khz, 30U + 255);
    EXPECT_EQ(h.max_h_khz, 83U + 255);
    EXPECT_EQ(h.max_v_hz, 75U);
}

TEST(display_facts, have_a_more_exact_clock_for_cvt) {
    // 11 steps of 0.25 MHz below 170 MHz
    const range_limits r = display_edid(4).put(82, {4, 0x11, 11 << 2, 0, 0xF8, 0x18, 0x00, 60}).facts().limits.value();
    EXPECT_EQ(r.formula, "CVT");
    EXPECT_EQ(r.max_clock_mhz, 170U);
    EXPECT_EQ(r.exact_max_clock_mhz, 167.25);
}

TEST(checksums, are_checked_for_each_block) {
    bytes edid = display_edid().extend_cta({}).extend_cta({}).finished();
    edid.at(255) ^= 1;
    const display_facts f = read_display_facts(edid);
    EXPECT_EQ(f.checksums, (std::vector<bool>{true, false, true}));
    ASSERT_EQ(findings_about(f, "checksum").size(), 1U);
    EXPECT_EQ(findings_about(f, "checksum")[0].block, 1);
    EXPECT_EQ(findings_about(f, "checksum")[0].offset, 127);
}

TEST(extent, can_be_anything) {
    EXPECT_FALSE(read_display_facts({}).has_base_block);
    const bytes short_one(20);
    const display_facts f = read_display_facts(short_one);
    EXPECT_FALSE(f.has_base_block);
    EXPECT_EQ(f.size, 20U);
    EXPECT_TRUE(f.checksums.empty());
    EXPECT_EQ(findings_about(f, "no whole number of blocks").size(), 1U);
    const bytes long_one(std::size_t{257} * 128);
    EXPECT_EQ(read_display_facts(long_one).checksums.size(), 256U);
    EXPECT_EQ(findings_about(read_display_facts(long_one), "more than 256").size(), 1U);
}

TEST(extent, is_compared_with_the_number_of_extension_blocks) {
    EXPECT_EQ(list_of_findings(display_edid().extend_cta({}).facts()), "");
    const auto more = findings_about(display_edid().extend_cta({}).put(126, {0}).facts(), "counts 0 extension blocks");
    ASSERT_EQ(more.size(), 1U);
    EXPECT_EQ(more[0].level, severity::warning);
}

TEST(extent, can_be_overridden_by_the_hdmi_forum) {
    display_edid edid(4);
    edid.extend_cta({0xE2, 0x78, 2}).extend_cta({}).put(126, {1});
    EXPECT_EQ(findings_about(edid.facts(), "extension blocks").size(), 0U) << list_of_findings(edid.facts());
}

TEST(block_map, must_state_the_tags) {
    const bytes map = {0xF0, 0x02};
    display_edid edid;
    edid.extend(map).extend_cta({});
    EXPECT_EQ(list_of_findings(edid.facts()), "");
    EXPECT_EQ(findings_about(edid.put(129, {0x10}).facts(), "does not state the tag of block 2").size(), 1U);
    EXPECT_EQ(findings_about(display_edid().extend_cta({}).extend_cta({}).facts(), "need a block map").size(), 1U);
}

TEST(extension_block, is_kept_as_bytes_if_it_is_not_known) {
    const display_facts f = display_edid().extend({0x40, 1, 2, 3}).facts();
    ASSERT_EQ(f.unknown.size(), 1U);
    EXPECT_EQ(f.unknown[0].where.block, 1);
    EXPECT_EQ(f.unknown[0].bytes.size(), 127U);
    EXPECT_EQ(findings_about(f, "tag 64").size(), 1U);
}

TEST(video_timing_block, has_timings_of_three_kinds) {
    bytes block = {0x10, 1, 1, 1, 1};
    const bytes timing = display_edid::full_hd();
    block.insert(block.end(), timing.begin(), timing.end());
    for (const int value : {0xCF, 0x24, 0x08, 0xD1, 0xC0})
        block.push_back(static_cast<std::uint8_t>(value));
    const display_facts f = display_edid(4).extend(block).facts();
    EXPECT_EQ(f.detailed_timings.size(), 2U);
    EXPECT_EQ(f.modes.at(f.modes.size() - 2).width, 2560U);
    EXPECT_EQ(f.modes.back().dmt, 0x52);
    EXPECT_EQ(findings_about(display_edid().extend({0x10, 1, 7, 0, 0}).facts(), "longer than the block").size(), 1U);
}

TEST(best_mode, is_the_largest_native_mode_or_the_largest_of_all) {
    EXPECT_EQ(best_mode(display_facts()), nullptr);
    const display_facts f = display_edid().extend_cta({0x41, 97}).facts();
    EXPECT_EQ(best_mode(f)->width, 1920U);
    EXPECT_EQ(best_mode(display_edid().extend_cta({0x42, 0x84, 0xC0}).facts())->refresh_hz, 100) << "format 64, native";
    display_facts without = f;
    for (video_mode& m : without.modes)
        m.native = false;
    EXPECT_EQ(best_mode(without)->width, 3840U);
}

TEST(names_of_bytes, cover_each_byte_once) {
    const display_facts f = display_edid().extend_cta({0x41, 16, 0x45, 1}).extend({0x40}).facts();
    std::size_t next = 0;
    for (const named_bytes& n : f.bytes) {
        EXPECT_EQ(n.where.block * 128U + n.where.offset, next);
        EXPECT_FALSE(n.name.empty());
        next += n.where.length;
    }
    EXPECT_EQ(next, 384U);
}

TEST(pnp_ids, have_names_in_utf_8) {
    EXPECT_EQ(name_of_pnp_id("SAM"), "Samsung Electric Company");
    EXPECT_EQ(name_of_pnp_id("TEV"), "Telev\xC3\xA9s, S.A.");
    EXPECT_EQ(name_of_pnp_id("MSP"), "Mistral Solutions [P] Ltd.");
    EXPECT_EQ(name_of_pnp_id("@@@"), "");
    EXPECT_EQ(name_of_pnp_id("AA"), "");
}

/// Type I: 3840x2160, 80 blank, front 8, sync 32; 62 lines blank, front 48, sync 8; 533.25 MHz, positive h sync.
const bytes type_i = {0x4C, 0xD0, 0x00, 0x84, 0xFF, 0x0E, 0x4F, 0x00, 0x07, 0x80,
                      0x1F, 0x00, 0x6F, 0x08, 0x3D, 0x00, 0x2F, 0x00, 0x07, 0x00};

bytes display_id_block(std::uint8_t tag, std::uint8_t revision, const bytes& data) {
    bytes block = {tag, revision, static_cast<std::uint8_t>(data.size())};
    block.insert(block.end(), data.begin(), data.end());
    return block;
}

TEST(display_id, has_detailed_timings) {
    const display_facts f = display_edid(4).extend_display_id(0x12, display_id_block(3, 0, type_i)).facts();
    ASSERT_EQ(f.detailed_timings.size(), 2U) << list_of_findings(f);
    const detailed_timing& t = f.detailed_timings[1];
    EXPECT_TRUE(t.display_id);
    EXPECT_EQ(t.pixel_clock_khz, 533250U);
    EXPECT_EQ(t.h_active, 3840U);
    EXPECT_EQ(t.h_blank, 80U);
    EXPECT_EQ(t.h_front, 8U);
    EXPECT_EQ(t.h_sync, 32U);
    EXPECT_EQ(t.v_active, 2160U);
    EXPECT_EQ(t.v_blank, 62U);
    EXPECT_EQ(t.v_front, 48U);
    EXPECT_EQ(t.v_sync, 8U);
    EXPECT_EQ(t.h_sync_positive, true);
    EXPECT_EQ(t.v_sync_positive, false);
    EXPECT_TRUE(t.preferred);
    EXPECT_EQ(list_of_findings(f), "");
    // type VII counts the clock in kHz
    const display_facts newer = display_edid(4).extend_display_id(0x20, display_id_block(0x22, 0, type_i)).facts();
    EXPECT_EQ(newer.detailed_timings.at(1).pixel_clock_khz, 53325U);
}

TEST(display_id, has_short_detailed_timings) {
    // type II: 1920x1080, 160 blank, front 48, sync 32; 31 lines blank, front 3, sync 5; 138.5 MHz
    const bytes type_ii = {0x19, 0x36, 0x00, 0x08, 0xEF, 0x26, 0x53, 0x37, 0x04, 0x1E, 0x24};
    const detailed_timing t =
        display_edid(4).extend_display_id(0x12, display_id_block(4, 0, type_ii)).facts().detailed_timings.at(1);
    EXPECT_EQ(t.pixel_clock_khz, 138500U);
    EXPECT_EQ(t.h_active, 1920U);
    EXPECT_EQ(t.h_blank, 160U);
    EXPECT_EQ(t.h_front, 48U);
    EXPECT_EQ(t.h_sync, 32U);
    EXPECT_EQ(t.v_active, 1080U);
    EXPECT_EQ(t.v_blank, 31U);
    EXPECT_EQ(t.v_front, 3U);
    EXPECT_EQ(t.v_sync, 5U);
    EXPECT_EQ(t.h_sync_positive, true);
    EXPECT_EQ(t.v_sync_positive, false);
}

TEST(display_id, has_timings_by_formula_and_code) {
    const auto last = [](std::uint8_t tag, std::uint8_t revision, const bytes& data) {
        return display_edid(4).extend_display_id(0x20, display_id_block(tag, revision, data)).facts().modes.back();
    };
    EXPECT_EQ(last(0x05, 0, {0x14, 239, 59}).height, 1080U); // type III: 16:9, 1920, 60 Hz
    EXPECT_TRUE(last(0x05, 0, {0x14, 239, 59}).reduced_blanking);
    EXPECT_EQ(last(0x24, 0, {0x02, 0xFF, 0x09, 0x9F, 0x05, 59}).width, 2560U); // type IX
    EXPECT_EQ(last(0x24, 0, {0x02, 0xFF, 0x09, 0x9F, 0x05, 59}).height, 1440U);
    EXPECT_EQ(last(0x11, 0, {0, 0, 0xFF, 0x09, 0x9F, 0x05, 59}).width, 2560U); // type V
    EXPECT_EQ(last(0x06, 0x00, {0x52}).dmt, 0x52);                             // type IV
    EXPECT_EQ(last(0x23, 0x40, {97}).vic, 97);                                 // type VIII
    EXPECT_EQ(last(0x23, 0x48, {97, 0}).vic, 97);
    EXPECT_EQ(last(0x23, 0x80, {1}).width, 3840U);
    EXPECT_EQ(last(0x07, 0, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0x80}).dmt, 80); // VESA's ids
    EXPECT_EQ(last(0x08, 0, {0, 0x80}).vic, 16);                         // codes of CTA-861
}

TEST(display_id, has_its_product) {
    const bytes old_id = {'D', 'E', 'L', 0x34, 0x12, 1, 0, 0, 0, 7, 18, 2, 'X', '1'};
    const display_facts f = display_edid(4).extend_display_id(0x12, display_id_block(0, 0, old_id)).facts();
    ASSERT_EQ(f.display_id.size(), 1U);
    const display_id_section& s = f.display_id[0];
    EXPECT_EQ(s.version, 0x12);
    EXPECT_EQ(s.vendor, "DEL");
    EXPECT_EQ(s.product_code, 0x1234);
    EXPECT_EQ(s.serial_number, 1U);
    EXPECT_EQ(s.week, 7);
    EXPECT_EQ(s.year, 2018);
    EXPECT_EQ(s.product_name, "X1");
    const bytes new_id = {0x00, 0x10, 0xFA, 0, 0, 0, 0, 0, 0, 0, 20, 0};
    const display_facts newer = display_edid(4).extend_display_id(0x20, display_id_block(0x20, 0, new_id)).facts();
    EXPECT_EQ(newer.display_id.at(0).vendor, "00-10-FA");
    EXPECT_EQ(newer.display_id.at(0).serial_number, std::nullopt);
}

TEST(display_id, has_size_and_native_format) {
    const bytes parameters = {0x52, 0x1B, 0x5E, 0x0F, 0x80, 0x17, 0x38, 0x0D, 0, 0, 0, 0};
    const display_id_section s =
        display_edid(4).extend_display_id(0x12, display_id_block(1, 0, parameters)).facts().display_id.at(0);
    EXPECT_DOUBLE_EQ(s.width_mm, 699.4);
    EXPECT_DOUBLE_EQ(s.height_mm, 393.4);
    EXPECT_EQ(s.native_width, 6016U);
    EXPECT_EQ(s.native_height, 3384U);
}

TEST(display_id, can_hold_data_blocks_of_cta_861) {
    const display_facts f = display_edid(4).extend_display_id(0x20, display_id_block(0x81, 0, {0x42, 16, 97})).facts();
    EXPECT_EQ(f.cta.video.size(), 2U);
}

TEST(display_id, reports_what_is_wrong) {
    bytes edid = display_edid(4).extend_display_id(0x12, display_id_block(3, 0, type_i)).finished();
    edid.at(128 + 20) ^= 1;
    edid.at(255) ^= 1;
    EXPECT_EQ(findings_about(read_display_facts(edid), "checksum of the DisplayID section").size(), 1U);
    EXPECT_EQ(findings_about(display_edid(4).extend({0x70, 0x12, 122}).facts(), "longer than its block").size(), 1U);
    EXPECT_EQ(findings_about(display_edid(4).extend({0x70, 0x30, 5}).facts(), "version of the DisplayID").size(), 1U);
    EXPECT_EQ(
        findings_about(display_edid(4).extend({0x70, 0x12, 5, 0, 0, 3, 0, 20}).facts(), "beyond its section").size(),
        1U);
}

/// Reads an EDID; what it says must be in its blocks.
void expect_sound(const bytes& edid) {
    const display_facts f = read_display_facts(edid);
    EXPECT_EQ(f.checksums.size(), std::min<std::size_t>(edid.size() / 128, 256));
    for (const finding& found : f.findings) {
        EXPECT_TRUE(found.text.ends_with('.')) << found.text;
        EXPECT_LT(found.offset, 128);
    }
}

TEST(any_bytes, are_read) {
    std::mt19937 random(1);
    for (int i = 0; i < 10000; ++i) {
        bytes edid(random() % 1100);
        for (std::uint8_t& b : edid)
            b = static_cast<std::uint8_t>(random());
        expect_sound(edid);
    }
}

TEST(any_change, is_read) {
    const bytes blocks = {0x23, 0x09, 0x07, 0x07, 0x83, 0x01, 0,    0, 0x67, 0x03,
                          0x0C, 0,    0x10, 0,    0x38, 0x3C, 0xE3, 5, 3,    1};
    const bytes edid = display_edid(4)
                           .extend_cta(blocks, display_edid::full_hd())
                           .extend_display_id(0x12, display_id_block(3, 0, type_i))
                           .finished();
    std::mt19937 random(1);
    for (int i = 0; i < 10000; ++i) {
        bytes changed = edid;
        for (unsigned n = 1 + random() % 8; n > 0; --n)
            changed.at(random() % changed.size()) = static_cast<std::uint8_t>(random());
        expect_sound(changed);
    }
}

// The raw EDIDs in the folder that the environment variable EDID_CORPUS names.
TEST(corpus, is_read) {
    const char* const folder = std::getenv("EDID_CORPUS");
    if (folder == nullptr) GTEST_SKIP() << "EDID_CORPUS names no folder of EDIDs";
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.file_size() < 128) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const bytes edid((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        SCOPED_TRACE(entry.path().string());
        expect_sound(edid);
        ++count;
    }
    EXPECT_GT(count, 0) << "the folder holds no EDID";
}

} // namespace
} // namespace desk::facts
