#include "batch/display_json.h"

#include "batch/json_writer.h"
#include "support/display_edid.h"
#include "support/json_schema.h"
#include "support/utf8.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>

namespace desk::batch {
namespace {

using nlohmann::json;
using test::display_edid;
using edid_bytes = display_edid::bytes;

const std::string no_digest(64, '0');

json described(const edid_bytes& edid) {
    std::string text;
    append_json(text, {"a.bin", no_digest, edid.size(), std::nullopt, "END."}, facts::read_display_facts(edid));
    return json::parse(text);
}

const test::json_schema& schema() {
    static const test::json_schema read(json::parse(std::ifstream(JSON_SCHEMA)));
    return read;
}

/// One with every kind of data block.
edid_bytes full_edid() {
    return display_edid(4)
        .extend_cta({0x43, 0x84, 16,   97,   0x23, 0x09, 0x07, 0x07, 0x83, 0x01, 0,    0,    0x67, 0x03,
                     0x0C, 0,    0x10, 0,    0x38, 0x3C, 0x67, 0xD8, 0x5D, 0xC4, 0x01, 0x78, 0x80, 0x63,
                     0xE3, 0x05, 0xC0, 0,    0xE6, 0x06, 0x05, 0x01, 96,   64,   0,    0xE2, 0x00, 0x4B,
                     0xE2, 0x0F, 0x04, 0xE3, 0x13, 1,    2,    0x64, 0x1A, 0,    0,    9},
                    display_edid::full_hd(), 0x70)
        .extend_display_id(0x12, {0, 0, 12, 'D', 'E', 'L', 1, 0, 2, 0, 0, 0, 3, 20, 0})
        .finished();
}

TEST(display_json, has_what_the_edid_says) {
    const json facts = described(full_edid())["facts"];
    EXPECT_EQ(facts["maker"], "DEL");
    EXPECT_EQ(facts["maker_name"], "Dell Inc.");
    EXPECT_EQ(facts["product_code"], 0x1234);
    EXPECT_EQ(facts["serial_number"], 0x12345678);
    EXPECT_EQ(facts["week"], 10);
    EXPECT_EQ(facts["year"], 2020);
    EXPECT_EQ(facts["version"], "1.4");
    EXPECT_EQ(facts["digital"], true);
    EXPECT_EQ(facts["width_cm"], 60);
    EXPECT_EQ(facts["height_cm"], 34);
    EXPECT_EQ(facts["gamma"], 2.2);
    EXPECT_EQ(facts["name"], "TEST");
    EXPECT_EQ(facts["serial_text"], nullptr);
    EXPECT_EQ(facts["checksums"], json::array({true, true, true}));
    EXPECT_EQ(facts["range_limits"]["max_v_hz"], 75);
    EXPECT_EQ(facts["range_limits"]["max_clock_mhz"], 170);
    EXPECT_NEAR(facts["chromaticity"]["red"][0], (0xA9 * 4 + 3) / 1024.0, 1e-6);
    EXPECT_EQ(facts["detailed_timings"].size(), 2U);
    EXPECT_EQ(facts["detailed_timings"][1]["block"], 1);
    EXPECT_EQ(facts["detailed_timings"][0]["pixel_clock_khz"], 148500);
    EXPECT_EQ(facts["detailed_timings"][0]["refresh_hz"], 60);
    EXPECT_EQ(facts["vics"],
              json::parse(R"([{"vic":4,"native":true},{"vic":16,"native":false},{"vic":97,"native":false}])"));
    EXPECT_EQ(facts["ycbcr420_vics"], json::array({97}));
    EXPECT_EQ(facts["audio"][0]["format"], "L-PCM");
    EXPECT_EQ(facts["audio"][0]["channels"], 2);
    EXPECT_EQ(facts["audio"][0]["rates_khz"], json::array({32, 44.1, 48}));
    EXPECT_EQ(facts["hdr"]["eotfs"], json::array({"SDR", "PQ"}));
    EXPECT_EQ(facts["hdr"]["max_nits"], 400);
    EXPECT_EQ(facts["hdmi"]["physical_address"], "1.0.0.0");
    EXPECT_EQ(facts["hdmi"]["max_tmds_mhz"], 300);
    EXPECT_EQ(facts["hdmi_forum"]["frl_gbps"], 12);
    EXPECT_EQ(facts["unknown"][0]["bytes"], "130102");
    EXPECT_EQ(facts["unknown"][1]["oui"], 0x1A);
    EXPECT_EQ(facts["display_id"][0]["version"], "1.2");
}

TEST(display_json, is_null_where_the_edid_states_nothing) {
    const json facts = described(display_edid().put(12, {0, 0, 0, 0, 0}).put(21, {0, 0, 255}).finished())["facts"];
    for (const char* name : {"serial_number", "week", "width_cm", "height_cm", "gamma", "serial_text", "hdr", "hdmi",
                             "hdmi_forum", "speakers", "video_capability"})
        EXPECT_EQ(facts[name], nullptr) << name;
    for (const char* name : {"vics", "audio", "strings", "cta", "display_id", "unknown"})
        EXPECT_EQ(facts[name], json::array()) << name;
}

TEST(display_json, is_null_without_a_whole_block) {
    const json object = described(edid_bytes(100));
    for (const char* name : {"maker", "product_code", "year", "version", "digital", "features", "chromaticity"})
        EXPECT_EQ(object["facts"][name], nullptr) << name;
    EXPECT_EQ(object["facts"]["checksums"], json::array());
    EXPECT_EQ(object["findings"][0]["severity"], "error");
    EXPECT_EQ(schema().faults_of(object), "");
}

TEST(display_json, has_findings_and_the_desks_report) {
    std::string text;
    const edid_bytes edid = display_edid().put(16, {60}).finished();
    append_json(text, {"b", no_digest, 128, 6, "so far\r\n"}, facts::read_display_facts(edid));
    const json object = json::parse(text);
    ASSERT_EQ(object["findings"].size(), 1U);
    EXPECT_EQ(object["findings"][0]["severity"], "warning");
    EXPECT_EQ(object["findings"][0]["block"], 0);
    EXPECT_EQ(object["findings"][0]["offset"], 16);
    EXPECT_EQ(object["findings"][0]["text"], "There is no week 60.");
    EXPECT_EQ(object["desk"], json::parse(R"({"failure":6,"text":"so far\r\n"})"));
}

TEST(display_json, keeps_hostile_texts) {
    const std::string name = "<script>\"\\\x1B[2J";
    display_edid edid;
    edid.put(90, display_edid::text_descriptor(0xFC, name.substr(0, 13)));
    std::string text;
    // a right-to-left mark, and bytes that are no UTF-8
    const std::string file = test::utf8(0x202E) + "</script>\n'\"";
    append_json(text, {file, no_digest, 128, std::nullopt, "\xFF"}, edid.facts());
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; })) << text;
    const json object = json::parse(text);
    EXPECT_EQ(object["facts"]["name"], name.substr(0, 13));
    EXPECT_EQ(object["file"], file);
    EXPECT_EQ(object["desk"]["text"], "\xC3\xBF");
}

TEST(display_json, follows_the_schema) {
    for (const edid_bytes& edid : {full_edid(), display_edid().finished(), display_edid(2).put(20, {0x0E}).finished(),
                                   edid_bytes(128), edid_bytes(256, 0xFF), edid_bytes(1000, 0x70)})
        EXPECT_EQ(schema().faults_of(described(edid)), "");
}

TEST(display_json, has_no_member_that_the_schema_lacks) {
    json object = described(full_edid());
    object["facts"]["more"] = 1;
    EXPECT_NE(schema().faults_of(object), "");
    object["facts"].erase("more");
    EXPECT_EQ(schema().faults_of(object), "");
    object["facts"].erase("maker");
    EXPECT_NE(schema().faults_of(object), "");
    object["facts"]["maker"] = 5;
    EXPECT_NE(schema().faults_of(object), "");
}

// The raw EDIDs in the folder that the environment variable EDID_CORPUS names.
TEST(display_json, follows_the_schema_for_each_real_display) {
    const char* const folder = std::getenv("EDID_CORPUS");
    if (folder == nullptr) GTEST_SKIP() << "EDID_CORPUS names no folder of EDIDs";
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        // the check takes longer than everything else
        if (!entry.is_regular_file() || entry.file_size() < 128 || ++count > 500) continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const edid_bytes edid((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        EXPECT_EQ(schema().faults_of(described(edid)), "") << entry.path();
    }
    EXPECT_GT(count, 0) << "the folder holds no EDID";
}

std::string number(double value) {
    std::string text;
    json_writer(text).number(value);
    return text;
}

TEST(json_writer, rounds_to_six_decimals) {
    EXPECT_EQ(number(0), "0");
    EXPECT_EQ(number(60), "60");
    EXPECT_EQ(number(300000), "300000");
    EXPECT_EQ(number(44.1), "44.1");
    EXPECT_EQ(number(0.05), "0.05");
    EXPECT_EQ(number(-1.5), "-1.5");
    EXPECT_EQ(number(59.9400599), "59.94006");
    EXPECT_EQ(number(0.0000004), "0");
    EXPECT_EQ(number(0.9999999), "1");
    EXPECT_EQ(number(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(number(std::numeric_limits<double>::quiet_NaN()), "null");
}

TEST(json_writer, escapes_each_character_at_each_place) {
    for (int c = 0; c < 0x80; ++c)
        for (std::size_t place = 0; place < 18; ++place) {
            std::string value(18, 'a');
            value[place] = static_cast<char>(c);
            std::string text;
            json_writer(text).text(value);
            EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char t) { return t >= ' ' && t < 0x7F; })) << text;
            EXPECT_EQ(json::parse(text).get<std::string>(), value);
        }
}

TEST(json_writer, separates_and_escapes) {
    std::string text;
    json_writer writer(text);
    writer.begin_object();
    writer.key("a");
    writer.begin_array();
    writer.null();
    writer.boolean(true);
    writer.number(std::int64_t{-7});
    writer.text("\t\"\\/\x7F\xF0\x9F\x93\xBA");
    writer.end_array();
    writer.member("b", std::string_view());
    writer.end_object();
    EXPECT_EQ(text, "{\"a\":[null,true,-7,\"\\t\\\"\\\\/\\u007f\\ud83d\\udcfa\"],\"b\":null}");
}

} // namespace
} // namespace desk::batch
