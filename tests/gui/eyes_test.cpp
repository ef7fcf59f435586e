// What is seen without colours, at every scale, and in long lists.

#include "bench_fixture.h"
#include "qt/look.h"
#include "qt/qt_dialogs.h"
#include "qt/text_label.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace desk::gui {

namespace {

class eyes : public bench {
protected:
    eyes() { plug_generator(); }

    /// The window follows its models behind any event.
    void follow() { operator_hand().click("lab_com"); }

    /// The left end of a button: where it is dark, whatever its colour.
    QImage marks(const QString& name) {
        QImage end = operator_hand().find(name).grab().toImage().copy(0, 0, 14, 24);
        for (int y = 0; y < end.height(); ++y) {
            for (int x = 0; x < end.width(); ++x)
                end.setPixel(x, y, qGray(end.pixel(x, y)) < 40 ? 1 : 0);
        }
        return end;
    }

    bool is_seen(const QString& list) {
        auto& tree = operator_hand().find<QTreeWidget>(list);
        return tree.viewport()->rect().contains(tree.visualItemRect(tree.currentItem()));
    }
};

TEST_F(eyes, tell_the_lit_buttons_apart_without_colours) {
    start();
    operator_hand().click("cmd_setup");
    std::vector<QImage> seen;
    for (const color lamp : {color_button_face, color_current_view, color_green, color_red}) {
        desk().switches.cmd_out[0].back_color = lamp;
        follow();
        seen.push_back(marks("cmd_out_0"));
    }
    for (std::size_t i = 0; i < seen.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_NE(seen[i], seen[k]) << i << " and " << k;
    }
}

TEST_F(eyes, see_the_caption_beside_the_mark) {
    start();
    for (const QPushButton* b : program->main_window().findChildren<QPushButton*>()) {
        // the repair buttons are never lit
        if (b->objectName().startsWith("cmd_recover")) continue;
        EXPECT_GE((b->width() - QFontMetricsF(b->font()).horizontalAdvance(QString(b->text()).remove('&'))) / 2, 9)
            << qPrintable(b->objectName());
    }
}

TEST_F(eyes, read_text_on_every_colour) {
    start();
    const QColor black = qt::color_of(color_black);
    for (const color ground : {color_button_face, color_current_view, color_green, color_red, color_white})
        EXPECT_GE(qt::contrast(black, qt::color_of(ground)), qt::readable_contrast) << ground;
    EXPECT_GE(qt::contrast(qt::color_of(color_white), qt::color_of(color_blue)), qt::readable_contrast);
    EXPECT_NEAR(qt::contrast(Qt::black, Qt::white), 21, 0.001);
    EXPECT_GE(qt::contrast(QApplication::palette().color(QPalette::Disabled, QPalette::ButtonText),
                           qt::color_of(color_window)),
              qt::readable_contrast);

    desk().switches.cmd_out[0].back_color = color_red;
    desk().switches.cmd_out[0].enabled = false;
    follow();
    EXPECT_EQ(operator_hand().find("cmd_out_0").palette().color(QPalette::Disabled, QPalette::ButtonText), black);
}

TEST_F(eyes, read_a_coloured_mark_on_a_ground_of_its_own) {
    start();
    operator_hand().click("cmd_edid");
    desk().edid.fra_compare.visible = true;
    desk().edid.lab_pass.caption = "PASS";
    const auto ground = [this](color fore) {
        desk().edid.lab_pass.fore_color = fore;
        follow();
        return operator_hand().find("lab_pass").grab().toImage().pixelColor(1, 1);
    };
    EXPECT_EQ(ground(color_green), QColor(Qt::black));
    EXPECT_EQ(ground(color_dark_green), QColor(Qt::black));
    EXPECT_EQ(ground(color_red), QColor(Qt::white));
    EXPECT_EQ(ground(color_dark_red), QColor(Qt::white));
    EXPECT_EQ(ground(color_black), qt::color_of(color_window));
}

TEST_F(eyes, see_every_caption_whole) {
    start();
    for (const auto* b : program->main_window().findChildren<QAbstractButton*>()) {
        if (!b->objectName().startsWith("chk_") && !b->objectName().startsWith("opt_")) continue;
        EXPECT_LE(QFontMetricsF(b->font()).horizontalAdvance(QString(b->text()).remove('&')) + 18, b->width())
            << qPrintable(b->objectName());
    }
    for (const auto* l : program->main_window().findChildren<qt::text_label*>()) {
        // the files' own names are cut where they are too long
        if (l->objectName().startsWith("lab_pre_f")) continue;
        for (const QString& line : l->text().split('\n'))
            EXPECT_LE(QFontMetricsF(l->font()).horizontalAdvance(line), l->width()) << qPrintable(l->objectName());
    }
}

TEST_F(eyes, see_where_the_focus_is) {
    start();
    const hand h = operator_hand();
    const auto looks_other_with_focus = [&](const char* name) {
        h.find(name).setFocus(Qt::TabFocusReason);
        const QImage with = h.find(name).grab().toImage();
        h.find("cmd_about").setFocus(Qt::TabFocusReason);
        return with != h.find(name).grab().toImage();
    };
    for (const char* name : {"cbo_com", "cmd_conn", "cmd_timing"})
        EXPECT_TRUE(looks_other_with_focus(name)) << name;
    h.click("cmd_timing");
    for (const char* name : {"lstv_timing", "txt_htotal_pix", "txt_pix_f"})
        EXPECT_TRUE(looks_other_with_focus(name)) << name;
    h.click("cmd_edid");
    for (const char* name : {"txt_read", "opt_edid_src_1"})
        EXPECT_TRUE(looks_other_with_focus(name)) << name;
    h.click("cmd_read");
    h.click("cmd_read_translate");
    h.click_node("tree_edid", {"Block 0: VESA Basic Block"});
    EXPECT_EQ(h.find("tree_edid").grab().toImage().pixelColor(0, 20), QColor(0, 0, 128));
    for (const char* name : {"txt_edid", "tree_edid", "cmd_edid_back"})
        EXPECT_TRUE(looks_other_with_focus(name)) << name;
}

TEST_F(eyes, read_a_box_whole) {
    start();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qt::qt_message_box boxes(program->gate());
    const QString text = "/a folder/R&D/display.hex exists. Overwrite it ?";
    std::vector<QImage> signs;
    for (const box_icon icon : {box_icon::critical, box_icon::question, box_icon::exclamation}) {
        QTimer::singleShot(50, qApp, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            const auto* const said = box->findChild<QLabel*>("qt_msgbox_label");
            EXPECT_EQ(said->text(), text);
            EXPECT_GE(said->height(), said->heightForWidth(said->width()));
            const QPixmap sign = box->iconPixmap();
            EXPECT_EQ(sign.width(), qRound(32 * box->devicePixelRatioF()));
            signs.push_back(sign.toImage().convertToFormat(QImage::Format_Grayscale8));
            box->button(QMessageBox::Ok)->click();
        });
        boxes.show(text.toStdString(), icon, box_buttons::ok);
    }
    ASSERT_EQ(signs.size(), 3U);
    EXPECT_NE(signs[0], signs[1]);
    EXPECT_NE(signs[1], signs[2]);
    EXPECT_NE(signs[0], signs[2]);
}

TEST_F(eyes, find_the_row_that_the_program_selects) {
    start();
    const hand h = operator_hand();
    h.click("cmd_timing");
    h.click_row("lstv_timing", 50);
    h.click("cmd_run");
    h.find<QTreeWidget>("lstv_timing").scrollToTop();
    ASSERT_FALSE(is_seen("lstv_timing"));
    h.click("cmd_refresh");
    EXPECT_EQ(desk().rows.lstv_timing.selected(), 50);
    EXPECT_TRUE(is_seen("lstv_timing"));

    h.click_row("lstv_timing", 1);
    h.click("cmd_pattern");
    h.click("cmd_timing");
    EXPECT_EQ(desk().rows.lstv_timing.selected(), 50);
    EXPECT_TRUE(is_seen("lstv_timing"));
}

TEST_F(eyes, find_a_row_in_a_list_that_was_out_of_sight) {
    start();
    const hand h = operator_hand();
    h.click("cmd_pattern");
    h.click_row("lstv_pattern", desk().rows.lstv_pattern.row_count());
    h.click("cmd_run");
    h.click_row("lstv_pattern", 1);
    h.click("cmd_setup");
    h.click("cmd_pattern");
    EXPECT_EQ(desk().rows.lstv_pattern.selected(), desk().rows.lstv_pattern.row_count());
    EXPECT_TRUE(is_seen("lstv_pattern"));
}

} // namespace

} // namespace desk::gui
