#pragma once

#include <QString>
#include <QTemporaryDir>

namespace desk::gui {

/// Qt's offscreen platform with a configured screen, since the default one is too small for the desk at some scales.
/// Create it before the application.
class off_screen {
public:
    /// "1920x1080", in physical pixels.
    explicit off_screen(const QString& size);
    /// Call it after the application is created: child processes then use the default screen.
    void settle() const;

private:
    QTemporaryDir folder_;
    QString folder_before_;
};

} // namespace desk::gui
