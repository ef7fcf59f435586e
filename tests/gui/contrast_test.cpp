// Whether every caption is legible: its colour against its background, as drawn, in both schemes.

#include "bench_fixture.h"
#include "controls/kinds.h"
#include "dialog_driver.h"
#include "qt/appearance.h"
#include "qt/text_label.h"
#include "qt/text_page.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

#include <set>

namespace desk::gui {

namespace {

/// Enough magnification to give strokes of letters their full colour.
constexpr int fineness = 4;

struct caption {
    QString name;
    QRect place; // in its window
};

/// Where a widget has text, without marks and borders.
std::vector<QRect> places_of_text(QWidget& w) {
    if (auto* const button = qobject_cast<QAbstractButton*>(&w)) {
        if (button->text().isEmpty()) return {};
        const bool pushed = qobject_cast<QPushButton*>(&w) != nullptr;
        return {w.rect().adjusted(pushed ? 14 : 20, 4, -6, -4)};
    }
    if (auto* const group = qobject_cast<QGroupBox*>(&w)) {
        if (group->title().isEmpty()) return {};
        QStyleOptionGroupBox option;
        option.initFrom(group);
        option.text = group->title();
        return {w.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, group) &
                w.rect().adjusted(2, 2, -2, -2)};
    }
    if (auto* const combo = qobject_cast<QComboBox*>(&w))
        return combo->currentText().isEmpty() ? std::vector<QRect>() : std::vector{w.rect().adjusted(6, 4, -24, -4)};
    if (auto* const line = qobject_cast<QLineEdit*>(&w))
        return line->text().isEmpty() ? std::vector<QRect>() : std::vector{w.rect().adjusted(3, 3, -3, -3)};
    if (auto* const label = qobject_cast<qt::text_label*>(&w)) {
        if (label->text().isEmpty()) return {};
        if (label->text().contains('\n') || w.height() <= 2 * w.fontMetrics().height()) {
            // a single line may have a background plate, which is only as wide as the text
            const int width =
                std::min(w.width() - 6, w.fontMetrics().horizontalAdvance(label->text().section('\n', 0, 0)));
            const int height = std::min(w.height(), w.fontMetrics().height()) - 6;
            const int top = label->text().contains('\n') ? 3 : (w.height() - height) / 2;
            return {QRect(3, top, width, height)};
        }
        return {w.rect().adjusted(2, 2, -2, -2)};
    }
    if (auto* const label = qobject_cast<QLabel*>(&w))
        return label->text().isEmpty() ? std::vector<QRect>() : std::vector{w.rect()};
    const auto if_any = [](const QString& text, const QWidget& viewport) {
        return text.isEmpty() ? std::vector<QRect>() : std::vector{viewport.geometry()};
    };
    if (auto* const page = qobject_cast<qt::text_page*>(&w))
        return if_any(QString::fromStdString(std::string(page->lines().text().substr(0, 1))), *page->viewport());
    if (auto* const page = qobject_cast<QPlainTextEdit*>(&w)) return if_any(page->toPlainText(), *page->viewport());
    if (auto* const page = qobject_cast<QTextEdit*>(&w))
        return page->toPlainText().isEmpty() ? std::vector<QRect>() : std::vector{QRect(2, 2, w.width() - 16, 14)};
    if (auto* const tree = qobject_cast<QTreeWidget*>(&w)) {
        std::vector<QRect> places;
        for (QTreeWidgetItem* item = tree->itemAt(30, 2); item != nullptr; item = tree->itemBelow(item)) {
            const QRect row = tree->visualItemRect(item).adjusted(26, 0, -4, 0) & tree->viewport()->rect();
            if (item->text(0).isEmpty() || row.height() < 16) continue;
            places.push_back(row.translated(tree->viewport()->pos()));
        }
        return places;
    }
    return {};
}

bool is_seen(const QWidget& window, const QWidget& w, const QRect& place) {
    for (const QPoint at :
         {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight(), place.center()}) {
        const QWidget* const on_top = window.childAt(at);
        if (on_top == nullptr || (on_top != &w && !w.isAncestorOf(on_top))) return false;
    }
    return true;
}

std::vector<caption> captions_on_show(QWidget& window) {
    std::vector<caption> all;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisible() || w->window() != &window) continue;
        for (const QRect& text : places_of_text(*w)) {
            const QRect place(w->mapTo(&window, text.topLeft()), text.size());
            if (is_seen(window, *w, place)) all.push_back({w->objectName(), place});
        }
    }
    return all;
}

/// The most frequent colour of a place, and the one with the highest contrast to it.
struct two_colors {
    QColor ground;
    QColor ink;
};

two_colors colors_in(const QImage& image, const QRect& place) {
    QHash<QRgb, int> counts;
    const QRect fine(place.topLeft() * fineness, place.size() * fineness);
    for (int y = fine.top(); y <= fine.bottom(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        // one entry for each run of a colour
        for (int x = fine.left(), from = x; x <= fine.right(); ++x) {
            if (x < fine.right() && line[x + 1] == line[x]) continue;
            counts[line[x]] += x + 1 - from;
            from = x + 1;
        }
    }
    QRgb ground = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > counts.value(ground)) ground = it.key();
    QRgb ink = ground;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() >= 16 &&
            qt::contrast(QColor(it.key()), QColor(ground)) > qt::contrast(QColor(ink), QColor(ground)))
            ink = it.key();
    return {QColor(ground), QColor(ink)};
}

class contrast : public bench {
protected:
    contrast() { plug_generator(); }
    ~contrast() override { qt::set_scheme(qt::scheme::light); }

    void follow() {
        program->gate().run([] {});
    }

    /// Checks every visible caption of a window, in both schemes.
    void expect_readable(QWidget& window, const char* when) {
        for (const qt::scheme s : {qt::scheme::light, qt::scheme::dark}) {
            qt::set_scheme(s);
            QCoreApplication::sendPostedEvents();
            for (const QWidget* w : window.findChildren<QWidget*>())
                ASSERT_EQ(qt::scheme_of(w->palette()), s) << qPrintable(w->objectName());
            QImage image(window.size() * fineness, QImage::Format_RGB32);
            image.setDevicePixelRatio(fineness);
            window.render(&image);
            const std::vector<caption> captions = captions_on_show(window);
            EXPECT_FALSE(captions.empty()) << when;
            for (const caption& c : captions) {
                const two_colors seen = colors_in(image, c.place);
                EXPECT_GE(qt::contrast(seen.ground, seen.ink), qt::readable_contrast)
                    << qPrintable(c.name) << " " << when << (s == qt::scheme::dark ? ", dark: " : ", light: ")
                    << qPrintable(seen.ink.name()) << " on " << qPrintable(seen.ground.name());
                ++looked_at_;
            }
        }
    }

    void expect_readable(const char* when) { expect_readable(program->main_window(), when); }

    /// Checks the window as it is, with every button lit in each colour, and with everything disabled.
    void expect_readable_in_every_state(window& form, QWidget& real, const char* when) {
        expect_readable(real, when);
        std::map<control*, std::pair<color, bool>> before;
        for (control* c : form.controls())
            before[c] = {c->back_color, c->enabled};
        const auto buttons = [&](auto change) {
            for (control* c : form.controls())
                if (is<button>(*c)) change(*c);
        };
        for (const color lamp : {color_green, color_red, color_current_view}) {
            buttons([lamp](control& c) { c.back_color = lamp; });
            follow();
            expect_readable(real, when);
        }
        for (control* c : form.controls())
            if (!is<frame>(*c)) c->enabled = false;
        follow();
        expect_readable(real, when);
        buttons([](control& c) { c.back_color = color_button_face; });
        follow();
        expect_readable(real, when);
        for (const auto& [c, state] : before) {
            c->back_color = state.first;
            c->enabled = state.second;
        }
        follow();
    }

    int looked_at_ = 0;
};

TEST_F(contrast, is_enough_in_every_view) {
    start();
    const ui_driver ui = driver();
    expect_readable_in_every_state(desk().form, program->main_window(), "at start");
    ui.click("cmd_timing");
    ui.click_row("lstv_timing", 7);
    ui.click("cmd_run");
    expect_readable_in_every_state(desk().form, program->main_window(), "in Timing Select");
    ui.click("cmd_pattern");
    ui.click_row("lstv_pattern", 13);
    ui.click("cmd_download");
    expect_readable_in_every_state(desk().form, program->main_window(), "with the color setting");
    ui.click_row("lstv_pattern", 41);
    expect_readable_in_every_state(desk().form, program->main_window(), "with the motion string");
    ui.click("cmd_fav_timing");
    expect_readable_in_every_state(desk().form, program->main_window(), "in Favorite Timing");
    ui.click("cmd_fav_pattern");
    expect_readable_in_every_state(desk().form, program->main_window(), "in Favorite Pattern");
    ui.click("cmd_auto");
    expect_readable_in_every_state(desk().form, program->main_window(), "in Autorun Config");
    ui.click("cmd_setup");
    ui.click("cmd_download");
    expect_readable_in_every_state(desk().form, program->main_window(), "in Panel Control");
    EXPECT_GT(looked_at_, 2000);
}

TEST_F(contrast, is_enough_in_the_workbench_and_its_overlays) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    expect_readable_in_every_state(desk().form, program->main_window(), "in EDID Read/Write");
    for (const color mark : {color_red, color_green, color_dark_red, color_dark_green}) {
        desk().workbench.fra_compare.visible = true;
        desk().workbench.lab_pass.caption = "PASS";
        desk().workbench.lab_pass.fore_color = mark;
        desk().workbench.txt_msg.text = "Comparing ...";
        desk().workbench.lab_read_checksum[0].fore_color = mark;
        follow();
        expect_readable("with a result");
    }
    desk().workbench.fra_compare.visible = false;
    desk().workbench.fra_pre_f.visible = true;
    desk().workbench.lab_pre_f[0].caption = "/a/file.bin";
    desk().workbench.lab_pre_f[1].caption = "/another/file.bin";
    desk().workbench.lab_pre_f[1].back_color = color_blue;
    desk().workbench.lab_pre_f[1].fore_color = color_white;
    follow();
    expect_readable("with the previous files");
    desk().workbench.fra_pre_f.visible = false;
    follow();
    ui.click("cmd_read_translate");
    ui.click_node("tree_edid", {"Block 0: VESA Basic Block", "Established Timings"});
    expect_readable_in_every_state(desk().form, program->main_window(), "in the translation");
    ui.click("cmd_about");
    expect_readable("with About");
}

TEST_F(contrast, is_enough_in_the_small_windows) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    for (const char* opens : {"cmd_sum_read", "cmd_w_auto"}) {
        in_next_window("frm_diag", [&](const ui_driver& diag) {
            if (QString(opens) == "cmd_sum_read") diag.click("cmd_checksum");
            expect_readable(*QApplication::activeModalWidget(), opens);
            diag.click("cmd_ok");
        });
        if (QString(opens) == "cmd_w_auto") {
            desk().workbench.cmd_w_auto.enabled = true;
            follow();
        }
        ui.click(opens);
    }
    ui.click("cmd_read_translate");
    in_next_window("frm_report", [&](const ui_driver& report) {
        expect_readable(*QApplication::activeModalWidget(), "in the report");
        report.click("cmd_exit");
    });
    ui.click("cmd_edid_report");
    EXPECT_GT(looked_at_, 30);
}

TEST_F(contrast, is_enough_in_boxes_and_dialogs) {
    start();
    const ui_driver ui = driver();
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ui.click("cmd_edid");
    int seen = 0;
    in_next_window("QFileDialog", [&](const ui_driver&) {
        QWidget& dialog = *QApplication::activeModalWidget();
        expect_readable(dialog, "in the file dialog");
        ++seen;
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    ui.click("cmd_load");
    in_next_window("", [&](const ui_driver&) {
        QWidget& box = *QApplication::activeModalWidget();
        expect_readable(box, "in a box");
        ++seen;
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    ui.click("cmd_disconn");
    ui.click("cmd_refresh");
    EXPECT_EQ(seen, 2);
}

} // namespace

} // namespace desk::gui
