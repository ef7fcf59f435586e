#include "controls/layout.h"

#include "controls/list_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk {
namespace {

class laid_out : public testing::Test {
protected:
    laid_out() {
        lay_out(form, {
                          {f, "fra_x", nullptr, 100, 200, 3000, 2000, "A frame", hidden | overlay_frame},
                          {b, "cmd_x(12)", &f, 15, 30, 450, 360, "Pa&nel", disabled},
                          {l, "lab_x", &f, 0, 0, 10, 20, "a label", fixed_pitch | in_middle},
                          {t, "txt_x", &f, 0, 0, 10, 20, "", locked | multi_line | fixed_pitch},
                          {big, "lab_big", nullptr, 0, 0, 10, 20, "", large_bold},
                          {k, "chk_x", nullptr, 0, 0, 10, 20, "check"},
                          {o, "opt_x(1)", nullptr, 0, 0, 10, 20, "option"},
                      });
    }
    window form;
    frame f;
    button b;
    label l;
    text_box t;
    label big;
    check_box k;
    option_button o;
};

TEST_F(laid_out, gives_names_and_indexes) {
    EXPECT_EQ(f.name, "fra_x");
    EXPECT_EQ(f.index, -1);
    EXPECT_EQ(b.name, "cmd_x");
    EXPECT_EQ(b.index, 12);
    EXPECT_EQ(o.index, 1);
    EXPECT_EQ(form.find("cmd_x(12)"), &b);
}

TEST_F(laid_out, gives_places) {
    EXPECT_EQ(b.parent, &f);
    EXPECT_EQ(f.parent, nullptr);
    EXPECT_EQ(b.left, 15);
    EXPECT_EQ(b.top, 30);
    EXPECT_EQ(b.width, 450);
    EXPECT_EQ(b.height, 360);
    EXPECT_EQ(b.owner, &form);
}

TEST_F(laid_out, gives_captions_and_takes_the_mnemonic_out) {
    EXPECT_EQ(b.caption, "Panel");
    EXPECT_EQ(b.mnemonic, 'n');
    EXPECT_EQ(f.caption, "A frame");
    EXPECT_EQ(l.caption, "a label");
    EXPECT_EQ(k.caption, "check");
    EXPECT_EQ(o.caption, "option");
}

TEST_F(laid_out, follows_the_flags) {
    EXPECT_FALSE(f.visible);
    EXPECT_TRUE(b.visible);
    EXPECT_FALSE(b.enabled);
    EXPECT_TRUE(l.enabled);
    EXPECT_EQ(l.font, text_font::fixed);
    EXPECT_TRUE(l.in_middle);
    EXPECT_EQ(f.role, frame_kind::overlay);
    EXPECT_TRUE(t.locked);
    EXPECT_TRUE(t.multi_line);
    EXPECT_EQ(t.font, text_font::fixed);
    EXPECT_EQ(big.font, text_font::large_bold);
    EXPECT_FALSE(big.in_middle);
}

TEST_F(laid_out, keeps_the_order_of_the_table) {
    EXPECT_EQ(form.controls(), (std::vector<control*>{&f, &b, &l, &t, &big, &k, &o}));
}

TEST(lay_out, leaves_a_button_without_a_mark_without_a_mnemonic) {
    window form;
    button b;
    lay_out(form, {{b, "cmd_x", nullptr, 0, 0, 1, 1, "OK"}});
    EXPECT_EQ(b.caption, "OK");
    EXPECT_EQ(b.mnemonic, 0);
}

} // namespace
} // namespace desk
