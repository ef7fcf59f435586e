// The window at every size: everything scales together, and nothing is lost.

#include "bench_fixture.h"
#include "controls/kinds.h"
#include "generator/sink_edids.h"
#include "qt/appearance.h"
#include "qt/plan_area.h"
#include "qt/plan_fit.h"
#include "qt/plan_scale.h"
#include "qt/text_label.h"
#include "qt/text_page.h"
#include "visibility.h"

#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace desk::gui {

namespace {

constexpr QSize desk_plan(11700, 9090);

class window_size : public bench {
protected:
    window_size() { plug_generator(); }

    QWidget& window() { return program->main_window(); }
    double scale() { return qt::plan_scale(&window()); }
    void resize(QSize size) {
        window().resize(size);
        ASSERT_TRUE(wait_until([&] { return window().windowHandle()->size() == size; }, 5000));
        QCoreApplication::processEvents();
    }
    /// Resizes the window to fit its plan at `steps` sixteenths.
    void show_at(int steps) {
        resize(qt::plan_pixels(desk_plan, steps / 16.0));
        ASSERT_EQ(scale(), steps / 16.0);
    }
    template <class Work>
    void at_every_scale(const Work& work) {
        for (int steps = 12; steps <= 32; ++steps) {
            SCOPED_TRACE(std::to_string(steps) + "/16");
            show_at(steps);
            work();
        }
    }
    void show_text(const std::string& text) {
        desk().workbench.txt_read.text = text;
        driver().click("lab_edid_src");
    }
};

std::string lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "line " + std::to_string(i) + " of many, and longer than the box is wide at any scale\r\n";
    return text;
}

TEST_F(window_size, draws_every_control_in_proportion_to_the_plan) {
    start();
    at_every_scale([&] {
        for (const control* c : desk().form.controls()) {
            if (is<timer, line>(*c)) continue;
            int left = c->left;
            int top = c->top;
            for (const control* around = c->parent; around != nullptr; around = around->parent) {
                left += around->left;
                top += around->top;
            }
            const QString index = c->index < 0 ? "" : "_" + QString::number(c->index);
            const QWidget& w = driver().find(QString::fromStdString(c->name) + index);
            const QRect drawn(w.mapTo(&window(), QPoint()), w.size());
            EXPECT_EQ(drawn.left(), std::floor(left * scale() / 15)) << c->full_name();
            EXPECT_EQ(drawn.top(), std::floor(top * scale() / 15)) << c->full_name();
            EXPECT_EQ(drawn.right() + 1, std::floor((left + c->width) * scale() / 15)) << c->full_name();
            EXPECT_EQ(drawn.bottom() + 1, std::floor((top + c->height) * scale() / 15)) << c->full_name();
        }
    });
}

TEST_F(window_size, keeps_what_touches_together) {
    start();
    driver().click("cmd_timing");
    at_every_scale([&] {
        const QRect list = driver().find("lstv_timing").geometry();
        const QRect view = driver().find("lab_desk").geometry();
        EXPECT_EQ(list.topLeft(), view.topLeft());
        EXPECT_EQ(list.bottom(), view.bottom());
        EXPECT_EQ(driver().find("fra_desk").geometry().right(), view.right());
    });
}

TEST_F(window_size, keeps_the_boxes_of_the_established_timings_off_the_text) {
    start();
    driver().click("cmd_edid");
    driver().click("cmd_read");
    driver().click("cmd_read_translate");
    driver().click_node("tree_edid", {"Block 0: VESA Basic Block", "Established Timings"});
    at_every_scale([&] {
        for (int i = 0; i < 17; ++i) {
            const QString name = "chk_established_" + QString::number(i);
            EXPECT_FALSE(covers_text(driver(), "txt_edid", name)) << qPrintable(name);
        }
    });
}

TEST_F(window_size, keeps_the_pictures_of_the_speakers_off_the_text) {
    start();
    driver().click("cmd_edid");
    bytes edid = first_sink_edid(1);
    const bytes speakers = {0x83, 0x01, 0x00, 0x00};
    *(std::search(edid.begin() + 128, edid.end(), speakers.begin(), speakers.end()) + 1) = 0x7F;
    put_file("sink.bin", {reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size())});
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("sink.bin"));
    driver().click("cmd_load");
    driver().click("cmd_write_translate");
    driver().click_node("tree_edid",
                        {"Block 1: CEA 861 Block", "Data Block Collection", "Speaker Allocation Data Block"});
    at_every_scale([&] {
        for (const char* name : {"fl", "flc", "fc", "frc", "fr", "lfe", "rl", "rlc", "rc", "rrc", "rr"}) {
            const QString picture = QString("pic_speaker_") + name;
            ASSERT_TRUE(driver().is_shown(picture)) << name;
            EXPECT_FALSE(covers_text(driver(), "txt_edid", picture)) << name;
        }
    });
}

TEST_F(window_size, keeps_the_fixed_pitch_text_on_its_grid) {
    start();
    driver().click("cmd_edid");
    desk().translation_frame.fra_edid_edit.visible = true;
    desk().translation_frame.txt_edid.text = "Established Timings\r\n\r\n  720x400 70Hz\r\nWWWW iiii";
    driver().click("lab_edid_src");
    auto& page = driver().find<QTextEdit>("txt_edid");
    at_every_scale([&] {
        QTextCursor at(page.document());
        const int top = page.cursorRect(at).top();
        const int left = page.cursorRect(at).left();
        at.movePosition(QTextCursor::End);
        EXPECT_EQ(page.cursorRect(at).top() - top, 3 * 16 * scale());
        EXPECT_NEAR(page.cursorRect(at).left() - left, 9 * 8 * scale(), 0.5);
    });
}

TEST_F(window_size, keeps_the_titles_beside_their_rows) {
    start();
    driver().click("cmd_setup");
    at_every_scale([&] {
        for (const char* name : {"cmd_out_0", "cmd_hdcp_0", "cmd_asc_0", "cmd_lpcm_0", "cmd_csc_0", "cmd_deep_0",
                                 "cmd_auto_go_0", "cmd_fav_0"})
            EXPECT_TRUE(has_title_beside(driver(), "lab_setup", name)) << name;
    });
    driver().click("cmd_timing");
    driver().click_row("lstv_timing", 7);
    driver().click("cmd_download");
    at_every_scale([&] {
        for (const char* name :
             {"txt_htotal_pix", "txt_hactive_pix", "txt_hdelay_pix", "txt_hsw_pix", "txt_hpol", "txt_hf"})
            EXPECT_TRUE(has_title_beside(driver(), "lab_hori", name)) << name;
        for (const char* name :
             {"txt_vtotal_line", "txt_vactive_line", "txt_vdelay_line", "txt_vsw_line", "txt_vpol", "txt_vf"})
            EXPECT_TRUE(has_title_beside(driver(), "lab_vert", name)) << name;
    });
}

TEST_F(window_size, cuts_no_caption) {
    start();
    at_every_scale([&] { EXPECT_EQ(clipped_captions(window()), QStringList()); });
}

TEST_F(window_size, works_by_mouse_at_every_size) {
    start();
    driver().click("cmd_timing");
    for (const int steps : {12, 19, 32}) {
        show_at(steps);
        driver().click_row("lstv_timing", steps);
        driver().click("cmd_run");
        EXPECT_TRUE(driver().text("lab_timing").contains(QString("[%1]").arg(steps))) << steps;
    }
    driver().click("cmd_fav_timing");
    for (const int steps : {12, 19, 32}) {
        show_at(steps);
        driver().click_check("lstv_timing", 3);
        EXPECT_EQ(desk().catalogue.lstv_timing.row(3).checked, steps != 19) << steps;
    }
}

TEST_F(window_size, leaves_margins_around_a_plan_of_another_shape) {
    start();
    resize({2000, 606});
    EXPECT_EQ(scale(), 1);
    const control& about = desk().about.cmd_about;
    const QPoint at_1(about.left / 15, about.top / 15);
    EXPECT_EQ(driver().find("cmd_about").mapTo(&window(), QPoint()), at_1 + QPoint((2000 - 780) / 2, 0));
    resize({780, 1406});
    EXPECT_EQ(scale(), 1);
    EXPECT_EQ(driver().find("cmd_about").mapTo(&window(), QPoint()), at_1 + QPoint(0, 400));
    driver().click("cmd_timing");
    EXPECT_EQ(desk().exchange.view_mode, 0);
}

TEST_F(window_size, fills_a_large_screen) {
    start();
    resize({3840, 2130});
    EXPECT_EQ(scale(), 3.5);
    window().showMaximized();
    EXPECT_TRUE(wait_until([&] { return window().height() > 2300; }, 5000));
    EXPECT_EQ(scale(), qt::fitting_scale(desk_plan, window().size(), 1));
    window().showNormal();
    EXPECT_TRUE(wait_until([&] { return window().size() == QSize(3840, 2130); }, 5000));
    EXPECT_EQ(scale(), 3.5);
}

TEST_F(window_size, has_scroll_bars_if_a_smaller_plan_would_be_illegible) {
    start();
    auto& area = *window().findChild<qt::plan_area*>();
    EXPECT_FALSE(area.scrolls());
    resize({200, 100});
    EXPECT_EQ(scale(), 0.75);
    EXPECT_TRUE(area.scrolls());
    const auto in_sight = [&](const char* name) {
        const QWidget& w = driver().find(name);
        return area.viewport()->rect().intersects(QRect(w.mapTo(area.viewport(), QPoint()), w.size()));
    };
    EXPECT_FALSE(in_sight("cmd_refresh"));
    driver().find("cmd_refresh").setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(in_sight("cmd_refresh"));
    driver().find("cmd_about").setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(in_sight("cmd_about"));
    EXPECT_FALSE(in_sight("cmd_refresh"));
    resize({3000, 300});
    EXPECT_EQ(scale(), 0.75);
    resize({780, 606});
    EXPECT_EQ(scale(), 1);
    EXPECT_FALSE(area.scrolls());
    const control& corner = desk().catalogue.cmd_timing;
    EXPECT_EQ(driver().find("cmd_timing").mapTo(&window(), QPoint()), QPoint(corner.left / 15, corner.top / 15));
}

TEST_F(window_size, keeps_the_place_in_a_long_text_and_its_selection) {
    start();
    driver().click("cmd_edid");
    show_text(lines(200));
    auto& page = driver().find<qt::text_page>("txt_read");
    page.setFocus();
    page.select(5, 12);
    page.verticalScrollBar()->setValue(100);
    page.horizontalScrollBar()->setValue(10 * 8);
    for (const int steps : {13, 32, 12, 24, 16}) {
        show_at(steps);
        EXPECT_EQ(page.verticalScrollBar()->value(), 100) << steps;
        EXPECT_NEAR(page.horizontalScrollBar()->value(), 10 * 8 * scale(), 3) << steps;
        EXPECT_EQ(page.anchor(), 5U);
        EXPECT_EQ(page.cursor(), 12U);
        EXPECT_EQ(QApplication::focusWidget(), &page);
    }
}

TEST_F(window_size, puts_the_cursor_at_the_click) {
    start();
    driver().click("cmd_edid");
    show_text(lines(20));
    auto& page = driver().find<qt::text_page>("txt_read");
    at_every_scale([&] {
        for (const std::size_t offset : {0U, 7U, 30U, 33U}) {
            const QRect place = page.place_of(page.lines().begin_of(3) + offset);
            EXPECT_EQ(place.left(), 4 + qRound(static_cast<double>(offset) * 8 * scale()));
            EXPECT_EQ(page.offset_at({place.left() + 1, place.center().y()}), page.lines().begin_of(3) + offset);
        }
    });
}

TEST_F(window_size, keeps_the_place_in_the_analysis_and_its_selection) {
    start();
    driver().click("cmd_edid");
    desk().translation_frame.fra_edid_edit.visible = true;
    desk().translation_frame.txt_edid.text = lines(200);
    driver().click("lab_edid_src");
    auto& page = driver().find<QTextEdit>("txt_edid");
    QTextCursor word(page.document());
    word.setPosition(4);
    word.setPosition(9, QTextCursor::KeepAnchor);
    page.setTextCursor(word);
    page.verticalScrollBar()->setValue(50 * 16);
    for (const int steps : {13, 32, 12, 24, 16}) {
        show_at(steps);
        EXPECT_EQ(page.verticalScrollBar()->value(), 50 * steps) << steps;
        EXPECT_EQ(page.textCursor().selectedText(), word.selectedText());
    }
}

TEST_F(window_size, keeps_the_place_in_a_list) {
    start();
    driver().click("cmd_timing");
    auto& list = driver().find<QTreeWidget>("lstv_timing");
    driver().click_row("lstv_timing", 40);
    list.setFocus();
    list.scrollToItem(list.topLevelItem(30), QAbstractItemView::PositionAtTop);
    for (const int steps : {13, 32, 12, 24, 16}) {
        show_at(steps);
        EXPECT_EQ(list.verticalScrollBar()->value(), 30) << steps;
        EXPECT_EQ(list.indexOfTopLevelItem(list.currentItem()), 39);
        EXPECT_EQ(QApplication::focusWidget(), &list);
    }
}

TEST_F(window_size, shows_every_column_of_a_list) {
    start();
    const auto expect_whole = [this](const char* button, const char* list) {
        driver().click(button);
        at_every_scale([&] {
            const auto& tree = driver().find<QTreeWidget>(list);
            EXPECT_EQ(tree.horizontalScrollBar()->maximum(), 0) << list;
        });
    };
    expect_whole("cmd_timing", "lstv_timing");
    expect_whole("cmd_pattern", "lstv_pattern");
    expect_whole("cmd_auto", "lstv_auto");
}

TEST_F(window_size, keeps_the_widths_of_columns) {
    start();
    driver().click("cmd_auto");
    QHeaderView& header = *driver().find<QTreeWidget>("lstv_auto").header();
    int width = header.sectionSize(0);
    EXPECT_EQ(width, desk().autorun.lstv_auto.columns.front().width / 15);
    show_at(24);
    EXPECT_NEAR(header.sectionSize(0), width * 1.5, 1);
    // the operator drags one
    header.resizeSection(0, 120);
    show_at(32);
    EXPECT_NEAR(header.sectionSize(0), 160, 1);
}

TEST_F(window_size, changes_no_model_and_raises_no_event) {
    start();
    driver().click("cmd_timing");
    int events = 0;
    program->gate().follow = [&, follow = program->gate().follow] {
        ++events;
        follow();
    };
    at_every_scale([] {});
    EXPECT_EQ(events, 0);
    EXPECT_TRUE(desk().form.take_changed().empty());
}

TEST_F(window_size, changes_during_an_exchange) {
    start();
    driver().click("cmd_timing");
    driver().click_row("lstv_timing", 7);
    bool resized = false;
    driver().when([this] { return !desk().desk_frame.cmd_run.enabled; },
                  [&] {
                      window().resize(1200, 900);
                      QCoreApplication::processEvents();
                      EXPECT_FALSE(desk().desk_frame.cmd_run.enabled.get());
                      EXPECT_EQ(scale(), 23 / 16.0);
                      resized = true;
                  });
    driver().click("cmd_run");
    EXPECT_TRUE(resized);
    EXPECT_TRUE(driver().text("lab_timing").contains("[07]"));
    EXPECT_TRUE(desk().desk_frame.cmd_run.enabled.get());
}

TEST_F(window_size, changes_under_a_box) {
    start();
    driver().click("cmd_disconn");
    bool resized = false;
    in_next_window("", [&](const ui_driver&) {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        const QFont font = box->font();
        resize({400, 300});
        resize({1560, 1212});
        EXPECT_EQ(scale(), 2);
        EXPECT_EQ(qt::plan_scale(box), 1);
        EXPECT_EQ(box->font(), font);
        resized = true;
        QTest::keyClick(box, Qt::Key_Escape);
    });
    driver().click("cmd_refresh");
    EXPECT_TRUE(resized);
}

TEST_F(window_size, reaches_the_programmers_window) {
    start();
    show_at(24);
    driver().click("cmd_edid");
    driver().click("cmd_read");
    bool seen = false;
    in_next_window("frm_diag", [&](const ui_driver& ui) {
        QWidget& diag = ui.find("frm_diag");
        EXPECT_EQ(qt::plan_scale(&diag), 1.5);
        const QRect ok = ui.find("cmd_ok").geometry();
        diag.resize(diag.size() * 2);
        QCoreApplication::processEvents();
        EXPECT_EQ(qt::plan_scale(&diag), 3);
        EXPECT_NEAR(ui.find("cmd_ok").geometry().left(), 2 * ok.left(), 1);
        EXPECT_NEAR(ui.find("cmd_ok").geometry().bottom(), 2 * ok.bottom() + 1, 1);
        seen = true;
        ui.click("cmd_ok");
    });
    driver().click("cmd_sum_read");
    EXPECT_TRUE(seen);
}

TEST_F(window_size, gives_the_text_of_the_report_more_lines) {
    start();
    driver().click("cmd_edid");
    driver().click("cmd_read");
    driver().click("cmd_read_translate");
    bool seen = false;
    in_next_window("frm_report", [&](const ui_driver& ui) {
        QWidget& report = ui.find("frm_report");
        auto& text = ui.find<QPlainTextEdit>("txt_report");
        const QFont font = text.font();
        const QSize before = text.size();
        const QSize first_size = report.size();
        const QSize exit_size = ui.find("cmd_exit").size();
        const int lines_before = text.verticalScrollBar()->pageStep();
        const QPoint from_corner = report.rect().bottomRight() - ui.find("cmd_exit").geometry().bottomRight();
        report.resize(report.size() + QSize(200, 300));
        QCoreApplication::processEvents();
        EXPECT_EQ(text.font(), font);
        EXPECT_EQ(text.size(), before + QSize(200, 300));
        EXPECT_GT(text.verticalScrollBar()->pageStep(), lines_before + 10);
        EXPECT_EQ(report.rect().bottomRight() - ui.find("cmd_exit").geometry().bottomRight(), from_corner);
        EXPECT_EQ(ui.find("cmd_exit").size(), exit_size);
        report.resize(first_size * 0.8);
        QCoreApplication::processEvents();
        EXPECT_EQ(qt::plan_scale(&report), 12 / 16.0) << "a smaller window is drawn smaller";
        seen = true;
        ui.click("cmd_exit");
    });
    driver().click("cmd_edid_report");
    EXPECT_TRUE(seen);
}

TEST_F(window_size, is_at_first_the_largest_that_fits_the_screen) {
    start();
    QCoreApplication::processEvents();
    const QRect available = window().screen()->availableGeometry();
    EXPECT_TRUE(available.contains(window().frameGeometry()));
    const QSize margins = window().size() - qt::plan_pixels(desk_plan, scale());
    EXPECT_TRUE(QRect(0, 0, 2, 2).contains(margins.width(), margins.height())) << margins.width();
    EXPECT_FALSE(window().findChild<qt::plan_area*>()->scrolls());
    if (scale() < 1) {
        const QSize frame = window().frameSize() - window().size();
        const QSize next = qt::plan_pixels(desk_plan, scale() + 1 / 16.0) + frame;
        EXPECT_FALSE(available.contains(QRect(available.topLeft(), next)));
    }
}

TEST_F(window_size, opens_maximised_if_the_window_manager_wants_it) {
    ASSERT_TRUE(program->start());
    window().setWindowState(Qt::WindowMaximized);
    EXPECT_TRUE(wait_until([&] { return window().width() > 3800; }, 5000));
    QCoreApplication::processEvents();
    EXPECT_TRUE(window().isMaximized());
    EXPECT_EQ(scale(), qt::fitting_scale(desk_plan, window().size(), 1));
}

} // namespace

} // namespace desk::gui
