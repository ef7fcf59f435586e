#include "signal/favorites.h"

namespace desk {

favorites::favorites(exchange& link, desk_frame& desk, catalogue& rows)
    : exchange_(link), desk_frame_(desk), catalogue_(rows) {
    cmd_fav_timing.on_click = [this] { cmd_fav_timing_click(); };
    cmd_fav_pattern.on_click = [this] { cmd_fav_pattern_click(); };
}

void favorites::cmd_fav_timing_click() {
    catalogue_.change_view(view::favorite_timing);
    desk_frame_.fra_desk.caption = "Favorite Timing";
    catalogue_.lstv_timing.check_boxes = true;
    desk_frame_.lab_desk_note.caption = "Press [Download] to download VELOTRACE favorite timings.\r\n"
                                        "Check your favorite timings in timing table.\r\n"
                                        "Press [SET] to upload favorite timings to VELOTRACE.";
    show_list(catalogue_.lstv_timing);
}

void favorites::cmd_fav_pattern_click() {
    catalogue_.change_view(view::favorite_pattern);
    desk_frame_.fra_desk.caption = "Favorite Pattern";
    catalogue_.lstv_pattern.check_boxes = true;
    desk_frame_.lab_desk_note.caption = "Press [Download] to download VELOTRACE favorite patterns.\r\n"
                                        "Check your favorite patterns in pattern table.\r\n"
                                        "Press [SET] to upload favorite patterns to VELOTRACE.";
    show_list(catalogue_.lstv_pattern);
}

void favorites::show_list(list_view& rows) {
    desk_frame_.cmd_download.left = download_left_beside_list;
    desk_frame_.cmd_download.top = download_top_beside_list;
    desk_frame_.fra_desk.visible = true;
    desk_frame_.cmd_run.visible = true;
    desk_frame_.cmd_download.visible = true;
    rows.visible = true;
    desk_frame_.lab_desk_note.visible = true;
    desk_frame_.cmd_check_all.visible = true;
    desk_frame_.cmd_check_none.visible = true;
    exchange_.host().events.pump();
    rows.set_focus();
}

} // namespace desk
