#include "report/page/display_page.h"
#include "report/page/field_map.h"
#include "support/display_edid.h"
#include "support/strict_xml.h"
#include "support/utf8.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

namespace desk::page {
namespace {

using test::display_edid;
using bytes = std::vector<std::uint8_t>;

std::string page_of(const bytes& edid, desk_outcome desk = {}, std::string_view file_name = "test.bin") {
    const facts::display_facts facts = facts::read_display_facts(edid);
    std::string page;
    append_display_page(page, {file_name, "", edid, facts, desk, "1.0"});
    const test::strict_xml checked(page);
    EXPECT_EQ(checked.fault, "");
    return page;
}

bool has(const std::string& page, std::string_view part) { return page.find(part) != std::string::npos; }

/// A display of EDID 1.3 with sound, speakers, HDMI, HDR and four video formats.
display_edid television() {
    return display_edid().extend_cta({0x44, 0x90, 0x10, 0x04, 0x61, // 1080p native, 1080p, 720p, 2160p
                                      0x23, 0x09, 0x07, 0x07,       // L-PCM, 2 channels
                                      0x83, 0x4F, 0x00, 0x00,       // 5.1 and rear speakers
                                      0x67, 0x03, 0x0C, 0x00, 0x20, 0x00, 0xB8, 0x3C, // HDMI, 2.0.0.0, 300 MHz
                                      0xE5, 0x06, 0x0C, 0x01, 0x5F, 0x00},            // PQ and HLG
                                     display_edid::full_hd(), 0xF1);
}

TEST(page, says_what_the_display_is) {
    const std::string page = page_of(display_edid().finished());
    EXPECT_TRUE(has(page, "<h1>TEST</h1>"));
    EXPECT_TRUE(has(page, "Dell Inc. (DEL)"));
    EXPECT_TRUE(has(page, "600 \xC3\x97 340 mm, 27.2\xE2\x80\xB3"));
    EXPECT_TRUE(has(page, "Week 10 of 2020"));
    EXPECT_TRUE(has(page, "<dt>Best mode</dt><dd>1920\xC2\xA0\xC3\x97\xC2\xA0"
                          "1080, 60 Hz</dd>"));
    EXPECT_TRUE(has(page, "No findings"));
}

TEST(page, covers_srgb_with_its_own_primaries) {
    // 10 bits: 0.640, 0.330, 0.300, 0.600, 0.150, 0.060, 0.3127, 0.3290
    const bytes srgb = {0xEE, 0x91, 0xA3, 0x54, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54};
    const std::string page = page_of(display_edid().put(25, srgb).finished());
    std::smatch found;
    ASSERT_TRUE(std::regex_search(page, found, std::regex("sRGB</th><td class=\"number\">([0-9.]+) %")));
    EXPECT_GT(std::stod(found[1]), 99.0) << "but for the rounding to 10 bits";
    EXPECT_TRUE(has(page, "about 6500 K"));
}

TEST(page, has_every_section) {
    const test::strict_xml page(page_of(television().finished()));
    for (const char* id : {"findings", "colour", "timings", "audio", "abilities", "features", "bytes", "desk"})
        EXPECT_TRUE(page.ids.contains(id)) << id;
}

TEST(page, says_what_a_television_can) {
    const std::string page = page_of(television().finished());
    EXPECT_TRUE(has(page, "physical address 2.0.0.0"));
    EXPECT_TRUE(has(page, "up to 300 MHz"));
    EXPECT_TRUE(has(page, "<li class=\"can\"><span class=\"mark\">Yes</span><span>Perceptual quantizer (PQ)</span>"));
    EXPECT_TRUE(has(page, "<li class=\"cannot\"><span class=\"mark\">No</span><span>Dolby Vision</span>"));
    EXPECT_TRUE(has(page, "L-PCM"));
    EXPECT_TRUE(has(page, "32, 44.1, 48"));
    EXPECT_TRUE(has(page, "Speakers: front left and right, low frequency effects, front centre, back left and right"));
}

TEST(page, links_bytes_and_fields_both_ways) {
    const std::string text = page_of(television().finished());
    const test::strict_xml page(text);
    for (const char* id : {"b0-0", "f0-0", "b0-54", "f0-54", "b1-4", "f1-4", "b1-127", "f1-127"})
        EXPECT_TRUE(page.ids.contains(id)) << id;
    EXPECT_TRUE(has(text, "id=\"b0-54\" href=\"#f0-54\" title=\"Detailed timing, bytes 54 to 71\">02 3A 80"));
    EXPECT_TRUE(has(text, "<tr id=\"f0-54\"><td><a href=\"#b0-54\">54\xE2\x80\x93"
                          "71</a>"));
}

TEST(page, shows_every_byte_once) {
    bytes edid = television().finished();
    edid.resize(edid.size() + 5, 0xAB); // a part of a block
    std::string shown;
    const std::string page = page_of(edid);
    const std::regex run("<a class=\"p-[a-z]+\" id=\"b[0-9-]+\" href=\"#f[0-9-]+\" title=\"[^\"]*\">([0-9A-F ]+)</a>");
    for (std::sregex_iterator found(page.begin(), page.end(), run), end; found != end; ++found)
        shown += (*found)[1].str() + " ";
    std::string expected;
    for (const std::uint8_t byte : edid) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02X ", byte);
        expected += digits;
    }
    EXPECT_EQ(shown, expected);
}

TEST(page, says_what_a_field_says) {
    const std::string page = page_of(television().put(38, {0xD1, 0xC0}).finished());
    const auto says = [&](std::string_view id) {
        const std::size_t row = page.find("<tr id=\"" + std::string(id) + "\">");
        const std::size_t last_cell = page.rfind("<td>", page.find("</tr>", row));
        return page.substr(last_cell + 4, page.find("</td>", last_cell) - last_cell - 4);
    };
    EXPECT_EQ(says("f0-8"), "DEL, product 0x1234, serial number 305419896, Week 10 of 2020");
    EXPECT_EQ(says("f0-21"), "60 \xC3\x97 34 cm");
    EXPECT_EQ(says("f0-23"), "2.2");
    EXPECT_EQ(says("f0-38"), "1920\xC2\xA0\xC3\x97\xC2\xA0"
                             "1080, 60 Hz");
    EXPECT_EQ(says("f0-40"), "not used");
    EXPECT_EQ(says("f0-72"), "48 to 75 Hz, 30 to 83 kHz, up to 170 MHz");
    EXPECT_EQ(says("f0-90"), "TEST");
    EXPECT_EQ(says("f0-126"), "1");
    EXPECT_EQ(says("f0-127"), "correct");
    EXPECT_EQ(says("f1-9"), "L-PCM, 2 channels");
}

TEST(page, links_a_finding_to_its_bytes) {
    bytes edid = display_edid().finished();
    edid.back() ^= 1; // the checksum
    const std::string page = page_of(edid);
    EXPECT_TRUE(has(page, "<a href=\"#b0-127\">0:127</a>"));
    EXPECT_TRUE(has(page, "class=\"chip error\""));
}

TEST(page, draws_each_detailed_timing) {
    const std::string page = page_of(television().finished());
    std::size_t count = 0;
    for (std::size_t at = page.find("<svg class=\"raster\""); at != std::string::npos;
         at = page.find("<svg class=\"raster\"", at + 1))
        ++count;
    EXPECT_EQ(count, 2U);
    EXPECT_TRUE(has(page,
                    "Horizontal: 1920 active, 88 front porch, 44 sync, 148 back porch pixels. Vertical: 1080 active, "
                    "4 front porch, 5 sync, 36 back porch lines."));
}

TEST(page, draws_all_speakers_apart) {
    const std::string page = page_of(display_edid().extend_cta({0x83, 0xFF, 0xFF, 0x0F}).finished());
    const std::regex label("<text class=\"label present\" x=\"([0-9.]+)\" y=\"([0-9.]+)\"[^>]*>([A-Za-z0-9]+)</text>");
    struct placed {
        double x, y;
        std::string name;
    };
    std::vector<placed> all;
    for (std::sregex_iterator found(page.begin(), page.end(), label), end; found != end; ++found)
        all.push_back({std::stod((*found)[1]), std::stod((*found)[2]), (*found)[3]});
    EXPECT_EQ(all.size(), 32U) << "12 of the 20 bits name two speakers";
    for (std::size_t i = 0; i < all.size(); ++i)
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_TRUE(std::abs(all[i].x - all[k].x) >= 30 || std::abs(all[i].y - all[k].y) >= 20)
                << all[i].name << " covers " << all[k].name;
}

TEST(page, ends_with_the_report_of_the_desk) {
    const std::string page = page_of(display_edid().finished(), {"EDID Analysis Report\r\nA < B", {}, {}, {}, {}});
    EXPECT_TRUE(has(page, "EDID Analysis Report\r\nA &lt; B</pre>"));
    EXPECT_FALSE(has(page, "Run-time error"));
}

TEST(page, says_where_and_why_the_desk_ends) {
    const std::string page = page_of(display_edid().finished(),
                                     {"so far", 6, "Overflow", "Decoding timing 1: 594 does not fit.", "128 bytes"});
    EXPECT_TRUE(has(page, "The desk ends with error 6"));
    EXPECT_TRUE(has(page, "Run-time error 6: Overflow"));
    EXPECT_TRUE(has(page, "Decoding timing 1: 594 does not fit."));
    EXPECT_TRUE(has(page, "128 bytes"));
    EXPECT_TRUE(has(page, ">so far</pre>"));
}

TEST(page, allows_nothing_but_its_own_style) {
    const std::string page = page_of(television().finished());
    EXPECT_TRUE(has(page, "content=\"default-src &#39;none&#39;; img-src data:; style-src &#39;sha256-"));
    EXPECT_FALSE(has(page, "script-src"));
    EXPECT_FALSE(has(page, "unsafe"));
    const test::strict_xml read(page);
    EXPECT_FALSE(read.elements.contains("script"));
    EXPECT_FALSE(read.attributes.contains("style"));
    for (const std::string& attribute : read.attributes)
        EXPECT_FALSE(attribute.starts_with("on")) << attribute;
    EXPECT_FALSE(read.attributes.contains("src"));
    for (const std::string& link : read.links)
        EXPECT_TRUE(link.starts_with("#") || link.starts_with("data:") || link == "index.html") << link;
}

const std::string right_to_left_override = test::utf8(0x202E);

const std::vector<std::string> hostile_texts = {"<script>x()",
                                                "</style><b>",
                                                "\"onload=\"x",
                                                "'><img src=",
                                                "&amp;&#0;&lt;",
                                                "\x1B[31m\x07\b",
                                                std::string(3, '\0') + "a",
                                                "]]>--><!--",
                                                right_to_left_override + "abc",
                                                "\xFF\xFE\x80\x81",
                                                "javascript:a",
                                                "%00%3Cscript"};

TEST(hostile_texts, stay_texts_in_every_field) {
    for (const std::string& hostile : hostile_texts) {
        const auto descriptor = [&](std::uint8_t tag) { return display_edid::text_descriptor(tag, hostile); };
        display_edid edid =
            display_edid(4).put(72, descriptor(0xFF)).put(90, descriptor(0xFC)).put(108, descriptor(0xFE));
        bytes product = {0, 0,  static_cast<std::uint8_t>(12 + hostile.size()), '<', '&', '"', 1, 0, 0, 0, 0, 0,
                         1, 20, static_cast<std::uint8_t>(hostile.size())};
        product.insert(product.end(), hostile.begin(), hostile.end());
        edid.extend_display_id(0x12, product);
        const std::string page = page_of(edid.finished(), {hostile, 5, hostile, hostile, hostile}, hostile);
        const test::strict_xml read(page);
        EXPECT_FALSE(read.elements.contains("script")) << hostile;
        EXPECT_FALSE(read.elements.contains("img"));
        EXPECT_FALSE(read.attributes.contains("onload"));
        EXPECT_EQ(page.find(right_to_left_override), std::string::npos);
        EXPECT_EQ(page.find('\x1B'), std::string::npos);
    }
}

TEST(hostile_texts, of_a_maker_stay_texts) {
    // the five-bit letters reach from @ to _
    for (const int high : {0x00, 0x7F, 0x6F})
        page_of(display_edid().put(8, {static_cast<std::uint8_t>(high), 0xFF}).finished());
}

TEST(any_bytes, make_a_page) {
    std::mt19937 random(20261122);
    const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
    constexpr int rounds = 100; // the fuzzer tries more
    for (int i = 0; i < rounds; ++i) {
        bytes edid(1 + random() % 600);
        std::generate(edid.begin(), edid.end(), byte);
        page_of(edid);
    }
    const bytes good = television().finished();
    for (int i = 0; i < rounds; ++i) {
        bytes edid = good;
        for (int k = 0; k < 12; ++k)
            edid[random() % edid.size()] = byte();
        page_of(edid);
    }
}

TEST(any_size, makes_a_page) {
    for (const std::size_t size : {0U, 1U, 127U, 128U, 129U, 255U, 256U * 128U})
        page_of(bytes(size, 0xFF));
}

TEST(field_map, has_each_byte_in_exactly_one_field) {
    bytes edid = television().finished();
    edid.push_back(1);
    const field_map fields(facts::read_display_facts(edid));
    std::size_t next = 0;
    for (const field& f : fields.fields()) {
        EXPECT_EQ(f.block * edid_block_size + f.begin, next);
        EXPECT_LT(f.begin, f.end);
        next = f.block * edid_block_size + f.end;
    }
    EXPECT_EQ(next, edid.size());
    ASSERT_NE(fields.at(0, 60), nullptr);
    EXPECT_EQ(fields.at(0, 60)->begin, 54U);
    EXPECT_EQ(fields.at(2, 1), nullptr);
}

} // namespace
} // namespace desk::page
