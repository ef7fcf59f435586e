// What the window shows beside its controls: how far long work is, that a command is tried again, and the chosen color.

#include "bench_fixture.h"
#include "qt/color_patch.h"
#include "qt/work_bar.h"

#include <QLabel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace desk::gui {

namespace {

class work_on_show : public bench {
protected:
    work_on_show() {
        plug_generator();
        start();
    }

    qt::work_bar& bar() { return operator_hand().find<qt::work_bar>("work_bar"); }
    QLabel& words() { return operator_hand().find<QLabel>("retry_label"); }
    qt::color_patch& patch() { return operator_hand().find<qt::color_patch>("color_patch"); }

    /// Looks at the bar from time to time while the desk works.
    void watch() {
        auto* const look = new QTimer(&program->main_window());
        QObject::connect(look, &QTimer::timeout, look, [this] {
            if (!bar().isVisible()) return;
            values.push_back(bar().value());
            said |= words().isVisible() && words().text() == "No answer yet: trying again";
        });
        look->start(5);
    }

    std::vector<int> values;
    bool said = false;
};

TEST_F(work_on_show, rises_to_its_end_at_the_foot_of_the_window_and_goes) {
    operator_hand().click("cmd_fav_timing");
    watch();
    operator_hand().click("cmd_run");
    ASSERT_GT(values.size(), 10U);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_LT(values.front(), bar().maximum() / 2);
    EXPECT_GT(values.back(), bar().maximum() * 9 / 10);
    EXPECT_EQ(bar().geometry().bottom(), program->main_window().height() - 1);
    EXPECT_EQ(bar().width(), program->main_window().width());
    EXPECT_FALSE(said);
    EXPECT_TRUE(wait_until([&] { return !bar().isVisible(); }, 5000));
}

TEST_F(work_on_show, follows_the_window_to_another_size) {
    operator_hand().click("cmd_fav_timing");
    bool at_foot = false;
    operator_hand().when([&] { return bar().isVisible(); },
                         [&] {
                             QWidget& w = program->main_window();
                             w.setMinimumSize(200, 200);
                             w.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
                             w.resize(w.width() + 120, w.height() + 90);
                             at_foot = bar().geometry().bottom() == w.height() - 1 && bar().width() == w.width();
                         });
    operator_hand().click("cmd_run");
    EXPECT_TRUE(at_foot);
}

TEST_F(work_on_show, is_seen_in_the_window_that_lies_over_the_desk_too) {
    const hand h = operator_hand();
    desk().workbench.cmd_w_auto.enabled = true;
    h.click("cmd_edid");
    bool came = false;
    bool at_foot = false;
    bool went = false;
    in_next_window("frm_diag", [&](const hand& run) {
        const QWidget& window = run.find("frm_diag");
        const auto& bar_there = run.find<qt::work_bar>("work_bar");
        EXPECT_FALSE(bar_there.isVisible());
        run.when([&] { return bar_there.isVisible(); },
                 [&] {
                     came = bar().isVisible();
                     at_foot =
                         bar_there.geometry().bottom() == window.height() - 1 && bar_there.width() == window.width();
                 });
        run.type("txt_sn", "1");
        run.click("cmd_run");
        went = wait_until([&] { return !bar_there.isVisible(); }, 5000);
        run.click("cmd_ok");
    });
    h.click("cmd_w_auto");
    EXPECT_TRUE(came) << "in both windows";
    EXPECT_TRUE(at_foot);
    EXPECT_TRUE(went);
}

TEST_F(work_on_show, of_a_single_exchange_is_not_seen) {
    watch();
    operator_hand().click("cmd_timing");
    for (int i = 0; i < 5; ++i)
        operator_hand().click("cmd_run");
    EXPECT_TRUE(values.empty());
}

TEST_F(work_on_show, says_that_a_command_is_tried_again) {
    operator_hand().click("cmd_timing");
    generator->tell("silent");
    watch();
    operator_hand().click("cmd_run");
    EXPECT_TRUE(said);
    EXPECT_FALSE(values.empty()) << "the bar waits too";
    EXPECT_FALSE(words().isVisible());
    EXPECT_EQ(operator_hand().text("lab_timing"), "Link Error");
}

TEST_F(work_on_show, has_no_words_for_a_second_try_that_is_answered_at_once) {
    operator_hand().click("cmd_timing");
    generator->tell("drop 1");
    watch();
    operator_hand().click("cmd_run");
    EXPECT_FALSE(said);
    EXPECT_EQ(generator->commands(), (QStringList{"TIM001", "TIM001"}));
}

class chosen_color : public work_on_show {
protected:
    chosen_color() {
        operator_hand().click("cmd_pattern");
        operator_hand().click_row("lstv_pattern", 13);
    }
    void drag(int index, int value) {
        auto& bar = operator_hand().find<QScrollBar>("hsr_color_setting_" + QString::number(index));
        bar.setSliderDown(true);
        bar.setSliderPosition(value);
    }
    void let_go(int index) {
        operator_hand().find<QScrollBar>("hsr_color_setting_" + QString::number(index)).setSliderDown(false);
    }
};

TEST_F(chosen_color, shows_as_soon_as_it_is_known) {
    EXPECT_FALSE(patch().isVisible());
    operator_hand().click("cmd_download");
    ASSERT_TRUE(patch().isVisible());
    const QWidget& last = operator_hand().find("hsr_color_setting_3");
    EXPECT_GT(patch().geometry().top(), last.geometry().bottom());
    operator_hand().click_row("lstv_pattern", 1);
    EXPECT_FALSE(patch().isVisible());
    operator_hand().click_row("lstv_pattern", 13);
    EXPECT_FALSE(patch().isVisible()) << "the sliders are dead again";
}

TEST_F(chosen_color, follows_the_slider_while_it_is_dragged) {
    operator_hand().click("cmd_download");
    drag(0, 200);
    EXPECT_EQ(patch().color().red(), 200);
    drag(0, 10);
    EXPECT_EQ(patch().color().red(), 10);
    let_go(0);
    drag(3, 90);
    let_go(3);
    EXPECT_EQ(patch().color(), QColor(90, 90, 90));
    EXPECT_EQ(patch().toolTip(), "<qt><nobr>The chosen color: #5A5A5A</nobr></qt>");
    EXPECT_EQ(patch().accessibleName(), "Chosen color #5A5A5A");
    const QImage seen = patch().grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.rect().center()), QColor(90, 90, 90));
}

TEST_F(chosen_color, is_that_of_luminance_and_differences) {
    operator_hand().click("cmd_setup");
    operator_hand().click("cmd_csc_1");
    operator_hand().click("cmd_pattern");
    operator_hand().click_row("lstv_pattern", 13);
    operator_hand().click("cmd_download");
    ASSERT_EQ(operator_hand().text("lab_color_setting_0"), "Cr");
    drag(3, 100);
    let_go(3);
    EXPECT_EQ(patch().color(), QColor(100, 100, 100));
    drag(0, 178);
    let_go(0);
    EXPECT_EQ(patch().color(), QColor(170, 64, 100));
    EXPECT_TRUE(patch().toolTip().contains("#AA4064")) << qPrintable(patch().toolTip());
}

} // namespace

} // namespace desk::gui
