// The real window: every control has a widget in its place, with its name and caption.

#include "bench_fixture.h"
#include "controls/kinds.h"
#include "qt/appearance.h"
#include "qt/drawing.h"
#include "qt/qt_dialogs.h"
#include "runtime/version.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGroupBox>
#include <QLineEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextLayout>
#include <QTimer>

#include <functional>

namespace desk::gui {

namespace {

class real_window : public bench {
protected:
    real_window() { plug_generator(); }
};

TEST_F(real_window, has_a_widget_at_the_place_of_every_control) {
    start();
    const ui_driver ui = driver();
    int seen = 0;
    for (const control* c : desk().form.controls()) {
        if (is<timer, line>(*c)) continue;
        QString name = QString::fromStdString(c->name);
        if (c->index >= 0) name += "_" + QString::number(c->index);
        const QWidget& w = ui.find(name);
        EXPECT_EQ(w.geometry(), QRect(c->left / 15, c->top / 15, c->width / 15, c->height / 15)) << c->full_name();
        EXPECT_EQ(w.isEnabledTo(w.parentWidget()), c->enabled.get()) << c->full_name();
        EXPECT_EQ(w.isVisible(), c->shown()) << c->full_name();
        ++seen;
    }
    EXPECT_GT(seen, 170);
}

TEST_F(real_window, names_every_button_for_screen_readers) {
    start();
    for (const QAbstractButton* b : program->main_window().findChildren<QAbstractButton*>()) {
        if (!b->objectName().startsWith("cmd_")) continue;
        QString caption = b->text();
        EXPECT_EQ(b->accessibleName(), caption.remove('&').simplified()) << qPrintable(b->objectName());
        EXPECT_FALSE(b->accessibleName().isEmpty()) << qPrintable(b->objectName());
    }
}

TEST_F(real_window, shows_its_build_in_the_tooltip_of_about) {
    start();
    const QString tool_tip = driver().find("cmd_about").toolTip();
    EXPECT_TRUE(tool_tip.contains("VELOTRACE Desk " + QString::fromStdString(std::string(build_version()))))
        << qPrintable(tool_tip);
}

TEST_F(real_window, cuts_no_caption_of_a_button_or_a_frame) {
    start();
    for (const QAbstractButton* b : program->main_window().findChildren<QAbstractButton*>()) {
        if (!b->objectName().startsWith("cmd_") && !b->objectName().startsWith("opt_")) continue;
        EXPECT_LE(QFontMetricsF(b->font()).horizontalAdvance(QString(b->text()).remove('&')) + 10, b->width())
            << qPrintable(b->objectName());
    }
    for (const QGroupBox* g : program->main_window().findChildren<QGroupBox*>())
        EXPECT_LE(QFontMetricsF(qt::title_font(*g)).horizontalAdvance(g->title()) + 12, g->width())
            << qPrintable(g->objectName());
}

TEST_F(real_window, is_stepped_through_with_the_tab_key) {
    start();
    const ui_driver ui = driver();
    ui.find("cbo_com").setFocus();
    QStringList order;
    for (int i = 0; i < 6; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(order,
              QStringList({"cmd_conn", "cmd_disconn", "cmd_about", "cmd_timing", "cmd_pattern", "cmd_fav_timing"}));
}

TEST_F(real_window, presses_the_button_with_the_focus_on_enter) {
    start();
    const ui_driver ui = driver();
    ui.find("cmd_edid").setFocus();
    ui.press_key("cmd_edid", Qt::Key_Return);
    EXPECT_EQ(desk().exchange.view_mode, 4);
}

TEST_F(real_window, takes_mnemonics) {
    start();
    QTest::keyClick(&program->main_window(), Qt::Key_T, Qt::AltModifier);
    EXPECT_TRUE(wait_until([&] { return desk().exchange.view_mode == 0; }, 5000));
}

TEST_F(real_window, puts_its_fixed_pitch_text_on_a_grid_of_8_by_16_pixels) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    desk().translation_frame.fra_edid_edit.visible = true;
    desk().translation_frame.txt_edid.text = "Established Timings\r\n\r\n  720x400 70Hz\r\nWWWW iiii";
    ui.click("lab_edid_src"); // any event updates the window
    auto& page = ui.find<QTextEdit>("txt_edid");
    EXPECT_EQ(QFontInfo(page.font()).family(), "Liberation Mono");
    EXPECT_NEAR(QFontMetricsF(page.font()).horizontalAdvance("WWWW iiii"), 9 * 8, 0.01);
    ASSERT_EQ(page.document()->blockCount(), 4);
    for (QTextBlock line = page.document()->begin(); line.isValid(); line = line.next())
        EXPECT_NEAR(line.layout()->position().y(), line.blockNumber() * 16, 0.01);
}

TEST_F(real_window, lets_the_clock_share_the_phase_of_a_timer_that_starts) {
    start();
    const std::function<void()> share_phase = program->gate().timer_starts;
    ASSERT_TRUE(share_phase);
    int starts = 0;
    program->gate().timer_starts = [&] {
        ++starts;
        share_phase();
    };
    const auto enable = [&](bool enabled) { program->gate().run([&] { desk().exchange.tim_rx.enabled = enabled; }); };
    enable(true);
    EXPECT_EQ(starts, 1);
    enable(true);
    EXPECT_EQ(starts, 1) << "it runs already";
    enable(false);
    enable(true);
    EXPECT_EQ(starts, 2);
}

TEST_F(real_window, follows_a_text_that_grows_and_one_that_is_replaced) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    std::string text;
    for (int i = 0; i < 20; ++i) {
        text += "line " + std::to_string(i) + "\r\n";
        desk().workbench.txt_read.text = text;
        ui.click("lab_read");
        EXPECT_EQ(ui.text("txt_read"), qt::shown_text(text));
    }
    desk().workbench.txt_read.text = "another";
    ui.click("lab_read");
    EXPECT_EQ(ui.text("txt_read"), "another");
    desk().workbench.txt_read.text = "";
    ui.click("lab_read");
    EXPECT_EQ(ui.text("txt_read"), "");
}

/// Calls `work` on the next dialog, which then closes.
void in_next_dialog(std::function<void(QFileDialog&)> work) {
    QTimer::singleShot(50, qApp, [work = std::move(work)] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        work(*dialog);
    });
}

TEST_F(real_window, shows_a_file_dialog_as_it_is_set_up) {
    start();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qt::qt_file_dialog dialogs(program->gate());
    file_dialog_setup setup;
    setup.title = "Open edid file";
    setup.filter = "hex / bin|*.hex;*.bin|*.*|*.*";
    setup.filter_index = 2;
    setup.init_dir = directory.path().toStdString();
    in_next_dialog([&](QFileDialog& d) {
        EXPECT_EQ(d.windowTitle(), "Open edid file");
        EXPECT_EQ(d.nameFilters(), QStringList({"hex / bin (*.hex *.bin)", "*.* (*)"}));
        EXPECT_EQ(d.selectedNameFilter(), "*.* (*)");
        EXPECT_EQ(QDir(d.directory()).canonicalPath(), QDir(directory.path()).canonicalPath());
        d.selectNameFilter(d.nameFilters().constFirst());
        d.findChild<QLineEdit*>("fileNameEdit")->setText("marlo_rs232.ini");
        QTest::keyClick(d.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    const auto choice = dialogs.show(setup);
    ASSERT_TRUE(choice.has_value());
    EXPECT_EQ(choice->filter_index, 1);
    EXPECT_TRUE(choice->file_name.ends_with("marlo_rs232.ini"));

    in_next_dialog([](QFileDialog& d) { d.reject(); });
    EXPECT_FALSE(dialogs.show(setup).has_value());
}

TEST_F(real_window, appends_the_filters_extension) {
    start();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qt::qt_file_dialog dialogs(program->gate());
    file_dialog_setup setup;
    setup.kind = file_dialog_setup::dialog_kind::save;
    setup.filter = "*.hex|*.hex|*.bin|*.bin";
    setup.init_dir = directory.path().toStdString();
    const auto saved_as = [&](const QString& typed, int filter) {
        in_next_dialog([&](QFileDialog& d) {
            d.selectNameFilter(d.nameFilters().at(filter - 1));
            d.findChild<QLineEdit*>("fileNameEdit")->setText(typed);
            QTest::keyClick(d.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
        });
        const auto choice = dialogs.show(setup);
        return choice ? QFileInfo(QString::fromStdString(choice->file_name)).fileName() : QString();
    };
    EXPECT_EQ(saved_as("unit", 1), "unit.hex");
    EXPECT_EQ(saved_as("unit", 2), "unit.bin");
    EXPECT_EQ(saved_as("v1.3", 1), "v1.3.hex");
    EXPECT_EQ(saved_as("v1.3", 2), "v1.3.bin");
    EXPECT_EQ(saved_as("unit.hex", 1), "unit.hex");
    EXPECT_EQ(saved_as("unit.HEX", 1), "unit.HEX");
    EXPECT_EQ(saved_as("unit.bin", 1), "unit.bin.hex");
}

} // namespace

} // namespace desk::gui
