// The road from a sink's EDID to its analysis through the real windows: the tree, what stands over the text, the
// report and its file.

#include "bench_fixture.h"

#include "generator/sink_edids.h"
#include "sight.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTreeWidget>

namespace desk::gui {

namespace {

const QString block_0 = "Block 0: VESA Basic Block";
const QString block_1 = "Block 1: CEA 861 Block";
const QString descriptors = "Detail Timings/Monitor Descriptors";
const QString data_blocks = "Data Block Collection";

const QStringList all_pictures = {"pic_speaker_fl", "pic_speaker_flc", "pic_speaker_fc", "pic_speaker_frc",
                                  "pic_speaker_fr", "pic_speaker_lfe", "pic_speaker_rl", "pic_speaker_rlc",
                                  "pic_speaker_rc", "pic_speaker_rrc", "pic_speaker_rr"};

QByteArray sink_1() {
    const bytes edid = first_sink_edid(1);
    return {reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size())};
}

/// The first sink's EDID with every speaker.
QByteArray with_all_speakers() {
    QByteArray edid = sink_1();
    const qsizetype block = edid.indexOf(QByteArray::fromHex("83010000"), 128);
    edid[block + 1] = 0x7F;
    return edid;
}

/// The first sink's EDID with 533.25 MHz in its first descriptor.
QByteArray wide_clock() {
    QByteArray edid = sink_1();
    edid[54] = '\x4D';
    edid[55] = '\xD0';
    return edid;
}

const QString overflow_told =
    "Run-time error '6':\n\nOverflow\n\nDecoding detailed timing 1: a pixel clock of 533.25 MHz "
    "does not fit.\n\nThe program ends now.\n\n";
const QString how_to_go_on =
    "\n\nTo continue, start the program again and OPEN the file. If the same error occurs again, the "
    "program edid_report prints what can be decoded.";

class translation_end_to_end : public bench {
protected:
    translation_end_to_end() {
        plug_generator();
        start();
        operator_hand().click("cmd_edid");
    }

    void translate_read_side() {
        operator_hand().click("cmd_read");
        operator_hand().click("cmd_read_translate");
    }

    void translate_file(const QByteArray& edid) {
        put_file("sink.bin", edid);
        answer_next_file_dialog(dialogs, directory.filePath("sink.bin"));
        operator_hand().click("cmd_load");
        operator_hand().click("cmd_write_translate");
    }

    void click_node(const QStringList& titles) { operator_hand().click_node("tree_edid", titles); }
    QString text() { return operator_hand().text("txt_edid"); }

    QStringList bold_titles() {
        QStringList titles;
        for (const QTreeWidgetItem* item :
             operator_hand().find<QTreeWidget>("tree_edid").findItems("", Qt::MatchContains | Qt::MatchRecursive))
            if (item->font(0).bold()) titles.append(item->text(0));
        return titles;
    }

    QStringList pictures_on_show() {
        QStringList shown;
        for (const QString& name : all_pictures)
            if (operator_hand().is_shown(name)) shown.append(name);
        return shown;
    }

    std::vector<seen_dialog> dialogs;
    std::vector<seen_box> boxes;
};

TEST_F(translation_end_to_end, opens_on_the_root_with_the_tree_of_the_sink) {
    translate_read_side();
    EXPECT_EQ(operator_hand().text("fra_edid_edit"), "Translate [ Read ] EDID");
    EXPECT_EQ(text(), "Block 0 is VESA Basic Block\nHeader = 00 FF FF FF FF FF FF 00 ");
    EXPECT_EQ(bold_titles(), QStringList{block_0});
    auto& tree = operator_hand().find<QTreeWidget>("tree_edid");
    ASSERT_EQ(tree.topLevelItemCount(), 2);
    EXPECT_TRUE(tree.topLevelItem(0)->isExpanded());
    EXPECT_EQ(tree.topLevelItem(1)->text(0), block_1);
    EXPECT_TRUE(tree.topLevelItem(1)->isExpanded());
    operator_hand().click("cmd_edid_back");
    EXPECT_FALSE(operator_hand().is_shown("fra_edid_edit"));
}

TEST_F(translation_end_to_end, each_node_shows_its_lines_and_is_the_one_in_bold) {
    translate_read_side();
    click_node({block_0, descriptors, "Monitor Name1"});
    EXPECT_EQ(text(), "Monitor Name = HDMI DISPLAY");
    EXPECT_EQ(bold_titles(), QStringList{"Monitor Name1"});
    click_node({block_1, data_blocks, "Colorimetry Data Block"});
    EXPECT_EQ(text(), "Colorimetry Support=xvYCC601/xvYCC709");
    EXPECT_EQ(bold_titles(), QStringList{"Colorimetry Data Block"});
    click_node({block_0, descriptors});
    EXPECT_EQ(text(), "");
}

TEST_F(translation_end_to_end, the_keyboard_walks_along_the_nodes) {
    translate_read_side();
    click_node({block_0, "Binary List"});
    operator_hand().press_key("tree_edid", Qt::Key_Down);
    EXPECT_EQ(bold_titles(), QStringList{"Vendor/Product Id"});
    EXPECT_TRUE(text().startsWith("--- Vendor/Product Identification ---\nManufacturer Name = VTD\n"));
}

TEST_F(translation_end_to_end, a_new_trans_begins_at_the_root_again) {
    translate_read_side();
    click_node({block_0, "Vendor/Product Id"});
    operator_hand().click("cmd_edid_back");
    operator_hand().click("cmd_read_translate");
    EXPECT_EQ(bold_titles(), QStringList{block_0});
    const auto marked = operator_hand().find<QTreeWidget>("tree_edid").selectedItems();
    ASSERT_EQ(marked.size(), 1);
    EXPECT_EQ(marked[0]->text(0), block_0);
    click_node({block_0, "Vendor/Product Id"});
    EXPECT_EQ(bold_titles(), QStringList{"Vendor/Product Id"});
}

TEST_F(translation_end_to_end, a_text_is_shown_from_its_beginning) {
    QByteArray edid = sink_1();
    // a video data block of 31 entries up to offset 36, behind them nothing
    edid[130] = 36;
    edid[132] = 0x5F;
    for (int i = 133; i < 164; ++i)
        edid[i] = static_cast<char>(i % 60);
    translate_file(edid);
    auto& text_box = operator_hand().find<QTextEdit>("txt_edid");
    click_node({block_1, data_blocks, "Video Data Block"});
    text_box.verticalScrollBar()->setValue(text_box.verticalScrollBar()->maximum());
    ASSERT_GT(text_box.verticalScrollBar()->value(), 0);
    click_node({block_0, descriptors, "Detail Timing1"});
    click_node({block_1, data_blocks, "Video Data Block"});
    EXPECT_EQ(text_box.verticalScrollBar()->value(), 0);
}

TEST_F(translation_end_to_end, the_boxes_of_the_established_timings_stand_where_the_text_leaves_room) {
    translate_read_side();
    EXPECT_FALSE(operator_hand().is_shown("chk_established_0"));
    click_node({block_0, "Established Timings"});
    // bytes 0x21, 0x08, 0x00
    const QList<int> ticked = {2, 7, 12};
    for (int i = 0; i < 17; ++i) {
        const QString name = "chk_established_" + QString::number(i);
        EXPECT_TRUE(operator_hand().is_shown(name)) << qPrintable(name);
        EXPECT_EQ(operator_hand().find<QCheckBox>(name).isChecked(), ticked.contains(i)) << qPrintable(name);
        EXPECT_FALSE(covers_text(operator_hand(), "txt_edid", name)) << qPrintable(name);
    }
    operator_hand().click("chk_established_0");
    EXPECT_TRUE(operator_hand().find<QCheckBox>("chk_established_0").isChecked());
    click_node({block_0, "Color Characteristics"});
    EXPECT_FALSE(operator_hand().is_shown("chk_established_0"));
    click_node({block_0, "Established Timings"});
    EXPECT_FALSE(operator_hand().find<QCheckBox>("chk_established_0").isChecked());
}

TEST_F(translation_end_to_end, the_pictures_of_the_speakers_stand_where_the_floor_plan_leaves_room) {
    translate_file(with_all_speakers());
    click_node({block_1, data_blocks, "Speaker Allocation Data Block"});
    EXPECT_EQ(pictures_on_show(), all_pictures);
    for (const QString& name : all_pictures) {
        EXPECT_FALSE(covers_text(operator_hand(), "txt_edid", name)) << qPrintable(name);
        EXPECT_FALSE(operator_hand().find<QLabel>(name).pixmap(Qt::ReturnByValue).isNull()) << qPrintable(name);
    }
    click_node({block_1});
    EXPECT_EQ(pictures_on_show(), QStringList());
}

TEST_F(translation_end_to_end, a_name_may_hold_any_byte) {
    QByteArray edid = sink_1();
    const qsizetype name = edid.indexOf("HDMI DISPLAY");
    edid.replace(name, 12, QByteArray("\x00\x01\x0D\x1B\x7F\x80\x81\xA0\xFF\x0B\x0C.", 12));
    translate_file(edid);
    click_node({block_0, descriptors, "Monitor Name1"});
    EXPECT_TRUE(text().startsWith("Monitor Name = "));
    EXPECT_TRUE(text().endsWith("."));
    EXPECT_TRUE(text().contains(QChar(0x20AC)));
    in_next_window("frm_report", [&](const hand& h) {
        EXPECT_TRUE(h.text("txt_report").contains("\n\nMonitor Name = "));
        h.click("cmd_exit");
    });
    operator_hand().click("cmd_edid_report");
}

TEST_F(translation_end_to_end, the_report_is_read_saved_and_closed) {
    translate_read_side();
    const QString path = directory.filePath("analysis.txt");
    QString report;
    in_next_window("frm_report", [&](const hand& h) {
        report = h.text("txt_report");
        EXPECT_EQ(h.find("frm_report").windowTitle(), "EDID Report");
        answer_next_file_dialog(dialogs, path);
        h.click("cmd_save");
        h.click("cmd_exit");
    });
    operator_hand().click("cmd_edid_report");
    EXPECT_TRUE(report.startsWith("EDID Analysis Report \n"));
    EXPECT_TRUE(report.contains("\nMonitor Name = HDMI DISPLAY\n"));
    EXPECT_TRUE(report.endsWith("\n\nEND."));
    EXPECT_EQ(file("analysis.txt"), (QString(report).replace("\n", "\r\n") + "\r\n").toLatin1());
    ASSERT_EQ(dialogs.size(), 1U);
    EXPECT_EQ(dialogs[0].title, "Save EDID Report");
    EXPECT_EQ(dialogs[0].folder, directory.path());
    EXPECT_EQ(dialogs[0].filters, QStringList{"*.txt"});
    EXPECT_EQ(dialogs[0].above, "frm_report");
    EXPECT_TRUE(operator_hand().find("cmd_edid_report").window()->isVisible());
}

TEST_F(translation_end_to_end, the_title_bar_closes_the_report) {
    translate_read_side();
    bool opened = false;
    in_next_window("frm_report", [&](const hand& h) {
        opened = true;
        h.find("frm_report").close();
    });
    operator_hand().click("cmd_edid_report");
    EXPECT_TRUE(opened);
    click_node({block_0, "Vendor/Product Id"});
    EXPECT_TRUE(text().contains("Product Code = 2084"));
}

TEST_F(translation_end_to_end, a_report_on_a_bad_header_stays_at_parsing) {
    QByteArray edid = sink_1();
    edid[1] = '\xFE';
    translate_file(edid);
    EXPECT_EQ(text(), "Block 0 is not VESA Basic Block\nHeader = 00 FE FF FF FF FF FF 00 ");
    QString shown;
    in_next_window("frm_report", [&](const hand& h) {
        shown = h.text("txt_report");
        h.click("cmd_exit");
    });
    operator_hand().click("cmd_edid_report");
    EXPECT_EQ(shown, "Parsing ...\n");
}

TEST_F(translation_end_to_end, what_can_not_be_decoded_ends_the_program_and_is_told) {
    translate_file(wide_clock());
    answer_next_box(boxes, QMessageBox::Ok);
    click_node({block_0, descriptors, "Detail Timing1"});
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(QDir::fromNativeSeparators(boxes[0].text), overflow_told +
                                                             "The EDID of the WRITE window is in the file " +
                                                             directory.filePath("sink.bin") + "." + how_to_go_on);
    EXPECT_TRUE(program->gate().over());
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_TRUE(file("rescued_write.hex").isEmpty());
}

TEST_F(translation_end_to_end, what_ends_the_program_takes_no_edid_along) {
    put_file("sink.bin", wide_clock());
    answer_next_file_dialog(dialogs, directory.filePath("sink.bin"));
    operator_hand().click("cmd_load");
    operator_hand().click("cmd_write");
    operator_hand().click("cmd_ok");
    operator_hand().click("cmd_clear_file");
    operator_hand().click("cmd_read");
    const QString read_text = operator_hand().text("txt_read");
    operator_hand().click("cmd_read_translate");
    answer_next_box(boxes, QMessageBox::Ok);
    click_node({block_0, descriptors, "Detail Timing1"});
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(QDir::fromNativeSeparators(boxes[0].text),
              overflow_told + "The EDID of the READ window is kept in the file " +
                  directory.filePath("rescued_read.hex") + "." + how_to_go_on);
    EXPECT_EQ(QString(file("rescued_read.hex")).replace("\r\n", "\n"), read_text + "\n");
}

#ifndef _WIN32
TEST_F(translation_end_to_end, what_ends_the_program_leaves_the_edid_in_the_users_own_folder_where_its_own_takes_none) {
    const QTemporaryDir home;
    const QByteArray before = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    operator_hand().click("cmd_read");
    for (int n = 0; n <= 10; ++n) {
        const QString name = n == 0 ? "rescued_read.hex" : QString("rescued_read_%1.hex").arg(n);
        QDir(directory.path()).mkpath(name + "/in_the_way");
    }
    put_file("sink.bin", wide_clock());
    answer_next_file_dialog(dialogs, directory.filePath("sink.bin"));
    operator_hand().click("cmd_load");
    operator_hand().click("cmd_write_translate");
    answer_next_box(boxes, QMessageBox::Ok);
    click_node({block_0, descriptors, "Detail Timing1"});
    if (before.isNull())
        qunsetenv("XDG_DATA_HOME");
    else
        qputenv("XDG_DATA_HOME", before);
    ASSERT_EQ(boxes.size(), 1U);
    const QString kept = home.filePath("velotrace-desk/rescued_read.hex");
    EXPECT_TRUE(boxes[0].text.contains("The EDID of the READ window is kept in the file " + kept +
                                       " (no file can be written in " + directory.path() + ": Directory not empty)."))
        << boxes[0].text.toStdString();
    EXPECT_TRUE(QFile::exists(kept));
}
#endif

} // namespace

} // namespace desk::gui
