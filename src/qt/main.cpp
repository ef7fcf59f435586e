#include "qt/desk_program.h"
#include "qt/look.h"

#include <QApplication>
#include <QCoreApplication>

int main(int argument_count, char** arguments) {
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_look(application);
    desk::qt::desk_program program(std::filesystem::path(QCoreApplication::applicationDirPath().toStdU16String()));
    if (!program.start()) return 1;
    QApplication::exec();
    return program.exit_status();
}
