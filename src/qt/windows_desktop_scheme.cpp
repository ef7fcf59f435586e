// The setting of Windows, from the registry.

#include "qt/desktop_scheme.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSettings>
#include <QTimer>

#include <utility>

namespace desk::qt {

namespace {

class theme_of_programs final : public QObject {
public:
    explicit theme_of_programs(std::function<void(scheme)> report) : report_(std::move(report)) {
        QCoreApplication::instance()->installEventFilter(this);
        QTimer::singleShot(0, this, [this] { look(); });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (e->type() == QEvent::ThemeChange) look();
        return QObject::eventFilter(watched, e);
    }

private:
    void look() {
        const QSettings choices(R"(HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize)",
                                QSettings::NativeFormat);
        report_(choices.value("AppsUseLightTheme", 1).toInt() == 0 ? scheme::dark : scheme::light);
    }

    std::function<void(scheme)> report_;
};

} // namespace

std::unique_ptr<QObject> watch_desktop(std::function<void(scheme)> report) {
    return std::make_unique<theme_of_programs>(std::move(report));
}

} // namespace desk::qt
