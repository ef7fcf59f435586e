#include "platform/command_line.h"
#include "platform/end_request.h"
#include "platform/program_directory.h"
#include "qt/appearance.h"
#include "qt/desk_program.h"
#include "qt/desktop_scheme.h"
#include "qt/end_watch.h"
#include "qt/qt_dialogs.h"
#include "runtime/failure.h"

#include <QApplication>
#include <QMessageBox>

#include <algorithm>
#include <filesystem>

namespace {

/// Also reported on the terminal, for the person who sets up the machine.
int report_start_failure(const desk::runtime_failure& failure) {
    desk::write_to_standard_error("velotrace: " + failure.sentence() + "\n");
    QMessageBox box(QMessageBox::Critical, desk::qt::program_title, QString::fromStdString(failure.sentence()));
    box.setTextFormat(Qt::PlainText);
    box.exec();
    return 1;
}

} // namespace

int main(int argument_count, char** arguments) {
    desk::prepare_standard_streams();
    const desk::end_request request;
    // keep Qt from reading options from the command line
    int only_the_name = std::min(argument_count, 1);
    QApplication application(only_the_name, arguments);
    desk::qt::end_watch watch(request);
    QApplication::setQuitOnLastWindowClosed(false);
    const desk::qt::desktop_scheme desktop(desk::qt::set_scheme);
    desk::qt::set_appearance(application, desktop.now());
    std::filesystem::path own_directory;
    try {
        own_directory = desk::program_directory();
    } catch (const desk::runtime_failure& failure) {
        return report_start_failure(failure);
    }
    desk::qt::desk_program program(own_directory);
    program.end_on(watch);
    if (program.start()) QApplication::exec();
    return program.exit_status();
}
