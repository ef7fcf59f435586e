// Visibility without colours, at every scale, and in long lists.

#include "bench_fixture.h"
#include "qt/appearance.h"
#include "qt/decoration.h"
#include "qt/qt_dialogs.h"
#include "qt/text_label.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

namespace desk::gui {

namespace {

class visibility : public bench {
protected:
    visibility() { plug_generator(); }

    /// Any event updates the window.
    void follow() { driver().click("lab_com"); }

    /// Which pixels are dark at the left end of a button, whatever its colour.
    QImage marks(const QString& name) {
        const QImage button = driver().find(name).grab().toImage();
        QImage end = button.copy(0, 0, qRound(14 * button.devicePixelRatio()), button.height());
        for (int y = 0; y < end.height(); ++y) {
            for (int x = 0; x < end.width(); ++x)
                end.setPixel(x, y, qGray(end.pixel(x, y)) < 40 ? 1 : 0);
        }
        return end;
    }

    bool is_seen(const QString& list) {
        auto& tree = driver().find<QTreeWidget>(list);
        return tree.viewport()->rect().contains(tree.visualItemRect(tree.currentItem()));
    }
};

TEST_F(visibility, lit_buttons_differ_without_colours) {
    start();
    driver().click("cmd_setup");
    std::vector<QImage> seen;
    for (const color lamp : {color_button_face, color_current_view, color_green, color_red}) {
        desk().panel.cmd_out[0].back_color = lamp;
        follow();
        seen.push_back(marks("cmd_out_0"));
    }
    for (std::size_t i = 0; i < seen.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k)
            EXPECT_NE(seen[i], seen[k]) << i << " and " << k;
    }
}

TEST_F(visibility, the_caption_is_beside_the_mark) {
    start();
    for (const QPushButton* b : program->main_window().findChildren<QPushButton*>()) {
        // the repair buttons are never lit
        if (b->objectName().startsWith("cmd_recover")) continue;
        EXPECT_GE((b->width() - QFontMetricsF(b->font()).horizontalAdvance(QString(b->text()).remove('&'))) / 2, 9)
            << qPrintable(b->objectName());
    }
}

TEST_F(visibility, state_colours_are_exact) {
    start();
    EXPECT_NEAR(qt::contrast(Qt::black, Qt::white), 21, 0.001);
    const std::pair<color, QColor> exact[] = {{color_green, QColor(0, 255, 0)},
                                              {color_red, QColor(255, 0, 0)},
                                              {color_current_view, QColor(128, 255, 255)},
                                              {color_blue, QColor(0, 0, 255)}};
    for (const qt::scheme s : {qt::scheme::light, qt::scheme::dark}) {
        qt::set_scheme(s);
        for (const auto& [model, real] : exact) {
            EXPECT_EQ(qt::background_of(model, qt::colors_of(s)), real);
            EXPECT_EQ(qt::ink_of(model, qt::colors_of(s)), real);
            if (model == color_blue) continue;
            desk().panel.cmd_out[0].back_color = model;
            follow();
            driver().click("cmd_setup");
            const QImage button = driver().find("cmd_out_0").grab().toImage();
            EXPECT_EQ(button.pixelColor(button.width() - 6, 6), real);
        }
    }
    qt::set_scheme(qt::scheme::light);
}

TEST_F(visibility, a_coloured_mark_has_its_own_background) {
    start();
    driver().click("cmd_edid");
    desk().workbench.fra_compare.visible = true;
    desk().workbench.lab_pass.caption = "PASS";
    const auto ground = [this](color fore) {
        desk().workbench.lab_pass.fore_color = fore;
        follow();
        const QWidget& w = driver().find("lab_pass");
        const QPoint corner = w.mapTo(&program->main_window(), QPoint(0, 0));
        const QImage mark = program->main_window().grab(QRect(corner, w.size())).toImage();
        // beside the first letter
        return mark.pixelColor(0, mark.height() / 2);
    };
    for (const qt::scheme s : {qt::scheme::light, qt::scheme::dark}) {
        qt::set_scheme(s);
        const qt::scheme_colors& colors = qt::colors_of(s);
        for (const color fore : {color_green, color_dark_green, color_red, color_dark_red})
            EXPECT_GE(qt::contrast(ground(fore), qt::ink_of(fore, colors)), qt::readable_contrast) << fore;
        EXPECT_EQ(ground(color_black), colors.surface);
    }
    qt::set_scheme(qt::scheme::light);
}

TEST_F(visibility, every_caption_fits) {
    start();
    for (const auto* b : program->main_window().findChildren<QAbstractButton*>()) {
        if (!b->objectName().startsWith("chk_") && !b->objectName().startsWith("opt_")) continue;
        EXPECT_LE(QFontMetricsF(b->font()).horizontalAdvance(QString(b->text()).remove('&')) + 18, b->width())
            << qPrintable(b->objectName());
    }
    for (const auto* l : program->main_window().findChildren<qt::text_label*>()) {
        // long file names are elided
        if (l->objectName().startsWith("lab_pre_f")) continue;
        for (const QString& line : l->text().split('\n'))
            EXPECT_LE(QFontMetricsF(l->font()).horizontalAdvance(line), l->width()) << qPrintable(l->objectName());
    }
}

TEST_F(visibility, the_focus_is_visible) {
    start();
    const ui_driver ui = driver();
    // the surroundings of the control, without and with the focus
    const auto around = [&](const char* name) {
        const QWidget& w = ui.find(name);
        const QRect place(w.mapTo(&program->main_window(), QPoint(-3, -3)), w.size() + QSize(6, 6));
        return program->main_window().grab(place).toImage();
    };
    const auto is_marked = [&](const char* name) {
        ui.find("cmd_about").setFocus(Qt::TabFocusReason);
        ui.find(name).setFocus(Qt::TabFocusReason);
        const QImage with = around(name);
        ui.find("cmd_about").setFocus(Qt::TabFocusReason);
        const QImage without = around(name);
        const QColor ring = qt::colors_of(qt::scheme::light).accent;
        const QPoint on_ring(with.width() / 2, 1 + qRound(with.devicePixelRatio()));
        return with.pixelColor(on_ring) == ring && without.pixelColor(on_ring) != ring;
    };
    for (const char* name : {"cbo_com", "cmd_conn", "cmd_timing"})
        EXPECT_TRUE(is_marked(name)) << name;
    ui.click("cmd_timing");
    for (const char* name : {"lstv_timing", "txt_htotal_pix", "txt_pix_f"})
        EXPECT_TRUE(is_marked(name)) << name;
    ui.click("cmd_edid");
    for (const char* name : {"txt_read", "opt_edid_src_1"})
        EXPECT_TRUE(is_marked(name)) << name;
    ui.click("cmd_read");
    ui.click("cmd_read_translate");
    ui.click_node("tree_edid", {"Block 0: VESA Basic Block"});
    for (const char* name : {"txt_edid", "tree_edid", "cmd_edid_back"})
        EXPECT_TRUE(is_marked(name)) << name;
}

TEST_F(visibility, the_focus_ring_appears_after_keyboard_use) {
    start();
    const ui_driver ui = driver();
    const auto* const ring = qApp->findChild<qt::focus_ring*>();
    ASSERT_NE(ring, nullptr);
    ui.click("cmd_timing");
    EXPECT_EQ(ring->marked(), nullptr) << "no ring after a mouse click";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(ring->marked(), QApplication::focusWidget());
    ui.click("cmd_pattern");
    EXPECT_EQ(ring->marked(), nullptr);
    ui.click_row("lstv_pattern", 41);
    ui.click("txt_motion_str");
    EXPECT_EQ(ring->marked(), &ui.find("txt_motion_str")) << "a text box always has the ring";
    ui.click("cmd_edid");
    EXPECT_EQ(ring->marked(), nullptr) << "no ring around a hidden control";
}

TEST_F(visibility, a_box_shows_its_whole_text) {
    start();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    qt::qt_message_box boxes(program->gate());
    const QString text = "/a folder/R&D/display.hex exists. Overwrite it ?";
    std::vector<QImage> signs;
    for (const box_icon icon : {box_icon::critical, box_icon::question, box_icon::exclamation}) {
        QTimer::singleShot(50, qApp, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            const auto* const label = box->findChild<QLabel*>("qt_msgbox_label");
            EXPECT_EQ(label->text(), text);
            EXPECT_GE(label->height(), label->heightForWidth(label->width()));
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

TEST_F(visibility, a_row_selected_by_the_program_is_scrolled_to) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_timing");
    ui.click_row("lstv_timing", 50);
    ui.click("cmd_run");
    ui.find<QTreeWidget>("lstv_timing").scrollToTop();
    ASSERT_FALSE(is_seen("lstv_timing"));
    ui.click("cmd_refresh");
    EXPECT_EQ(desk().catalogue.lstv_timing.selected(), 50);
    EXPECT_TRUE(is_seen("lstv_timing"));

    ui.click_row("lstv_timing", 1);
    ui.click("cmd_pattern");
    ui.click("cmd_timing");
    EXPECT_EQ(desk().catalogue.lstv_timing.selected(), 50);
    EXPECT_TRUE(is_seen("lstv_timing"));
}

TEST_F(visibility, a_selected_row_is_scrolled_to_when_its_list_appears) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", desk().catalogue.lstv_pattern.row_count());
    ui.click("cmd_run");
    ui.click_row("lstv_pattern", 1);
    ui.click("cmd_setup");
    ui.click("cmd_pattern");
    EXPECT_EQ(desk().catalogue.lstv_pattern.selected(), desk().catalogue.lstv_pattern.row_count());
    EXPECT_TRUE(is_seen("lstv_pattern"));
}

} // namespace

} // namespace desk::gui
