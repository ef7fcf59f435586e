#include "report/page/page_frame.h"

#include "report/page/page_parts.h"
#include "runtime/text.h"

#include <array>
#include <cstdint>
#include <vector>

namespace desk::page {

namespace {

std::string base64_of_hex(std::string_view digits) {
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char digit : digits) {
        bits = bits << 4 | static_cast<std::uint32_t>(hex_digit(digit));
        count += 4;
        if (count < 6) continue;
        count -= 6;
        text += letters[bits >> count & 63];
    }
    if (count > 0) text += letters[bits << (6 - count) & 63];
    text.append((4 - text.size() % 4) % 4, '=');
    return text;
}

std::string policy(bool has_script) {
    std::string words = "default-src 'none'; img-src data:; style-src 'sha256-" + base64_of_hex(style_sheet_sha256) +
                        "'; base-uri 'none'; form-action 'none'";
    if (has_script) words += "; script-src 'sha256-" + base64_of_hex(index_script_sha256) + "'";
    return words;
}

constexpr std::string_view icon =
    "data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 16 16'%3E%3Crect x='1' y='2' "
    "width='14' height='10' rx='1.5' fill='%231f5fbf'/%3E%3Cpath d='M5 14.5h6' stroke='%231f5fbf' "
    "stroke-width='2'/%3E%3C/svg%3E";

/// Everything in the head but the title.
std::string head_markup(bool has_script) {
    std::string markup;
    markup_writer out(markup);
    out.begin("meta").attribute("charset", "utf-8").end_void();
    out.begin("meta").attribute("http-equiv", "Content-Security-Policy").attribute("content", policy(has_script));
    out.end_void();
    out.begin("meta").attribute("name", "viewport").attribute("content", "width=device-width, initial-scale=1");
    out.end_void();
    out.begin("meta").attribute("name", "color-scheme").attribute("content", "light dark").end_void();
    out.begin("meta").attribute("name", "referrer").attribute("content", "no-referrer").end_void();
    out.begin("link").attribute("rel", "icon").attribute("href", icon).end_void();
    out.begin("style").markup(style_sheet);
    out.end();
    return markup;
}

bool is_unreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || is_digit(c) || c == '-' || c == '_' || c == '.';
}

} // namespace

void begin_page(markup_writer& out, std::string_view title, std::string_view class_name, bool has_script) {
    static const std::array<std::string, 2> heads = {head_markup(false), head_markup(true)};
    out.markup(start_of_page);
    out.begin("html").attribute("xmlns", "http://www.w3.org/1999/xhtml").attribute("lang", "en");
    out.begin("head").markup(heads.at(has_script ? 1 : 0));
    out.element("title", title);
    out.end();
    out.begin("body", class_name);
}

void end_page(markup_writer& out, std::string_view note, bool has_script) {
    out.element("footer", note);
    if (has_script) {
        out.begin("script").markup(index_script);
        out.end();
    }
    out.end();
    out.end();
    out.markup("\n");
}

void begin_section(markup_writer& out, std::string_view id, std::string_view title) {
    out.markup("\n");
    out.begin("section", "card").attribute("id", id);
    out.element("h2", title);
}

void link_to(markup_writer& out, std::string_view id, std::string_view words) {
    out.begin("a").attribute("href", "#" + std::string(id)).text(words).end();
}

std::string href_of(std::string_view file_name) {
    std::string href;
    for (const char c : file_name) {
        if (is_unreserved(c))
            href += c;
        else
            href += "%" + hex2(static_cast<std::uint8_t>(c));
    }
    return href;
}

void table_head(markup_writer& out, std::initializer_list<std::string_view> columns) {
    out.begin("thead");
    out.begin("tr");
    for (const std::string_view column : columns) {
        out.begin("th").attribute("scope", "col");
        if (column.starts_with('#')) out.attribute("class", "number");
        out.text(column.substr(column.starts_with('#') ? 1 : 0));
        out.end();
    }
    out.end();
    out.end();
}

void begin_table(markup_writer& out, std::string_view class_name, std::string_view caption) {
    out.begin("div", "scroll").attribute("tabindex", 0).attribute("role", "region").attribute("aria-label", caption);
    out.begin("table", class_name);
    out.element("caption", caption);
}

void end_table(markup_writer& out) {
    out.end();
    out.end();
}

} // namespace desk::page
