#pragma once

#include <QString>
#include <QTemporaryDir>

namespace desk::gui {

/// The off-screen platform with a screen of its own, since the usual one is too small for the desk at some scales. To
/// be made before the application.
class off_screen {
public:
    /// "1920x1080", in real pixels.
    explicit off_screen(const QString& size);
    /// After the application was made: programs that are started have the usual one.
    void settle() const;

private:
    QTemporaryDir folder_;
    QString folder_before_;
};

} // namespace desk::gui
