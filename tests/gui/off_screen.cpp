#include "off_screen.h"

#include <QDir>
#include <QFile>
#include <QStringList>

namespace desk::gui {

namespace {

// Qt ends the path at a colon
constexpr const char* screen_file = "screen.json";

} // namespace

off_screen::off_screen(const QString& screens) : folder_before_(QDir::currentPath()) {
    QDir::setCurrent(folder_.path());
    QStringList described;
    int left = 0;
    for (const QString& screen : screens.split(',')) {
        const QStringList parts = screen.split('@');
        const QStringList sides = parts[0].split('x');
        described << QString(R"({"name": "screen %1", "x": %2, "y": 0, "width": %3, "height": %4,
            "logicalDpi": %5, "logicalBaseDpi": 96, "dpr": 1})")
                         .arg(described.size())
                         .arg(left)
                         .arg(sides.value(0), sides.value(1))
                         .arg(96 * parts.value(1, "1").toInt());
        left += sides.value(0).toInt();
    }
    QFile file(screen_file);
    if (!file.open(QFile::WriteOnly)) return;
    file.write(("{\"screens\": [" + described.join(',') + "]}").toUtf8());
    qputenv("QT_QPA_PLATFORM", QByteArray("offscreen:configfile=") + screen_file);
}

void off_screen::settle() const {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QDir::setCurrent(folder_before_);
}

} // namespace desk::gui
