#include "edid/result_frame.h"

#include "support/edid_fixture.h"

#include <gtest/gtest.h>

namespace desk {
namespace {

using test::strings;

class result_frame_test : public test::edid_fixture {
protected:
    result_frame_test() {
        view.lab_pass.caption = "PASS";
        view.txt_msg.text = "old";
    }
};

TEST_F(result_frame_test, begins_without_a_result_and_with_ok_disabled) {
    remember();
    result.begin("WRITE", "Writing ...\r\n");
    EXPECT_EQ(view.fra_compare.caption, "WRITE");
    EXPECT_TRUE(view.fra_compare.visible);
    EXPECT_FALSE(view.cmd_ok.enabled);
    EXPECT_EQ(view.lab_pass.caption, "");
    EXPECT_EQ(view.txt_msg.text, "Writing ...\r\n");
    EXPECT_EQ(changed(), (strings{"cmd_ok.enabled", "fra_compare.caption", "fra_compare.visible", "lab_pass.caption",
                                  "txt_msg.text"}));
}

TEST_F(result_frame_test, appends_its_messages) {
    result.begin("WRITE", "a\r\n");
    result.append("b");
    result.append("c\r\n");
    EXPECT_EQ(view.txt_msg.text, "a\r\nbc\r\n");
}

TEST_F(result_frame_test, shows_pass_in_green_and_fail_in_red) {
    result.begin("WRITE", "");
    result.show_pass(true);
    EXPECT_EQ(view.lab_pass.caption, "PASS");
    EXPECT_EQ(view.lab_pass.fore_color, 65280U);
    EXPECT_TRUE(view.cmd_ok.enabled);
    result.begin("VERIFY", "");
    result.show_pass(false);
    EXPECT_EQ(view.lab_pass.caption, "FAIL");
    EXPECT_EQ(view.lab_pass.fore_color, 255U);
    EXPECT_TRUE(view.cmd_ok.enabled);
}

TEST_F(result_frame_test, is_hidden_by_ok_and_by_nothing_else) {
    result.begin("WRITE", "text");
    result.show_pass(true);
    EXPECT_TRUE(view.fra_compare.visible);
    remember();
    view.cmd_ok.on_click();
    EXPECT_FALSE(view.fra_compare.visible);
    EXPECT_EQ(changed(), strings{"fra_compare.visible"});
}

} // namespace
} // namespace desk
