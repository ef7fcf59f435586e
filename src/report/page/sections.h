#pragma once

#include "report/page/display_page.h"
#include "report/page/field_map.h"
#include "report/page/page_frame.h"

namespace desk::page {

/// The sections of a display's page, in order. One without content says so or is left out.
void write_glance(markup_writer& out, const page_source& source);
void write_findings(markup_writer& out, const page_source& source, const field_map& fields);
void write_color(markup_writer& out, const page_source& source);
void write_timings(markup_writer& out, const page_source& source, const field_map& fields);
void write_sound(markup_writer& out, const page_source& source, const field_map& fields);
void write_abilities(markup_writer& out, const page_source& source);
void write_features(markup_writer& out, const page_source& source);
void write_bytes(markup_writer& out, const page_source& source, const field_map& fields);
void write_desk_report(markup_writer& out, const page_source& source);

/// A term and what is said about it, in a list of descriptions. Nothing if `words` is empty.
void describe(markup_writer& out, std::string_view term, std::string_view words);

} // namespace desk::page
