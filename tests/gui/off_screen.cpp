#include "off_screen.h"

#include <QDir>
#include <QFile>
#include <QStringList>

namespace desk::gui {

namespace {

// Qt ends the path at a colon
constexpr const char* screen_file = "screen.json";

} // namespace

off_screen::off_screen(const QString& size) : folder_before_(QDir::currentPath()) {
    QDir::setCurrent(folder_.path());
    const QStringList sides = size.split('x');
    QFile file(screen_file);
    if (!file.open(QFile::WriteOnly)) return;
    file.write(QString(R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": %1, "height": %2,
        "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})")
                   .arg(sides.value(0), sides.value(1))
                   .toUtf8());
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + screen_file);
}

void off_screen::settle() const {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QDir::setCurrent(folder_before_);
}

} // namespace desk::gui
