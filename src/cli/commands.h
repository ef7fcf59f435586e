#pragma once

#include "cli/answer.h"
#include "cli/console.h"
#include "cli/desk_session.h"
#include "cli/panel_groups.h"
#include "platform/line_input.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace desk::cli {

// The commands. Each does what the operator does, with the desk's own controls, and throws command_failure where the
// desk shows a failure.

enum class catalogue_list : std::uint8_t { timings, patterns };

answer get_version(desk_session& session);
answer list_rows(desk_session& session, catalogue_list which);
answer get_status(desk_session& session);
answer set_row(desk_session& session, catalogue_list which, const std::string& row_or_name);

answer get_panel(desk_session& session);
answer press_panel(desk_session& session, const panel_group& group, std::size_t value);
answer reset_panel(desk_session& session);

answer get_color(desk_session& session);
answer set_color(desk_session& session, const std::vector<int>& values);
answer get_string(desk_session& session);
answer set_string(desk_session& session, const std::string& text);

/// Which rows get a tick.
struct favorite_choice {
    std::vector<int> rows;
    bool all = false;
    bool none = false;
    bool any() const { return !rows.empty() || all || none; }
};
answer get_favorites(desk_session& session, catalogue_list which);
answer set_favorites(desk_session& session, catalogue_list which, const favorite_choice& choice);

/// Empty `output`: the CSV is the answer.
answer get_autorun(desk_session& session, const std::string& output);
answer set_autorun(desk_session& session, const std::string& file);

enum class edid_source : std::uint8_t { hdmi_out, hdmi_in, vga };

/// `file`: "-" is standard output.
answer read_edid(desk_session& session, console& out, edid_source source, const std::string& file, bool c_style);
answer write_edid(desk_session& session, edid_source source, const std::string& file, bool verify);
answer verify_edid(desk_session& session, edid_source source, const std::string& file);
answer erase_edid(desk_session& session, edid_source source);

struct stamping {
    edid_source source = edid_source::hdmi_out;
    std::string file;
    std::int64_t serial = 0;
    std::int64_t count = 1;
    std::int64_t step = 1;
    line_input* keys = nullptr; ///< Enter between the units; null: no wait
};
/// Gives an answer for each unit.
void stamp_edid(desk_session& session, console& out, const stamping& wanted);

/// Throws command_failure (misused) for a file name that the desk can't use: `extensions` are ".hex" and the like.
void expect_extension(const std::string& file, const std::vector<std::string>& extensions);

} // namespace desk::cli
