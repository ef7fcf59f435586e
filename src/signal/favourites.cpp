#include "signal/favourites.h"

namespace desk {

favourites::favourites(exchange& link, desk_frame& desk, catalogue& rows) : link_(link), desk_(desk), rows_(rows) {
    cmd_fav_timing.on_click = [this] { cmd_fav_timing_click(); };
    cmd_fav_pattern.on_click = [this] { cmd_fav_pattern_click(); };
}

void favourites::cmd_fav_timing_click() {
    rows_.change_view(view::favorite_timing);
    desk_.fra_desk.caption = "Favorite Timing";
    rows_.lstv_timing.check_boxes = true;
    desk_.lab_desk_note.caption = "Press [Download] to download VELOTRACE favorite timings.\r\n"
                                  "Check your favorite timings in timing table.\r\n"
                                  "Press [SET] to upload favorite timings to VELOTRACE.";
    show_list(rows_.lstv_timing);
}

void favourites::cmd_fav_pattern_click() {
    rows_.change_view(view::favorite_pattern);
    desk_.fra_desk.caption = "Favorite Pattern";
    rows_.lstv_pattern.check_boxes = true;
    desk_.lab_desk_note.caption = "Press [Download] to download VELOTRACE favorite patterns.\r\n"
                                  "Check your favorite patterns in pattern table.\r\n"
                                  "Press [SET] to upload favorite patterns to VELOTRACE.";
    show_list(rows_.lstv_pattern);
}

void favourites::show_list(list_view& rows) {
    desk_.cmd_download.left = download_left_beside_list;
    desk_.cmd_download.top = download_top_beside_list;
    desk_.fra_desk.visible = true;
    desk_.cmd_run.visible = true;
    desk_.cmd_download.visible = true;
    rows.visible = true;
    desk_.lab_desk_note.visible = true;
    desk_.cmd_check_all.visible = true;
    desk_.cmd_check_none.visible = true;
    link_.host().events.pump();
    rows.set_focus();
}

} // namespace desk
