#include "cli/catalogue_rows.h"
#include "cli/commands.h"
#include "cli/exchange_result.h"
#include "cli/operator.h"
#include "runtime/text.h"

namespace desk::cli {

namespace {

/// The text after the last `words` of a caption, up to the end of its line; empty if they are missing.
std::string after(const std::string& caption, const std::string& words) {
    const std::size_t at = caption.rfind(words);
    if (at == std::string::npos) return "";
    const std::size_t from = at + words.size();
    return caption.substr(from, caption.find("\r\n", from) - from);
}

json or_null(const std::string& text) { return text.empty() ? json() : json(text); }

std::string or_unknown(const std::string& text) { return text.empty() ? "not known" : text; }

list_view& rows_of(frm_main& desk, catalogue_list which) {
    return which == catalogue_list::timings ? desk.catalogue.lstv_timing : desk.catalogue.lstv_pattern;
}

const char* kind_of(catalogue_list which) { return which == catalogue_list::timings ? "timing" : "pattern"; }

json known_row(const list_view& rows, int row) { return row == not_known ? json() : row_object(rows, row); }

answer set_answer(const frm_main& desk, catalogue_list which) {
    const bool timings = which == catalogue_list::timings;
    const list_view& rows = timings ? desk.catalogue.lstv_timing : desk.catalogue.lstv_pattern;
    const int row = timings ? desk.catalogue.cur_timing : desk.catalogue.cur_pattern;
    return {row_object(rows, row), row_line(rows, row), true};
}

answer favorites_answer(const list_view& rows, int count) {
    answer a{{{"rows", json::array()}}, "", false};
    for (int row = 1; row <= count; ++row) {
        if (!rows.row(row).checked) continue;
        a.fields["rows"].push_back(row);
        a.text += row_line(rows, row);
    }
    if (a.text.empty()) a.text = "none\n";
    return a;
}

/// Opens the view of the favorites and returns its list.
list_view& open_favorites(frm_main& desk, catalogue_list which) {
    press(which == catalogue_list::timings ? desk.favorites.cmd_fav_timing : desk.favorites.cmd_fav_pattern);
    return rows_of(desk, which);
}

int favorite_count(const frm_main& desk, catalogue_list which) {
    return which == catalogue_list::timings ? desk.exchange.fav_timing_count : desk.exchange.fav_pattern_count;
}

answer color_answer(const frm_main& desk) {
    const auto& labels = desk.desk_frame.lab_color_setting;
    const auto& values = desk.color_settings.channels;
    answer a;
    a.fields["mode"] = desk.color_settings.color_mode == 1 ? "rgb" : "ycbcr";
    a.fields["values"] = values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        std::string name = labels.at(i).caption;
        name.resize(8, ' ');
        a.text += name + std::to_string(values.at(i)) + "\n";
    }
    return a;
}

/// Opens the pattern view at a row whose settings can be downloaded, and downloads them.
frm_main& download_pattern_settings(desk_session& session, int row) {
    frm_main& desk = session.desk();
    press(desk.catalogue.cmd_pattern);
    select(desk.catalogue.lstv_pattern, row);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_download); });
    return desk;
}

frm_main& download_colors(desk_session& session) {
    frm_main& desk = download_pattern_settings(session, color_setting_pattern);
    if (!desk.desk_frame.hsr_color_setting[0].enabled)
        throw command_failure(outcome::failed, "the generator has no color settings now");
    return desk;
}

answer string_answer(const frm_main& desk) {
    const std::string text = desk.desk_frame.txt_motion_str.text;
    return {{{"text", text}}, text + "\n", false};
}

} // namespace

answer get_version(desk_session& session) {
    frm_main& desk = session.desk();
    const auto& about = desk.about;
    press(desk.about.cmd_about);
    const std::string caption = about.lab_about.caption;
    press(desk.about.cmd_about_ok);
    if (!desk.exchange.rx_done) throw command_failure(outcome::failed, "Link Error !");
    const std::string program = after(caption, "Application S/W is ");
    const std::string firmware = after(caption, "Hardware F/W is ");
    return {{{"program", program}, {"firmware", firmware}},
            "program   " + program + "\nfirmware  " + firmware + "\n",
            false};
}

answer list_rows(desk_session& session, catalogue_list which) {
    const list_view& rows = rows_of(session.catalogue_only(), which);
    answer a{{{"rows", json::array()}}, "", false};
    for (int row = 1; row <= rows.row_count(); ++row) {
        a.fields["rows"].push_back(row_object(rows, row));
        a.text += row_line(rows, row);
    }
    return a;
}

answer get_status(desk_session& session) {
    frm_main& desk = session.desk();
    press(desk.status_frame.cmd_refresh);
    expect_status(desk);
    const status_frame& shown = desk.status_frame;
    answer a;
    a.fields["timing"] = known_row(desk.catalogue.lstv_timing, desk.catalogue.cur_timing);
    a.fields["pattern"] = known_row(desk.catalogue.lstv_pattern, desk.catalogue.cur_pattern);
    a.fields["output"] = or_null(trim(shown.lab_out.caption.get()));
    a.fields["hdcp"] = or_null(trim(shown.lab_hdcp.caption.get()));
    a.text = "timing   " + or_unknown(shown.lab_timing.caption) + "\npattern  " +
             or_unknown(shown.lab_pattern.caption) + "\noutput   " + or_unknown(trim(shown.lab_out.caption.get())) +
             "\nhdcp     " + or_unknown(trim(shown.lab_hdcp.caption.get())) + "\n";
    return a;
}

answer set_row(desk_session& session, catalogue_list which, const std::string& row_or_name) {
    // a row that does not exist is found before a port is opened
    const int row = row_of(rows_of(session.catalogue_only(), which), row_or_name, kind_of(which));
    frm_main& desk = session.desk();
    const bool timings = which == catalogue_list::timings;
    press(timings ? desk.catalogue.cmd_timing : desk.catalogue.cmd_pattern);
    select(rows_of(desk, which), row);
    press(desk.desk_frame.cmd_run);
    const label& shown = timings ? desk.status_frame.lab_timing : desk.status_frame.lab_pattern;
    if (shown.caption == link_error_label) throw command_failure(outcome::failed, link_error_label);
    return set_answer(desk, which);
}

answer get_color(desk_session& session) { return color_answer(download_colors(session)); }

answer set_color(desk_session& session, const std::vector<int>& values) {
    frm_main& desk = download_colors(session);
    for (std::size_t i = 0; i < values.size(); ++i)
        drag(desk.desk_frame.hsr_color_setting.at(i), values.at(i));
    session.let_the_line_finish();
    answer a = color_answer(desk);
    a.confirmation = true;
    return a;
}

answer get_string(desk_session& session) {
    return string_answer(download_pattern_settings(session, motion_string_pattern));
}

answer set_string(desk_session& session, const std::string& text) {
    frm_main& desk = session.desk();
    press(desk.catalogue.cmd_pattern);
    select(desk.catalogue.lstv_pattern, motion_string_pattern);
    type(desk.desk_frame.txt_motion_str, text);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_upload); });
    session.let_the_line_finish();
    answer a = string_answer(desk);
    a.confirmation = true;
    return a;
}

answer get_favorites(desk_session& session, catalogue_list which) {
    frm_main& desk = session.desk();
    const list_view& rows = open_favorites(desk, which);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_download); });
    return favorites_answer(rows, favorite_count(desk, which));
}

answer set_favorites(desk_session& session, catalogue_list which, const favorite_choice& choice) {
    for (const int row : choice.rows)
        row_of(rows_of(session.catalogue_only(), which), std::to_string(row), kind_of(which));
    frm_main& desk = session.desk();
    list_view& rows = open_favorites(desk, which);
    press(choice.all ? desk.desk_frame.cmd_check_all : desk.desk_frame.cmd_check_none);
    for (const int row : choice.rows)
        check(rows, row, true);
    expect_no_box(session, [&] { press(desk.desk_frame.cmd_run); });
    answer a = favorites_answer(rows, favorite_count(desk, which));
    a.confirmation = true;
    return a;
}

} // namespace desk::cli
