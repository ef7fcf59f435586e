// The desktop's setting, from its portal on the session bus.

#include "qt/desktop_scheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QTimer>

#include <optional>
#include <utility>

namespace desk::qt {

namespace {

constexpr const char* service = "org.freedesktop.portal.Desktop";
constexpr const char* path = "/org/freedesktop/portal/desktop";
constexpr const char* settings = "org.freedesktop.portal.Settings";
constexpr const char* group_of_scheme = "org.freedesktop.appearance";
constexpr const char* key_of_scheme = "color-scheme";

/// The session bus, if one is running. None is started.
std::optional<QDBusConnection> session_bus() {
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        if (address.startsWith("autolaunch")) return std::nullopt;
        return QDBusConnection::sessionBus();
    }
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus";
    if (!QFileInfo::exists(socket)) return std::nullopt;
    return QDBusConnection::connectToBus("unix:path=" + socket, "velotrace");
}

class portal final : public QObject {
    Q_OBJECT

public:
    explicit portal(std::function<void(scheme)> report) : report_(std::move(report)) {
        QTimer::singleShot(0, this, &portal::ask);
    }

private:
    Q_SLOT void setting_changed(const QString& group, const QString& key, const QDBusVariant& value) {
        if (group == group_of_scheme && key == key_of_scheme) take(value.variant(), true);
    }

    void ask() {
        std::optional<QDBusConnection> bus = session_bus();
        if (!bus || !bus->isConnected()) return;
        // Qt finds the slot by the names of its types
        qRegisterMetaType<QDBusVariant>("QDBusVariant");
        bus->connect(QString(), path, settings, "SettingChanged", this,
                     SLOT(setting_changed(QString, QString, QDBusVariant)));
        QDBusMessage question = QDBusMessage::createMethodCall(service, path, settings, "Read");
        question << group_of_scheme << key_of_scheme;
        auto* const answer = new QDBusPendingCallWatcher(bus->asyncCall(question), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            const QDBusPendingReply<QDBusVariant> reply = *answer;
            answer->deleteLater();
            if (!reply.isError()) take(reply.value().variant(), false);
        });
    }

    /// 1: dark, 2: light. 0 is no preference: at start it leaves what Qt has found; a change to it is light.
    void take(QVariant value, bool is_change) {
        while (value.userType() == qMetaTypeId<QDBusVariant>())
            value = value.value<QDBusVariant>().variant();
        const uint wish = value.toUInt();
        if (wish != 0 || is_change) report_(wish == 1 ? scheme::dark : scheme::light);
    }

    std::function<void(scheme)> report_;
};

} // namespace

scheme desktop_scheme_now() { return scheme_of(QGuiApplication::palette()); }

std::unique_ptr<QObject> watch_desktop(std::function<void(scheme)> report) {
    return std::make_unique<portal>(std::move(report));
}

} // namespace desk::qt

#include "posix_desktop_scheme.moc"
