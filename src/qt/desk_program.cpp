#include "qt/desk_program.h"

#include "edid/rescue.h"
#include "platform/command_line.h"
#include "platform/program_directory.h"
#include "runtime/version.h"

#include <QApplication>
#include <QMessageBox>

namespace desk::qt {

desk_program::desk_program(std::filesystem::path program_directory)
    : port_(make_native_serial_port(program_directory))
    , machine_{*port_, events_, boxes_, files_, windows_, dates_, std::move(program_directory)} {
    machine_.report_silent_failure = [](std::string_view sentence) {
        write_to_standard_error("velotrace: " + std::string(sentence) + "\n");
    };
    gate_.timer_starts = [this] { events_.share_phase(); };
    gate_.leave = [this] { leave(); };
    desk_.about_view.cmd_about.tool_tip = "VELOTRACE Desk " + std::string(build_version());
}

bool desk_program::start() {
    window_ = std::make_unique<window_face>(desk_.form, gate_);
    boxes_.parent = window_.get();
    files_.parent = window_.get();
    windows_.parent = window_.get();
    gate_.follow = [this] {
        window_->follow();
        windows_.follow();
    };
    gate_.end_loops = [this] { windows_.hide_all(); };
    gate_.run([this] {
        desk_.form.on_load();
        desk_.form.visible = true;
    });
    return !gate_.over();
}

void desk_program::leave() {
    if (const auto& failure = gate_.failure()) {
        const std::string rescued =
            rescue_window_texts(desk_.edid, desk_.fields, machine_.program_directory, user_data_directory);
        QString text =
            QString("Run-time error '%1':\n\n%2\n\n%3")
                .arg(failure->number())
                .arg(QString::fromStdString(std::string(failure->text())), QString::fromStdString(failure->sentence()));
        if (!rescued.empty()) text += "\n\n" + QString::fromStdString(rescued);
        QMessageBox box(QMessageBox::Critical, program_title, text, QMessageBox::Ok, window_.get());
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
    window_->hide();
    QApplication::exit(exit_status());
}

} // namespace desk::qt
