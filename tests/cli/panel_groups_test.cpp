#include "cli/panel_groups.h"

#include "shell/frm_main.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace desk::cli {
namespace {

using names = std::vector<std::string>;

struct expected_group {
    std::string name;
    names values;
    names captions; ///< of the desk's buttons, from left to right
};

const std::vector<expected_group> expected = {
    {"output", {"pc", "hd", "dvi", "hdmi"}, {"PC", "HD", "DVI", "HDMI"}},
    {"hdcp", {"off", "on"}, {"OFF", "ON"}},
    {"audio", {"ext-7.1", "ext-opt", "int-sine"}, {"EXT 7.1CH", "EXT OPT", "INT SINE"}},
    {"lpcm", {"2", "5.1", "7.1"}, {"2 CH", "5.1 CH", "7.1 CH"}},
    {"color-space", {"rgb444", "yuv444", "yuv422"}, {"RGB444", "YUV444", "YUV422"}},
    {"deep-color", {"8", "10", "12"}, {"8 BIT", "10 BIT", "12 BIT"}},
    {"autorun", {"off", "on"}, {"OFF", "ON"}},
    {"favorite", {"off", "on"}, {"OFF", "ON"}},
};

TEST(panel_groups, are_the_rows_of_the_panel_in_its_order) {
    test::fake_machine m;
    frm_main desk(m.host);
    ASSERT_EQ(panel_groups().size(), expected.size());
    int top = -1;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const panel_group& group = panel_groups().at(i);
        EXPECT_EQ(group.name, expected.at(i).name);
        EXPECT_EQ(names(group.values.begin(), group.values.end()), expected.at(i).values) << group.name;
        names captions;
        int left = -1;
        for (const button& b : group.buttons(desk.panel)) {
            captions.push_back(b.caption);
            EXPECT_GT(b.left.get(), left) << b.full_name();
            left = b.left;
        }
        EXPECT_EQ(captions, expected.at(i).captions) << group.name;
        EXPECT_GT(group.buttons(desk.panel).front().top.get(), top) << group.name;
        top = group.buttons(desk.panel).front().top;
    }
}

TEST(panel_groups, have_every_switch_but_reset) {
    test::fake_machine m;
    frm_main desk(m.host);
    std::vector<const control*> of_groups;
    for (const panel_group& group : panel_groups()) {
        for (const button& b : group.buttons(desk.panel))
            of_groups.push_back(&b);
    }
    std::size_t switches = 0;
    for (control* const c : desk.form.controls()) {
        if (c->parent != &desk.panel.fra_setup || !is<button>(*c) || c == &desk.panel.cmd_reset) continue;
        ++switches;
        EXPECT_NE(std::find(of_groups.begin(), of_groups.end(), c), of_groups.end()) << c->full_name();
    }
    EXPECT_EQ(switches, of_groups.size());
}

} // namespace
} // namespace desk::cli
