#include "signal/autorun.h"

#include "runtime/text.h"

namespace desk {

autorun::autorun(desk_frame& desk, catalogue& rows) : desk_(desk), rows_(rows) {
    lstv_auto.columns = {{"No.", 600}, {"Timing", 3000}, {"Pattern", 3300}, {"Interval (sec)", 1500}};
    cmd_auto.on_click = [this] { cmd_auto_click(); };
}

void autorun::fill_intervals() {
    for (const int seconds : {5,   10,  15,  20,  25,  30,  40,  50,  60,  70,  80,  90,  100, 110, 120, 150,
                              180, 210, 240, 270, 300, 330, 360, 390, 420, 450, 480, 510, 540, 570, 600})
        cbo_interval.add_item(number_text(seconds), cbo_interval.list_count());
}

void autorun::fill_rows() {
    for (int i = 1; i <= autorun_rows; ++i) {
        lstv_auto.add_row(number_text(i));
        lstv_auto.set_sub_item(i, 1, "");
        lstv_auto.set_sub_item(i, 2, "");
        lstv_auto.set_sub_item(i, 3, "0");
    }
}

void autorun::cmd_auto_click() {
    rows_.change_view(5);
    lab_auto.caption = "Press [Download] to download VELOTRACE Autorun settings.\r\n"
                       "Press [Add/Replace], [Delete] to Edit your Autorun settings.\r\n"
                       "Press [SET] to upload Autorun settings to VELOTRACE.";
    desk_.cmd_download.left = download_left_over_frame;
    desk_.cmd_download.top = download_top_over_frame;
    fra_auto.visible = true;
    desk_.cmd_run.visible = true;
    desk_.cmd_download.visible = true;
    rows_.cbo_timing.set_list_index(0);
    rows_.cbo_pattern.set_list_index(0);
    cbo_interval.set_list_index(0);
}

} // namespace desk
