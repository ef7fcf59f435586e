#pragma once

#include "signal/download.h"
#include "support/signal_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace desk::test {

/// Download in any view.
class download_test : public signal_fixture {
protected:
    void press_in(int view) {
        enter(view);
        desk_area.cmd_download.on_click();
    }
    /// A second try sends a query again.
    static strings twice(const std::string& query) { return {query, query}; }
    void expect_one_box() { EXPECT_EQ(std::exchange(m.boxes.all, {}), boxes{box_link_error}); }
    std::string look() const { return look_of(desk_area.cmd_download) + (link.download_mode ? ", downloading" : ""); }
};

} // namespace desk::test
