#include "unplug_bench.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <utility>

namespace desk::gui {

namespace {

const QColor green(0, 255, 0);

} // namespace

unplug_bench::unplug_bench() {
    cable.generator.state.erase_time = std::chrono::milliseconds(100);
    cable.generator.state.reset_time = std::chrono::milliseconds(50);
    QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] {
        const auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        box_texts_.append(box->text());
        QTest::mouseClick(box->buttons().constFirst(), Qt::LeftButton);
    });
    watch_.start(10);
    start();
}

QStringList unplug_bench::box_texts() { return std::exchange(box_texts_, {}); }

void unplug_bench::choose_row(const QString& view, const QString& list, int row) {
    at().click(view);
    at().click_row(list, row);
}

void unplug_bench::open_edid() {
    const bytes edid = *cable.generator.state.sinks[0].edid;
    put_file("first.bin", {reinterpret_cast<const char*>(edid.data()), static_cast<qsizetype>(edid.size())});
    at().click("cmd_edid");
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("first.bin"));
    at().click("cmd_load");
    ASSERT_EQ(dialogs.size(), 1U);
}

void unplug_bench::run_automatically() {
    in_next_window("frm_diag", [this](const ui_driver& window) {
        window.click("cmd_run");
        auto_msg = window.text("txt_auto_msg");
        auto_mark = window.text("lab_pass");
        auto_usable = window.find("cmd_run").isEnabled() && window.find("cmd_ok").isEnabled();
        window.click("cmd_ok");
    });
    at().click("cmd_w_auto");
}

QColor unplug_bench::color_of(const QString& button) {
    return at().find(button).palette().color(QPalette::Active, QPalette::Button);
}

void unplug_bench::expect_resting(const QString& button) {
    EXPECT_TRUE(at().find(button).isEnabled()) << button.toStdString();
    EXPECT_EQ(color_of(button), color_of("cmd_about")) << button.toStdString();
}

int unplug_bench::lit(const QString& group, int count) {
    for (int i = 0; i < count; ++i) {
        if (color_of(group + "_" + QString::number(i)) == green) return i;
    }
    return -1;
}

} // namespace desk::gui
