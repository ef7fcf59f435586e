#pragma once

#include <QString>
#include <QTemporaryDir>

namespace desk::gui {

/// Qt's offscreen platform with configured screens, since the default one is too small for the desk at some scales.
/// Create it before the application.
class off_screen {
public:
    /// The screens from left to right, in physical pixels, each with its scale if that is not 1:
    /// "1920x1080,3840x2160@2".
    explicit off_screen(const QString& screens);
    /// Call it after the application is created: child processes then use the default screen.
    void settle() const;

private:
    QTemporaryDir folder_;
    QString folder_before_;
};

} // namespace desk::gui
