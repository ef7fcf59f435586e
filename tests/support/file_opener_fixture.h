#pragma once

#include "edid/file_opener.h"
#include "support/edid_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace desk::test {

inline strings sorted(strings names) {
    std::sort(names.begin(), names.end());
    return names;
}
inline strings joined(strings all, const strings& more) {
    all.insert(all.end(), more.begin(), more.end());
    return sorted(all);
}

// what opening a first file changes
inline const strings named{"edid_file_name", "form.caption", "lab_pre_f(0).caption"};
inline const strings sending{"cmd_verify.enabled", "cmd_w_auto.enabled", "cmd_write.enabled"};
inline const strings parsed{"cmd_sum_write.enabled", "cmd_write_translate.enabled", "file_ok", "write_buff"};

/// OPEN in a folder of its own, with the texts of an earlier file.
class file_opener_test : public test::edid_fixture {
protected:
    file_opener_test() {
        buffers.write_buff.fill(0x33);
        view.txt_write.text = "old";
        view.dia_file.init_dir = "/where/it/was";
    }
    std::string title_of(const std::string& name) const { return "VELOTRACE  - " + path(name); }
    /// What has changed since `remember`, except for the file itself.
    strings changed_except(const std::string& name) const {
        strings all = changed();
        std::erase(all, "file " + name);
        return all;
    }
    void expect_box(const std::string& text) {
        EXPECT_EQ(std::exchange(m.boxes.all, {}),
                  boxes{(test::noted_boxes::shown{text, box_icon::critical, box_buttons::ok})});
    }
    /// While a failure has left the file number open, no other file can be opened.
    void expect_number_1(bool still_open) {
        directory.put("next.bin", "\x77");
        open("next.bin");
        EXPECT_EQ(view.txt_write.text, still_open ? "" : "77 ");
        EXPECT_EQ(form.caption == title_of("next.bin"), !still_open);
    }
};

} // namespace desk::test
