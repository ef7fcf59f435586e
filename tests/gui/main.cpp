#include "qt/look.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// a path with a colon would end at it
constexpr const char* screen_file = "screen.json";

/// Describes the screen to the off-screen platform, whose own is too small for the desk at some scales.
void describe_screen(const QStringList& size) {
    QFile file(screen_file);
    if (!file.open(QFile::WriteOnly)) return;
    file.write(QString(R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": %1, "height": %2,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
                   .arg(size.value(0), size.value(1))
                   .toUtf8());
}

} // namespace

int main(int argument_count, char** arguments) {
    const QTemporaryDir folder;
    const QString folder_before = QDir::currentPath();
    QDir::setCurrent(folder.path());
    describe_screen(qEnvironmentVariable("DESK_SCREEN", "3840x2400").split('x'));
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + screen_file);
    for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"})
        qunsetenv(display);
    ::testing::InitGoogleTest(&argument_count, arguments);
    QApplication application(argument_count, arguments);
    // for programs that a test starts
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QDir::setCurrent(folder_before);
    QApplication::setQuitOnLastWindowClosed(false);
    desk::qt::set_look(application);
    return RUN_ALL_TESTS();
}
