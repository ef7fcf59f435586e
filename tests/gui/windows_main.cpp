// Tests of the desk on the windows of Windows.

#include "qt/appearance.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argument_count, char** arguments) {
    ::testing::InitGoogleTest(&argument_count, arguments);
    QApplication application(argument_count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_appearance(application);
    return RUN_ALL_TESTS();
}
