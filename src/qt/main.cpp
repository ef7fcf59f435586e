#include "platform/program_directory.h"
#include "qt/desk_program.h"
#include "qt/look.h"

#include <QApplication>

int main(int argument_count, char** arguments) {
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_look(application);
    desk::qt::desk_program program(desk::program_directory());
    if (!program.start()) return 1;
    QApplication::exec();
    return program.exit_status();
}
