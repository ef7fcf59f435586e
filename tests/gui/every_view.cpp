#include "every_view.h"

#include <QTest>

namespace desk::gui {

const std::vector<view>& every_view() {
    static const std::vector<view> views = {
        {"timing", {"cmd_timing"}},
        {"colors", {"cmd_pattern", "row 13", "cmd_download"}},
        {"custom string", {"cmd_pattern", "row 41"}},
        {"favorite timing", {"cmd_fav_timing"}},
        {"favorite pattern", {"cmd_fav_pattern"}},
        {"edid", {"cmd_edid", "cmd_pre_f", "lab_pre_f_0", "cmd_read"}},
        {"list of files", {"cmd_edid", "cmd_pre_f"}},
        {"result", {"cmd_edid", "cmd_pre_f", "lab_pre_f_0", "cmd_read", "cmd_compare"}},
        {"list over result", {"cmd_edid", "cmd_pre_f", "lab_pre_f_0", "cmd_read", "cmd_compare", "cmd_pre_f"}},
        {"translation", {"cmd_edid", "cmd_read", "cmd_read_translate"}},
        {"autorun", {"cmd_auto"}},
        {"panel", {"cmd_setup"}},
    };
    return views;
}

std::string name_of_view(const ::testing::TestParamInfo<view>& info) {
    return QString(info.param.name).replace(' ', '_').toStdString();
}

view_bench::view_bench() {
    plug_generator();
    put_file("display.bin", generator->sink(1));
    put_file("marlo_rs232.ini", "1\r\n\"" + directory.filePath("display.bin").toLocal8Bit() + "\"\r\n" +
                                    QByteArray("\"\"\r\n").repeated(9) + "0\r\n0\r\n0\r\n");
    start();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&program->main_window()));
}

void view_bench::show(const view& v) {
    const ui_driver ui = driver();
    for (const QString click : v.clicks) {
        if (click.startsWith("row "))
            ui.click_row("lstv_pattern", click.mid(4).toInt());
        else
            ui.click(click);
    }
    generator->commands();
}

QString view_bench::widget_name(const control& c) {
    const QString name = QString::fromStdString(c.name);
    return c.index < 0 ? name : name + "_" + QString::number(c.index);
}

} // namespace desk::gui
