#include "batch/display_json.h"

#include "batch/cta_json.h"
#include "batch/json_writer.h"

#include <cmath>

namespace desk::batch {

namespace {

using facts::display_facts;

void write_place(json_writer& json, const facts::place& where) {
    json.member("block", std::int64_t{where.block});
    json.member("offset", std::int64_t{where.offset});
}

void write_product(json_writer& json, const display_facts& f) {
    json.member("maker", std::string_view(f.maker));
    json.member("maker_name", f.maker_name);
    json.member("product_code", f.has_base_block ? std::optional(f.product_code) : std::nullopt);
    json.member("serial_number", f.serial_number);
    json.member("week", f.week);
    json.member("year", f.year);
    json.member("is_model_year", f.is_model_year);
    std::string version;
    if (f.has_base_block) version = std::to_string(f.version) + "." + std::to_string(f.revision);
    json.member("version", std::string_view(version));
}

void write_input(json_writer& json, const display_facts& f) {
    json.key("digital");
    if (f.has_base_block)
        json.boolean(f.digital);
    else
        json.null();
    json.member_or_null("bits_per_color", f.digital_interface.bits_per_color);
    json.member("interface", f.digital_interface.interface);
    json.key("analog");
    if (!f.has_base_block || f.digital) return json.null();
    json.begin_object();
    json.member("levels", f.analog.levels);
    json.member("blank_to_black", f.analog.blank_to_black);
    json.member("separate_sync", f.analog.separate_sync);
    json.member("composite_sync", f.analog.composite_sync);
    json.member("sync_on_green", f.analog.sync_on_green);
    json.member("serrated_sync", f.analog.serrated_sync);
    json.end_object();
}

void write_features(json_writer& json, const display_facts& f) {
    json.member("width_cm", f.width_cm);
    json.member("height_cm", f.height_cm);
    json.member("aspect", f.aspect);
    json.member("gamma", f.gamma);
    json.key("features");
    if (!f.has_base_block) return json.null();
    json.begin_object();
    json.member("standby", f.power.standby);
    json.member("suspend", f.power.suspend);
    json.member("active_off", f.power.active_off);
    json.member("color_type", f.color_type);
    json.member("ycbcr444", f.ycbcr444);
    json.member("ycbcr422", f.ycbcr422);
    json.member("srgb_default", f.srgb_default);
    json.member("preferred_is_native", f.preferred_is_native);
    json.member("continuous_frequency", f.continuous_frequency);
    json.end_object();
}

void write_texts(json_writer& json, const display_facts& f) {
    json.member("name", std::string_view(f.name));
    json.member("serial_text", std::string_view(f.serial_text));
    json.key("strings");
    json.begin_array();
    for (const std::string& text : f.strings)
        json.text(text);
    json.end_array();
    json.key("checksums");
    json.begin_array();
    for (const bool right : f.checksums)
        json.boolean(right);
    json.end_array();
}

void write_limits(json_writer& json, const display_facts& f) {
    json.key("range_limits");
    if (!f.limits) return json.null();
    json.begin_object();
    json.member("min_v_hz", std::int64_t{f.limits->min_v_hz});
    json.member("max_v_hz", std::int64_t{f.limits->max_v_hz});
    json.member("min_h_khz", std::int64_t{f.limits->min_h_khz});
    json.member("max_h_khz", std::int64_t{f.limits->max_h_khz});
    json.member("max_clock_mhz", f.limits->max_clock_mhz);
    json.member("exact_max_clock_mhz", f.limits->exact_max_clock_mhz);
    json.member("formula", f.limits->formula);
    json.end_object();
}

void write_colors(json_writer& json, const display_facts& f) {
    json.key("chromaticity");
    if (!f.colors) return json.null();
    const auto point = [&](std::string_view name, const facts::color_point& p) {
        json.key(name);
        json.begin_array();
        json.number(p.x);
        json.number(p.y);
        json.end_array();
    };
    json.begin_object();
    point("red", f.colors->red);
    point("green", f.colors->green);
    point("blue", f.colors->blue);
    point("white", f.colors->white);
    json.end_object();
}

void write_detailed_timing(json_writer& json, const facts::detailed_timing& t) {
    json.begin_object();
    write_place(json, t.where);
    const auto figure = [&](std::string_view name, std::uint32_t value) { json.member(name, std::int64_t{value}); };
    figure("pixel_clock_khz", t.pixel_clock_khz);
    figure("h_active", t.h_active);
    figure("h_blank", t.h_blank);
    figure("h_front", t.h_front);
    figure("h_sync", t.h_sync);
    figure("v_active", t.v_active);
    figure("v_blank", t.v_blank);
    figure("v_front", t.v_front);
    figure("v_sync", t.v_sync);
    json.member("interlaced", t.interlaced);
    json.member("refresh_hz", t.refresh_hz());
    json.member("preferred", t.preferred);
    json.member_or_null("width_mm", t.width_mm);
    json.member_or_null("height_mm", t.height_mm);
    json.member_or_null("vic", t.vic);
    json.member_or_null("dmt", t.dmt);
    json.end_object();
}

void write_mode(json_writer& json, const facts::video_mode& m) {
    json.begin_object();
    json.member("source", name_of(m.source));
    json.member("width", std::int64_t{m.width});
    json.member("height", std::int64_t{m.height});
    json.member("interlaced", m.interlaced);
    json.member("refresh_hz", m.refresh_hz);
    json.member("pixel_clock_khz", std::int64_t{m.pixel_clock_khz});
    json.member("native", m.native);
    json.member_or_null("vic", m.vic);
    json.member_or_null("dmt", m.dmt);
    json.end_object();
}

void write_timings(json_writer& json, const display_facts& f) {
    json.key("detailed_timings");
    json.begin_array();
    for (const facts::detailed_timing& t : f.detailed_timings)
        write_detailed_timing(json, t);
    json.end_array();
    json.key("modes");
    json.begin_array();
    for (const facts::video_mode& m : f.modes)
        write_mode(json, m);
    json.end_array();
}

void write_display_id(json_writer& json, const display_facts& f) {
    json.key("display_id");
    json.begin_array();
    for (const facts::display_id_section& s : f.display_id) {
        json.begin_object();
        json.member("block", std::int64_t{s.block});
        const std::string version = std::to_string(s.version >> 4) + "." + std::to_string(s.version & 15);
        json.member("version", std::string_view(version));
        json.member("vendor", std::string_view(s.vendor));
        json.member("product_code", s.product_code);
        json.member("serial_number", s.serial_number);
        json.member("week", s.week);
        json.member("year", s.year);
        json.member("name", std::string_view(s.product_name));
        json.member_or_null("native_width", s.native_width);
        json.member_or_null("native_height", s.native_height);
        json.end_object();
    }
    json.end_array();
}

void write_bytes(json_writer& json, const std::vector<std::uint8_t>& bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string hexadecimal;
    hexadecimal.reserve(bytes.size() * 2);
    for (const std::uint8_t byte : bytes) {
        hexadecimal.push_back(digits[byte >> 4]);
        hexadecimal.push_back(digits[byte & 15]);
    }
    json.key("bytes");
    json.text(hexadecimal);
}

void write_unknown(json_writer& json, const display_facts& f) {
    json.key("unknown");
    json.begin_array();
    for (const facts::unknown_bytes& u : f.unknown) {
        json.begin_object();
        write_place(json, u.where);
        json.member("what", u.what);
        write_bytes(json, u.bytes);
        json.end_object();
    }
    for (const facts::vendor_block& v : f.cta.vendors) {
        json.begin_object();
        write_place(json, v.where);
        json.member("what", std::string_view("vendor data block"));
        json.member("oui", std::int64_t{v.oui});
        json.member("vendor", v.vendor);
        write_bytes(json, v.bytes);
        json.end_object();
    }
    json.end_array();
}

void write_facts(json_writer& json, const display_facts& f) {
    json.key("facts");
    json.begin_object();
    write_product(json, f);
    write_input(json, f);
    write_features(json, f);
    write_texts(json, f);
    write_limits(json, f);
    write_colors(json, f);
    write_timings(json, f);
    write_cta_facts(json, f.cta);
    write_display_id(json, f);
    write_unknown(json, f);
    json.end_object();
}

void write_findings(json_writer& json, const display_facts& f) {
    json.key("findings");
    json.begin_array();
    for (const facts::finding& found : f.findings) {
        json.begin_object();
        json.member("severity", name_of(found.level));
        json.member("block", std::int64_t{found.block});
        json.member("offset", std::int64_t{found.offset});
        json.key("text");
        json.text(found.text);
        json.member("clause", found.clause);
        json.end_object();
    }
    json.end_array();
}

} // namespace

void append_json(std::string& text, const file_in_json& file, const facts::display_facts& facts) {
    json_writer json(text);
    json.begin_object();
    json.key("file");
    json.text(file.name);
    json.member("sha256", file.sha256);
    json.member("size", static_cast<std::int64_t>(file.size));
    write_facts(json, facts);
    write_findings(json, facts);
    json.key("desk");
    json.begin_object();
    json.member("failure", file.failure);
    json.key("text");
    json.text(file.report_text);
    json.end_object();
    json.end_object();
}

} // namespace desk::batch
