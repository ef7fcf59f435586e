#include "off_screen.h"
#include "qt/appearance.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argument_count, char** arguments) {
    const desk::gui::off_screen screen(qEnvironmentVariable("DESK_SCREEN", "3840x2400,3840x2400@2"));
    for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(display);
    ::testing::InitGoogleTest(&argument_count, arguments);
    QApplication application(argument_count, arguments);
    screen.settle();
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_appearance(application);
    return RUN_ALL_TESTS();
}
