#include "report/report_opener.h"

#include "support/fake_machine.h"
#include "support/translation_fixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace desk {
namespace {

using test::edid_of;
using test::failure_of;
using test::usual_edid;

class report_opener_test : public test::translation_fixture {
protected:
    report_opener_test() {
        buffers.trans_buff = usual_edid();
        m.windows.on_show = [this](window& w) { show(w); };
    }
    void show(window& w) {
        names.push_back(w.name);
        texts.push_back(dynamic_cast<text_box&>(*w.find("txt_report")).text);
        enabled.push_back(w.find("cmd_save")->enabled && w.find("cmd_exit")->enabled);
        if (const auto work = std::exchange(in_window, {})) work();
    }
    void press() { view.cmd_edid_report.on_click(); }

    test::fake_machine m;
    report_opener opener{m.host, view, buffers, tables, fields};
    std::vector<std::string> names;
    std::vector<std::string> texts;
    std::vector<bool> enabled;
    std::function<void()> in_window; ///< done once while it is open
};

TEST_F(report_opener_test, has_no_report_before_the_first) { EXPECT_EQ(opener.report_text(), ""); }

TEST_F(report_opener_test, opens_the_window_with_the_report_in_it) {
    press();
    EXPECT_EQ(names, std::vector<std::string>{"frm_report"});
    EXPECT_EQ(enabled, std::vector<bool>{true});
    EXPECT_TRUE(texts.at(0).ends_with("\r\n\r\nEND."));
    EXPECT_EQ(opener.report_text(), texts.at(0));
}

TEST_F(report_opener_test, opens_a_fresh_window_each_time) {
    press();
    buffers.trans_buff = {};
    press();
    EXPECT_EQ(texts.at(1), "Parsing ...\r\n");
    EXPECT_TRUE(opener.report_text().ends_with("Header = 00 00 00 00 00 00 00 00 "));
    buffers.trans_buff = usual_edid();
    press();
    EXPECT_EQ(texts.at(2), texts.at(0));
}

TEST_F(report_opener_test, works_on_what_is_being_translated) {
    buffers.trans_buff = edid_of({{12, {9}}}, usual_edid());
    press();
    EXPECT_EQ(test::value_after("Serial Number =", texts.at(0)), " 9");
    EXPECT_EQ(fields.sn_value, 9);
}

TEST_F(report_opener_test, does_not_open_a_report_that_fails) {
    buffers.trans_buff = edid_of({{23, {255}}}, usual_edid());
    EXPECT_EQ(failure_of([&] { press(); }), failure::overflow);
    EXPECT_TRUE(names.empty());
    EXPECT_TRUE(opener.report_text().ends_with("Gamma Value = "));
}

TEST_F(report_opener_test, can_be_opened_again_before_it_has_come_back) {
    in_window = [this] {
        buffers.trans_buff = {};
        press();
    };
    press();
    EXPECT_EQ(names.size(), 2U);
    EXPECT_EQ(texts.at(1), "Parsing ...\r\n");
    EXPECT_TRUE(opener.report_text().ends_with("Header = 00 00 00 00 00 00 00 00 "));
}

} // namespace
} // namespace desk
