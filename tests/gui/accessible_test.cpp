// What a screen reader gets for every control.

#include "bench_fixture.h"
#include "qt/appearance.h"

#include <QAccessible>
#include <QMessageBox>

#include <map>

namespace desk::gui {

namespace {

const std::map<QString, QAccessible::Role> roles = {
    {"cmd", QAccessible::PushButton}, {"txt", QAccessible::EditableText}, {"cbo", QAccessible::ComboBox},
    {"chk", QAccessible::CheckBox},   {"opt", QAccessible::RadioButton},  {"fra", QAccessible::Grouping},
    {"hsr", QAccessible::ScrollBar},  {"lstv", QAccessible::Tree},        {"tree", QAccessible::Tree},
    {"pic", QAccessible::Graphic},    {"img", QAccessible::Graphic},      {"lab", QAccessible::StaticText},
    {"line", QAccessible::Separator},
};

/// Expects the right role and a name for every control of a window. Returns their number.
int check_all(const QWidget& window) {
    int seen = 0;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        const auto kind = roles.find(w->objectName().section('_', 0, 0));
        if (kind == roles.end()) continue;
        ++seen;
        const QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(w);
        const std::string name = w->objectName().toStdString();
        if (accessible == nullptr) {
            ADD_FAILURE() << name << " has no interface";
            continue;
        }
        if (name == "lab_desk" || name == "line_rs232") {
            EXPECT_TRUE(accessible->role() == QAccessible::Whitespace || accessible->role() == QAccessible::Separator)
                << name;
            continue;
        }
        const bool opens_a_file = name.starts_with("lab_pre_f");
        EXPECT_EQ(accessible->role(), opens_a_file ? QAccessible::Link : kind->second) << name;
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << name;
        EXPECT_FALSE(accessible->text(QAccessible::Name).contains('_')) << name;
        EXPECT_EQ(accessible->state().disabled, !w->isEnabled()) << name;
    }
    return seen;
}

class screen_reader : public bench {
protected:
    screen_reader() { plug_generator(); }

    QString accessible(const QString& name, QAccessible::Text what) {
        return QAccessible::queryAccessibleInterface(&driver().find(name))->text(what);
    }
    QAccessible::State state(const QString& name) {
        return QAccessible::queryAccessibleInterface(&driver().find(name))->state();
    }
    void show_speakers() {
        auto& t = desk().translation_frame;
        for (picture* p : {&t.pic_speaker_fl, &t.pic_speaker_flc, &t.pic_speaker_fc, &t.pic_speaker_frc,
                           &t.pic_speaker_fr, &t.pic_speaker_lfe, &t.pic_speaker_rl, &t.pic_speaker_rlc,
                           &t.pic_speaker_rc, &t.pic_speaker_rrc, &t.pic_speaker_rr})
            p->visible = true;
        driver().click("lab_com"); // any event updates the window
    }
};

TEST_F(screen_reader, gets_role_and_name_of_every_control) {
    start();
    show_speakers();
    EXPECT_GT(check_all(program->main_window()), 170);
}

TEST_F(screen_reader, gets_modal_windows_too) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_read");
    int seen = 0;
    in_next_window("frm_diag", [&](const ui_driver& diag) {
        seen += check_all(diag.find("frm_diag"));
        diag.click("cmd_ok");
    });
    ui.click("cmd_sum_read");
    EXPECT_GT(seen, 25);
    ui.click("cmd_read_translate");
    in_next_window("frm_report", [&](const ui_driver& report) {
        EXPECT_EQ(check_all(report.find("frm_report")), 3);
        report.click("cmd_exit");
    });
    ui.click("cmd_edid_report");
}

TEST_F(screen_reader, gets_what_captions_leave_out) {
    start();
    EXPECT_EQ(accessible("cmd_hdcp_1", QAccessible::Name), "ON");
    EXPECT_EQ(accessible("cmd_hdcp_1", QAccessible::Description), "HDCP");
    EXPECT_EQ(accessible("txt_htotal_pix", QAccessible::Name), "Horizontal total in pixels");
    EXPECT_EQ(accessible("txt_color_setting_2", QAccessible::Name), "Color value 3 as a number");
    EXPECT_EQ(accessible("cmd_recover_0", QAccessible::Description),
              "Repair the checksum of block 0 on the WRITE side");
    EXPECT_EQ(accessible("cmd_clear_read", QAccessible::Description), "READ side");
}

TEST_F(screen_reader, gets_lit_states) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_setup");
    EXPECT_EQ(accessible("cmd_conn", QAccessible::Description), "green");
    EXPECT_EQ(accessible("cmd_setup", QAccessible::Description), "current view");
    EXPECT_EQ(accessible("cmd_timing", QAccessible::Description), "Shows the timings and their figures");
    ui.click("cmd_hdcp_1");
    EXPECT_EQ(accessible("cmd_hdcp_1", QAccessible::Description), "HDCP, green");
    ui.click("cmd_disconn");
    EXPECT_EQ(accessible("cmd_disconn", QAccessible::Description), "red");
}

TEST_F(screen_reader, gets_states) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    EXPECT_TRUE(state("opt_edid_src_1").checked);
    EXPECT_FALSE(state("opt_edid_src_2").checked);
    EXPECT_TRUE(state("cmd_write").disabled);
    EXPECT_FALSE(state("cmd_read").disabled);
    EXPECT_TRUE(state("txt_read").readOnly);
    EXPECT_TRUE(state("txt_htotal_pix").readOnly);
    EXPECT_FALSE(state("txt_motion_str").readOnly);
    desk().translation_frame.chk_established[3].value = 1;
    ui.click("lab_read"); // any event updates the window
    EXPECT_TRUE(state("chk_established_3").checked);
    EXPECT_FALSE(state("chk_established_4").checked);
}

TEST_F(screen_reader, reads_the_edid_text_and_selects_in_it) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    desk().workbench.txt_read.text = "00 FF //7\r\n\r\n01 \xC3\xA9\r\n";
    ui.click("lab_read"); // any event updates the window
    QAccessibleTextInterface* const text = QAccessible::queryAccessibleInterface(&ui.find("txt_read"))->textInterface();
    ASSERT_NE(text, nullptr);
    const QString shown = QString::fromUtf8("00 FF //7\n\n01 \xC3\xA9\n");
    EXPECT_EQ(accessible("txt_read", QAccessible::Value), shown);
    EXPECT_EQ(text->characterCount(), shown.size());
    EXPECT_EQ(text->text(3, 12), shown.mid(3, 9));
    EXPECT_EQ(text->text(0, 9999), shown);
    int start_of_part = 0;
    int end_of_part = 0;
    EXPECT_EQ(text->textAtOffset(12, QAccessible::LineBoundary, &start_of_part, &end_of_part),
              QString::fromUtf8("01 \xC3\xA9\n"));
    EXPECT_EQ(start_of_part, 11);
    EXPECT_EQ(end_of_part, 16);
    EXPECT_EQ(text->textBeforeOffset(12, QAccessible::LineBoundary, &start_of_part, &end_of_part), "\n");
    EXPECT_EQ(text->textAfterOffset(2, QAccessible::LineBoundary, &start_of_part, &end_of_part), "\n");
    EXPECT_EQ(text->textAtOffset(4, QAccessible::WordBoundary, &start_of_part, &end_of_part), "FF");
    EXPECT_EQ(text->textAtOffset(14, QAccessible::CharBoundary, &start_of_part, &end_of_part), shown.mid(14, 1));
    EXPECT_EQ(start_of_part, 14);

    text->setCursorPosition(11);
    EXPECT_EQ(text->cursorPosition(), 11);
    EXPECT_EQ(text->selectionCount(), 0);
    text->addSelection(3, 12);
    EXPECT_EQ(text->selectionCount(), 1);
    text->selection(0, &start_of_part, &end_of_part);
    EXPECT_EQ(start_of_part, 3);
    EXPECT_EQ(end_of_part, 12);
    EXPECT_EQ(text->offsetAtPoint(text->characterRect(4).topLeft()), 4);
    text->removeSelection(0);
    EXPECT_EQ(text->selectionCount(), 0);
}

TEST_F(screen_reader, counts_alike_in_every_text) {
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    for (const char* bytes : {"00 FF\r\n\r\n01\r\n", "00 FF\n\n01\n", "\r\n", ""}) {
        desk().workbench.txt_read.text = bytes;
        ui.click("lab_read");
        QAccessibleTextInterface* const text =
            QAccessible::queryAccessibleInterface(&ui.find("txt_read"))->textInterface();
        const QString shown = qt::shown_text(bytes);
        for (int position = 0; position <= shown.size(); ++position) {
            text->setCursorPosition(position);
            EXPECT_EQ(text->cursorPosition(), position) << bytes;
            EXPECT_EQ(text->text(0, position), shown.left(position)) << bytes;
        }
    }
}

TEST_F(screen_reader, opens_a_previous_file) {
    put_file("marlo_rs232.ini", "1\r\n\"not there.bin\"\r\n" + QByteArray("\"\"\r\n").repeated(9) + "0\r\n0\r\n0\r\n");
    start();
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    ui.click("cmd_pre_f");
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    QAccessibleActionInterface* const actions =
        QAccessible::queryAccessibleInterface(&ui.find("lab_pre_f_0"))->actionInterface();
    actions->doAction(QAccessibleActionInterface::pressAction());
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "not there.bin doesn't exist !");
}

} // namespace

} // namespace desk::gui
