#include "qt/look.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argument_count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(display);
    ::testing::InitGoogleTest(&argument_count, arguments);
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_look(application);
    return RUN_ALL_TESTS();
}
