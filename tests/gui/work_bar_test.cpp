// Displays that are not controls: the progress of long work, retries, and the chosen color.

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

class progress_display : public bench {
protected:
    progress_display() {
        plug_generator();
        start();
    }

    qt::work_bar& bar() { return driver().find<qt::work_bar>("work_bar"); }
    QLabel& retry_label() { return driver().find<QLabel>("retry_label"); }
    qt::color_patch& patch() { return driver().find<qt::color_patch>("color_patch"); }

    /// Samples the bar while the desk works.
    void watch() {
        auto* const poll = new QTimer(&program->main_window());
        QObject::connect(poll, &QTimer::timeout, poll, [this] {
            if (!bar().isVisible()) return;
            values.push_back(bar().value());
            says_retry |= retry_label().isVisible() && retry_label().text() == "No answer yet: trying again";
        });
        poll->start(5);
    }

    std::vector<int> values;
    bool says_retry = false;
};

TEST_F(progress_display, grows_to_full_width_at_the_bottom_of_the_window_and_disappears) {
    driver().click("cmd_fav_timing");
    watch();
    driver().click("cmd_run");
    ASSERT_GT(values.size(), 10U);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_LT(values.front(), bar().maximum() / 2);
    EXPECT_GT(values.back(), bar().maximum() * 9 / 10);
    EXPECT_EQ(bar().geometry().bottom(), program->main_window().height() - 1);
    EXPECT_EQ(bar().width(), program->main_window().width());
    EXPECT_FALSE(says_retry);
    EXPECT_TRUE(wait_until([&] { return !bar().isVisible(); }, 5000));
}

TEST_F(progress_display, follows_the_window_size) {
    driver().click("cmd_fav_timing");
    bool at_foot = false;
    driver().when([&] { return bar().isVisible(); },
                  [&] {
                      QWidget& w = program->main_window();
                      w.setMinimumSize(200, 200);
                      w.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
                      w.resize(w.width() + 120, w.height() + 90);
                      at_foot = bar().geometry().bottom() == w.height() - 1 && bar().width() == w.width();
                  });
    driver().click("cmd_run");
    EXPECT_TRUE(at_foot);
}

TEST_F(progress_display, is_visible_in_a_modal_window_too) {
    const ui_driver ui = driver();
    desk().workbench.cmd_w_auto.enabled = true;
    ui.click("cmd_edid");
    bool came = false;
    bool at_foot = false;
    bool went = false;
    in_next_window("frm_diag", [&](const ui_driver& run) {
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
    ui.click("cmd_w_auto");
    EXPECT_TRUE(came) << "in both windows";
    EXPECT_TRUE(at_foot);
    EXPECT_TRUE(went);
}

TEST_F(progress_display, of_a_single_exchange_is_hidden) {
    watch();
    driver().click("cmd_timing");
    for (int i = 0; i < 5; ++i)
        driver().click("cmd_run");
    EXPECT_TRUE(values.empty());
}

TEST_F(progress_display, reports_a_retry) {
    driver().click("cmd_timing");
    generator->command("silent");
    watch();
    driver().click("cmd_run");
    EXPECT_TRUE(says_retry);
    EXPECT_FALSE(values.empty()) << "the bar is delayed too";
    EXPECT_FALSE(retry_label().isVisible());
    EXPECT_EQ(driver().text("lab_timing"), "Link Error");
}

TEST_F(progress_display, says_nothing_about_a_quickly_answered_retry) {
    driver().click("cmd_timing");
    generator->command("drop 1");
    watch();
    driver().click("cmd_run");
    EXPECT_FALSE(says_retry);
    EXPECT_EQ(generator->commands(), (QStringList{"TIM001", "TIM001"}));
}

class chosen_color : public progress_display {
protected:
    chosen_color() {
        driver().click("cmd_pattern");
        driver().click_row("lstv_pattern", 13);
    }
    void drag(int index, int value) {
        auto& bar = driver().find<QScrollBar>("hsr_color_setting_" + QString::number(index));
        bar.setSliderDown(true);
        bar.setSliderPosition(value);
    }
    void release(int index) {
        driver().find<QScrollBar>("hsr_color_setting_" + QString::number(index)).setSliderDown(false);
    }
};

TEST_F(chosen_color, shows_as_soon_as_it_is_known) {
    EXPECT_FALSE(patch().isVisible());
    driver().click("cmd_download");
    ASSERT_TRUE(patch().isVisible());
    const QWidget& last = driver().find("hsr_color_setting_3");
    EXPECT_GT(patch().geometry().top(), last.geometry().bottom());
    driver().click_row("lstv_pattern", 1);
    EXPECT_FALSE(patch().isVisible());
    driver().click_row("lstv_pattern", 13);
    EXPECT_FALSE(patch().isVisible()) << "the sliders are disabled again";
}

TEST_F(chosen_color, follows_the_slider_while_it_is_dragged) {
    driver().click("cmd_download");
    drag(0, 200);
    EXPECT_EQ(patch().color().red(), 200);
    drag(0, 10);
    EXPECT_EQ(patch().color().red(), 10);
    release(0);
    drag(3, 90);
    release(3);
    EXPECT_EQ(patch().color(), QColor(90, 90, 90));
    EXPECT_EQ(patch().toolTip(), "<qt><nobr>The chosen color: #5A5A5A</nobr></qt>");
    EXPECT_EQ(patch().accessibleName(), "Chosen color #5A5A5A");
    const QImage seen = patch().grab().toImage();
    EXPECT_EQ(seen.pixelColor(seen.rect().center()), QColor(90, 90, 90));
}

TEST_F(chosen_color, is_that_of_luminance_and_differences) {
    driver().click("cmd_setup");
    driver().click("cmd_csc_1");
    driver().click("cmd_pattern");
    driver().click_row("lstv_pattern", 13);
    driver().click("cmd_download");
    ASSERT_EQ(driver().text("lab_color_setting_0"), "Cr");
    drag(3, 100);
    release(3);
    EXPECT_EQ(patch().color(), QColor(100, 100, 100));
    drag(0, 178);
    release(0);
    EXPECT_EQ(patch().color(), QColor(170, 64, 100));
    EXPECT_TRUE(patch().toolTip().contains("#AA4064")) << qPrintable(patch().toolTip());
}

} // namespace

} // namespace desk::gui
