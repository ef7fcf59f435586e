// EDID tests through the real windows, with a generator on a pseudo terminal: from a sink to a file and back, and a
// production run of several units.

#include "bench_fixture.h"

#include "generator/sink_edids.h"

#include <QCheckBox>
#include <QDir>
#include <QMessageBox>
#include <QTest>
#include <QTextEdit>

#include <numeric>

namespace desk::gui {

namespace {

/// The last byte that makes a block of 128 bytes sum to 0 modulo 256.
int checksum_of(const QByteArray& block) {
    const int sum = std::accumulate(block.begin(), block.begin() + 127, 0,
                                    [](int so_far, char byte) { return so_far + static_cast<std::uint8_t>(byte); });
    return (256 - sum % 256) % 256;
}

int byte_of(const QByteArray& edid, qsizetype at) { return static_cast<std::uint8_t>(edid.at(at)); }

class edid_end_to_end : public bench {
protected:
    edid_end_to_end() {
        plug_generator();
        start();
        driver().click("cmd_edid");
    }

    QString path_of(const QString& name) const { return QDir::toNativeSeparators(directory.filePath(name)); }

    /// Saves a side under a name in the program's directory, in `hex_style` for a HEX file.
    void save(const QString& button, const QString& name, const QString& hex_style = "") {
        answer_next_file_dialog(dialogs, path_of(name), hex_style.isEmpty() ? 2 : 1);
        if (!hex_style.isEmpty()) {
            in_next_window("frm_diag", [hex_style](const ui_driver& ui) {
                ui.click(hex_style);
                ui.click("cmd_ok");
            });
        }
        driver().click(button);
    }

    void open(const QString& name) {
        answer_next_file_dialog(dialogs, path_of(name));
        driver().click("cmd_load");
    }

    void open_first_edid() {
        put_file("first.bin", first_edid());
        open("first.bin");
    }

    void erase() {
        answer_next_box(boxes, QMessageBox::Yes);
        driver().click("cmd_erase");
    }

    static QByteArray first_edid() {
        const bytes edid = first_sink_edid(1);
        return {reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size())};
    }

    std::vector<seen_dialog> dialogs;
    std::vector<seen_box> boxes;
};

TEST_F(edid_end_to_end, a_sink_is_read_saved_erased_written_back_and_verified) {
    const ui_driver ui = driver();
    generator->command("erase 200");
    ui.click("cmd_read");
    EXPECT_TRUE(ui.text("lab_read_checksum_0").endsWith(" Correct."));
    EXPECT_TRUE(ui.text("lab_read_checksum_1").endsWith(" Correct."));
    EXPECT_TRUE(ui.text("txt_read").startsWith("00 FF FF FF FF FF FF 00 //7\n"));
    save("cmd_save_read", "sink.bin");
    EXPECT_EQ(file("sink.bin"), first_edid());

    open("sink.bin");
    EXPECT_EQ(ui.text("txt_write"), ui.text("txt_read"));
    EXPECT_EQ(ui.find("frm_main").windowTitle(), "VELOTRACE  - " + path_of("sink.bin"));
    erase();
    EXPECT_EQ(generator->sink(1), QByteArray(256, '\xFF'));
    EXPECT_EQ(ui.text("lab_pass"), "PASS");
    EXPECT_EQ(ui.text("txt_msg"), "Erasing sink's edid ...\nERS002 ERASE complete.");
    ui.click("cmd_ok");
    EXPECT_FALSE(ui.is_shown("fra_compare"));

    ui.click("cmd_write");
    EXPECT_EQ(ui.text("txt_msg"), "Writing WRITE data ...\nEWR002 Write completely .");
    EXPECT_EQ(generator->sink(1), first_edid());
    ui.click("cmd_verify");
    EXPECT_EQ(ui.text("txt_msg"), "Reading sink's edid ...\nComparing ...\nMatch entirely.");
    EXPECT_EQ(ui.text("lab_pass"), "PASS");
}

TEST_F(edid_end_to_end, every_saved_format_can_be_read_back) {
    const ui_driver ui = driver();
    ui.click("cmd_read");
    const QString text = ui.text("txt_read");
    save("cmd_save_read", "simple.hex", "opt_hex_type_0");
    save("cmd_save_read", "initialiser.hex", "opt_hex_type_1");
    save("cmd_save_read", "raw.bin");
    EXPECT_TRUE(file("initialiser.hex").startsWith("0x00,0xFF,0xFF,0xFF,0xFF,0xFF,0xFF,0x00, //7\r\n"));
    for (const char* name : {"simple.hex", "initialiser.hex", "raw.bin"}) {
        ui.click("cmd_clear_file");
        EXPECT_EQ(ui.text("txt_write"), "");
        open(name);
        EXPECT_EQ(ui.text("txt_write"), text) << name;
    }
    ASSERT_EQ(dialogs.size(), 6U);
    EXPECT_EQ(dialogs[0].title, "Save EDID file");
    EXPECT_EQ(dialogs[0].folder, directory.path());
    EXPECT_EQ(dialogs[0].filters, (QStringList{"*.hex", "*.bin"}));
    EXPECT_EQ(dialogs[3].title, "Open edid file");
    EXPECT_EQ(dialogs[3].filters.size(), 5);
}

TEST_F(edid_end_to_end, a_production_run_stamps_ten_units_one_after_another) {
    open_first_edid();
    const ui_driver ui = driver();
    constexpr int first_sn = 0x12345678;
    std::vector<QByteArray> units;
    in_next_window("frm_diag", [&](const ui_driver& run) {
        run.type("txt_sn", QString::number(first_sn));
        run.click("chk_auto_sn");
        for (int unit = 0; unit < 10; ++unit) {
            generator->command("sink 1 first"); // plugs in the next unit
            run.click("cmd_run");
            EXPECT_EQ(run.text("lab_pass"), "PASS");
            EXPECT_EQ(run.text("lab_pass_sn"), QString::number(first_sn + unit));
            units.push_back(generator->sink(1));
        }
        EXPECT_EQ(run.text("txt_sn"), QString::number(first_sn + 10));
        run.click("cmd_ok");
    });
    ui.click("cmd_w_auto");
    ASSERT_EQ(units.size(), 10U);
    QByteArray expected = first_edid();
    for (int unit = 0; unit < 10; ++unit) {
        for (int place = 0; place < 4; ++place)
            expected[12 + place] = static_cast<char>((first_sn + unit) >> (8 * place));
        expected[127] = static_cast<char>(checksum_of(expected));
        EXPECT_EQ(units[static_cast<std::size_t>(unit)], expected) << unit;
    }
    // the stamped numbers are gone from the buffer, and WRITE is enabled again
    EXPECT_EQ(desk().edid_buffers.write_buff[12], byte_of(first_edid(), 12));
    EXPECT_TRUE(ui.find("cmd_write").isEnabled());
    EXPECT_EQ(desk().shared_fields.diag_mode, 3);
}

TEST_F(edid_end_to_end, a_write_protected_sink_is_reported) {
    open_first_edid();
    const ui_driver ui = driver();
    generator->command("protect 1 on");
    ui.click("cmd_write");
    EXPECT_EQ(ui.text("txt_msg"), "Writing WRITE data ...\nEWR003 DDC Error,Write Fail !");
    EXPECT_EQ(ui.text("lab_pass"), "FAIL");
    EXPECT_TRUE(ui.find("cmd_ok").isEnabled());
}

TEST_F(edid_end_to_end, a_missing_sink_fails_the_read_in_the_read_window) {
    const ui_driver ui = driver();
    generator->command("sink 2 none");
    ui.click("opt_edid_src_2");
    ui.click("cmd_read");
    EXPECT_EQ(ui.text("txt_read"), "Reading HDMI/DVI-IN's edid ...\nTimeout ! Read fail !");
    EXPECT_TRUE(ui.find("cmd_read").isEnabled());
    EXPECT_FALSE(ui.find("cmd_sum_read").isEnabled());
}

TEST_F(edid_end_to_end, the_desk_survives_a_cable_pulled_during_the_data) {
    const ui_driver ui = driver();
    ui.when(heard("ESC001"), [&] { generator->command("short 1 128"); });
    ui.when([&] { return generator->has_printed("< hex:"); }, [&] { generator->kill(); });
    ui.click("cmd_read");
    EXPECT_TRUE(ui.text("txt_read").endsWith("\nTimeout ! Read fail !"));
    generator.reset();
    plug_generator();
    ui.click("cmd_conn");
    ui.click("cmd_read");
    EXPECT_TRUE(ui.text("lab_read_checksum_0").endsWith(" Correct.")) << ui.text("txt_read").toStdString();
}

TEST_F(edid_end_to_end, a_wrong_checksum_is_repaired_in_the_window_and_saved) {
    const ui_driver ui = driver();
    QByteArray edid = first_edid();
    const char right = edid.at(127);
    edid[127] = static_cast<char>(right + 1);
    put_file("wrong.bin", edid);
    open("wrong.bin");
    EXPECT_TRUE(ui.text("lab_write_checksum_0").endsWith(" Error."));
    ASSERT_TRUE(ui.is_shown("cmd_recover_0"));
    ui.click("cmd_recover_0");
    EXPECT_TRUE(ui.text("lab_write_checksum_0").endsWith(" Modified."));
    EXPECT_FALSE(ui.is_shown("cmd_recover_0"));
    EXPECT_EQ(ui.find("frm_main").windowTitle(), "VELOTRACE  - " + path_of("wrong.bin") + " *");
    save("cmd_save_write", "mended.bin");
    EXPECT_EQ(file("mended.bin"), first_edid());
}

TEST_F(edid_end_to_end, a_listed_file_is_reopened) {
    const ui_driver ui = driver();
    put_file("one.bin", first_edid());
    put_file("two.bin", QByteArray(256, '\x01'));
    open("one.bin");
    open("two.bin");
    ui.click("cmd_pre_f");
    EXPECT_TRUE(ui.is_shown("fra_pre_f"));
    QTest::mouseMove(&ui.find("lab_pre_f_1"));
    EXPECT_TRUE(wait_until([&] { return desk().workbench.lab_pre_f[1].back_color == 0xFF0000U; }, 20000));
    ui.click("lab_pre_f_1");
    EXPECT_FALSE(ui.is_shown("fra_pre_f"));
    EXPECT_EQ(desk().workbench.lab_pre_f[0].caption.get(), path_of("one.bin").toStdString());
    EXPECT_TRUE(ui.text("txt_write").startsWith("00 FF FF"));
}

TEST_F(edid_end_to_end, a_missing_file_is_reported) {
    answer_next_box(boxes, QMessageBox::Ok);
    open("none.bin");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, path_of("none.bin") + " dosen't exist !");
}

TEST_F(edid_end_to_end, the_dialog_appends_the_filters_extension) {
    put_file("board.bin", first_edid());
    open("board.bin");
    save("cmd_save_write", "board", "opt_hex_type_0");
    EXPECT_EQ(dialogs.back().file_name, "board");
    EXPECT_TRUE(file("board.hex").startsWith("00 FF FF"));
    save("cmd_save_write", "copy");
    EXPECT_EQ(file("copy.bin"), first_edid());
}

TEST_F(edid_end_to_end, enter_but_not_escape_chooses_the_hex_style) {
    open_first_edid();
    answer_next_file_dialog(dialogs, path_of("board.hex"), 1);
    in_next_window("frm_diag", [this](const ui_driver& ui) {
        ui.press_key("opt_hex_type_0", Qt::Key_Escape);
        EXPECT_TRUE(ui.is_shown("frm_diag"));
        EXPECT_FALSE(QFile::exists(path_of("board.hex")));
        ui.press_key("opt_hex_type_0", Qt::Key_Return);
        EXPECT_FALSE(ui.is_shown("frm_diag"));
    });
    driver().click("cmd_save_write");
    EXPECT_TRUE(file("board.hex").startsWith("00 FF FF"));
}

TEST_F(edid_end_to_end, escape_closes_the_automatic_run_only_while_idle) {
    open_first_edid();
    in_next_window("frm_diag", [this](const ui_driver& ui) {
        ui.when(heard("EWR001"), [&ui] {
            ui.press_key("chk_write", Qt::Key_Escape);
            EXPECT_TRUE(ui.is_shown("frm_diag"));
        });
        ui.click("cmd_run");
        ui.press_key("chk_write", Qt::Key_Escape);
        EXPECT_FALSE(ui.is_shown("frm_diag"));
    });
    driver().click("cmd_w_auto");
}

TEST_F(edid_end_to_end, a_file_of_a_megabyte_is_shown_and_silently_refused) {
    put_file("firmware.bin", QByteArray(1'000'000, 'x'));
    open("firmware.bin");
    EXPECT_TRUE(driver().text("txt_write").endsWith("//F423F\n"));
    EXPECT_EQ(desk().form.caption.get(), "VELOTRACE ");
    EXPECT_FALSE(driver().find("cmd_write").isEnabled());
}

TEST_F(edid_end_to_end, a_long_path_is_elided_in_the_middle_in_the_list) {
    const ui_driver ui = driver();
    desk().workbench.lab_pre_f[0].caption = "/home/" + std::string(200, 'm') + "/display.bin";
    ui.click("cmd_pre_f");
    const QImage shown = ui.find("lab_pre_f_0").grab().toImage();
    desk().workbench.lab_pre_f[0].caption = "/home/" + std::string(200, 'm') + "/another.bin";
    ui.click("lab_edid_src");
    EXPECT_NE(ui.find("lab_pre_f_0").grab().toImage(), shown);
}

TEST_F(edid_end_to_end, a_cancelled_dialog_changes_nothing) {
    answer_next_file_dialog(dialogs, "");
    driver().click("cmd_load");
    EXPECT_EQ(dialogs.size(), 1U);
    EXPECT_EQ(desk().form.caption.get(), "VELOTRACE ");
}

class frm_diag_window : public edid_end_to_end {};

TEST_F(frm_diag_window, sums_the_image_and_keeps_the_choices) {
    open_first_edid();
    const ui_driver ui = driver();
    const auto sum = [&](const auto& work) {
        in_next_window("frm_diag", work);
        ui.click("cmd_sum_write");
    };
    const QByteArray edid = first_edid();
    const int plain = std::accumulate(edid.begin(), edid.end(), 0,
                                      [](int so_far, char byte) { return so_far + static_cast<std::uint8_t>(byte); });
    sum([&](const ui_driver& d) {
        EXPECT_EQ(d.text("fra_sum"), "[ WRITE ] Checksum of programmer");
        d.choose("cbo_eeprom", 2);
        d.click("opt_unused_1");
        d.click("cmd_checksum");
        EXPECT_EQ(d.text("lab_checksum"), "0x" + QString::number(plain + 768 * 255, 16).toUpper());
        d.click("cmd_ok");
    });
    EXPECT_EQ(desk().shared_fields.eeprom_size_index, 2);
    sum([&](const ui_driver& d) {
        EXPECT_EQ(d.text("cbo_eeprom"), " 8 KBits(1024 Bytes)");
        EXPECT_EQ(d.text("lab_checksum"), "");
        d.click("chk_4digits");
        d.click("cmd_ok");
    });
    EXPECT_EQ(desk().shared_fields.checksum_4digits, 1);
}

TEST_F(frm_diag_window, is_above_the_main_window_and_its_title_bar_does_not_close_it) {
    open_first_edid();
    const ui_driver ui = driver();
    in_next_window("frm_diag", [&](const ui_driver& d) {
        ui.click("cmd_timing");
        EXPECT_EQ(desk().exchange.view_mode, 4);
        d.find("frm_diag").close();
        EXPECT_TRUE(d.is_shown("frm_diag"));
        d.click("cmd_ok");
    });
    ui.click("cmd_sum_write");
    EXPECT_EQ(desk().shared_fields.diag_mode, 3);
    ui.click("cmd_timing");
    EXPECT_EQ(desk().exchange.view_mode, 0);
}

TEST_F(frm_diag_window, stays_open_while_it_is_minimised) {
    open_first_edid();
    in_next_window("frm_diag", [&](const ui_driver& d) {
        d.find("frm_diag").showMinimized();
        wait_until([] { return false; }, 50);
        EXPECT_EQ(desk().shared_fields.diag_mode, 2);
        d.find("frm_diag").showNormal();
        d.click("cmd_ok");
    });
    driver().click("cmd_w_auto");
    EXPECT_EQ(desk().shared_fields.diag_mode, 3);
}

TEST_F(frm_diag_window, is_new_when_opened_again_before_the_first_call_returns) {
    open_first_edid();
    const ui_driver ui = driver();
    int opened = 0;
    in_next_window("frm_diag", [&](const ui_driver& first) {
        ++opened;
        first.click("cmd_checksum");
        first.click("cmd_ok");
        in_next_window("frm_diag", [&](const ui_driver& second) {
            ++opened;
            EXPECT_EQ(second.text("lab_checksum"), "");
            second.click("cmd_ok");
        });
        ui.click("cmd_sum_read");
    });
    desk().workbench.cmd_sum_read.enabled = true;
    ui.click("cmd_sum_write");
    EXPECT_EQ(opened, 2);
    EXPECT_EQ(desk().shared_fields.diag_mode, 3);
    EXPECT_TRUE(ui.find("cmd_write").isEnabled());
}

TEST_F(frm_diag_window, reports_a_run_without_a_link_above_the_window) {
    open_first_edid();
    const ui_driver ui = driver();
    ui.click("cmd_disconn");
    in_next_window("frm_diag", [&](const ui_driver& d) {
        answer_next_box(boxes, QMessageBox::Ok);
        d.click("cmd_run");
        EXPECT_EQ(d.text("lab_pass"), "FAIL");
        EXPECT_EQ(d.text("txt_auto_msg"), "Writing WRITE data ...\nLink Error !\n");
        d.click("cmd_ok");
    });
    ui.click("cmd_w_auto");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes[0].text, "RS232 is disconnected !");
}

TEST_F(frm_diag_window, ends_the_program_at_a_failure) {
    // with serial number 0 the rest of block 0 sums to 256
    QByteArray edid(256, '\0');
    edid[12] = '\x01';
    edid[20] = '\xFF';
    edid[21] = '\x01';
    edid[127] = static_cast<char>(checksum_of(edid));
    edid[200] = '\x01';
    edid[255] = '\xFF';
    put_file("even.bin", edid);
    const ui_driver ui = driver();
    open("even.bin");
    bool came_back = false;
    in_next_window("frm_diag", [&](const ui_driver& d) {
        d.type("txt_sn", "0");
        answer_next_box(boxes, QMessageBox::Ok);
        d.click("cmd_run");
        came_back = true;
    });
    ui.click("cmd_w_auto");
    EXPECT_TRUE(came_back);
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(boxes[0].text.startsWith("Run-time error '6':\n\nOverflow\n\nStoring the serial number 0"));
    EXPECT_EQ(program->exit_status(), 1);
    EXPECT_FALSE(program->main_window().isVisible());
}

TEST_F(frm_diag_window, closes_with_the_program) {
    open_first_edid();
    in_next_window("frm_diag", [&](const ui_driver&) { program->main_window().close(); });
    driver().click("cmd_w_auto");
    EXPECT_TRUE(program->gate().over());
    EXPECT_EQ(program->exit_status(), 0);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace

} // namespace desk::gui
