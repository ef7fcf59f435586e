#pragma once

#include "signal/autorun.h"
#include "signal/color_settings.h"
#include "signal/refresh.h"

#include <cstddef>
#include <string_view>

namespace desk {

/// Download reads back from the generator what the view edits: the custom string, the colour settings, the favorite
/// flags, the autorun list or the whole panel. It stops at the first failed query and keeps what it has read.
class download {
public:
    download(exchange& link, desk_frame& desk, catalogue& rows, panel& switches, color_settings& colors, autorun& steps,
             refresh& status);

    void cmd_download_click();

private:
    void read_back();
    void read_custom_string();
    void read_color_settings();
    void set_color(std::size_t index, int value);
    bool read_favorites(std::string_view query, int count, list_view& list);
    bool read_autorun_list();
    /// Sends a query with a long answer.
    bool answered_in_full(std::string_view query, int bytes);
    /// The `number`th record of the answer, from 1; shorter or empty where the answer ends.
    std::string_view record_of_answer(int number, int size) const;
    void read_panel();

    exchange& exchange_;
    desk_frame& desk_frame_;
    catalogue& catalogue_;
    panel& panel_;
    color_settings& colors_;
    autorun& autorun_;
    refresh& status_;
};

} // namespace desk
