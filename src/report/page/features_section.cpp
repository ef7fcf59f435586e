#include "report/page/sections.h"
#include "report/page/words.h"

namespace desk::page {

namespace {

using drawing::number_text;

std::string power_words(const facts::power_management& power) {
    std::string words;
    if (power.standby) append_listed(words, "standby");
    if (power.suspend) append_listed(words, "suspend");
    if (power.active_off) append_listed(words, "active off");
    return words.empty() ? "none" : words;
}

std::string sync_words(const facts::analog_input& analog) {
    std::string words;
    if (analog.separate_sync) append_listed(words, "separate");
    if (analog.composite_sync) append_listed(words, "composite");
    if (analog.sync_on_green) append_listed(words, "on green");
    if (analog.serrated_sync) append_listed(words, "serrated");
    return words;
}

std::string section_words(const facts::display_id_section& s) {
    std::string words = "version " + std::to_string(s.version >> 4) + "." + std::to_string(s.version & 15);
    append_listed(words, s.vendor);
    append_listed(words, s.product_name);
    if (s.product_code) append_listed(words, "product " + hex_words(*s.product_code, 4));
    if (s.serial_number) append_listed(words, "serial number " + std::to_string(*s.serial_number));
    if (s.year) append_listed(words, std::to_string(*s.year));
    if (s.native_width != 0) append_listed(words, resolution_words(s.native_width, s.native_height, false));
    if (s.width_mm > 0)
        append_listed(words, number_text(s.width_mm, 1) + " \xC3\x97 " + number_text(s.height_mm, 1) + " mm");
    return words;
}

std::string bytes_words(const std::vector<std::uint8_t>& bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string words;
    for (const std::uint8_t byte : bytes) {
        if (!words.empty()) words += ' ';
        words += digits[byte >> 4];
        words += digits[byte & 15];
    }
    return words;
}

void write_base_block(markup_writer& out, const facts::display_facts& f) {
    describe(out, "Power management", power_words(f.power));
    if (f.digital) {
        std::string encodings = "RGB";
        if (f.ycbcr444) append_listed(encodings, "YCbCr 4:4:4");
        if (f.ycbcr422) append_listed(encodings, "YCbCr 4:2:2");
        describe(out, "Colour encodings", encodings);
    } else {
        describe(out, "Colour", f.color_type);
        describe(out, "Sync", sync_words(f.analog));
        describe(out, "Blank to black", f.analog.blank_to_black ? "yes" : "no");
    }
    describe(out, "First detailed timing", f.preferred_is_native ? "native format and rate" : "");
    describe(out, "Continuous frequency", f.continuous_frequency ? "yes" : "no");
}

} // namespace

void write_features(markup_writer& out, const page_source& source) {
    const facts::display_facts& f = source.facts;
    begin_section(out, "features", "Features");
    out.begin("dl", "facts");
    if (f.has_base_block) write_base_block(out, f);
    for (const std::string& text : f.strings)
        describe(out, "Text", text);
    for (const facts::cta_block& b : f.cta.blocks)
        describe(out, "CTA-861 block",
                 "block " + std::to_string(b.block) + ", revision " + std::to_string(b.revision) + ", " +
                     count_words(b.native_timings, "native detailed timing"));
    for (const facts::display_id_section& s : f.display_id)
        describe(out, "DisplayID", section_words(s));
    for (const facts::vendor_block& v : f.cta.vendors)
        describe(out, v.vendor.empty() ? "Vendor " + hex_words(v.oui, 6) : std::string(v.vendor),
                 v.bytes.empty() ? "no data" : bytes_words(v.bytes));
    out.end();
    out.end();
}

} // namespace desk::page
