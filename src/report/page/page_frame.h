#pragma once

#include "drawing/markup_writer.h"

#include <string>
#include <string_view>

namespace desk::page {

using drawing::markup_writer;

/// How every page begins, so that an older one can be told from other files.
inline constexpr std::string_view start_of_page = "<!DOCTYPE html>\n<!-- Written by edid_report -->\n";

/// Begins a page: its head, with a policy that allows nothing but the page's own style, icon and, if there is one,
/// script; then its body.
void begin_page(markup_writer& out, std::string_view title, std::string_view class_name, bool has_script);

/// Ends a page. `note` is the text of the foot; with `has_script` the script of the index follows.
void end_page(markup_writer& out, std::string_view note, bool has_script);

/// A section with its heading, which navigation and links lead to.
void begin_section(markup_writer& out, std::string_view id, std::string_view title);

/// A link in the same page.
void link_to(markup_writer& out, std::string_view id, std::string_view words);

/// A relative link's target: a file's name with everything but letters, digits, "-", "_" and "." encoded.
std::string href_of(std::string_view file_name);

/// The header row of a table; a column that begins with "#" holds numbers.
void table_head(markup_writer& out, std::initializer_list<std::string_view> columns);

/// Begins a table with its caption, in a frame that scrolls if the page is narrow.
void begin_table(markup_writer& out, std::string_view class_name, std::string_view caption);
void end_table(markup_writer& out);

} // namespace desk::page
