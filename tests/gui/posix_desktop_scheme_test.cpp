// The desktop's light or dark preference, from a portal on a private bus.

#include "qt/desktop_scheme.h"
#include "ui_driver.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <vector>

namespace desk::gui {

namespace {

class false_portal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    uint preference = 0;
    int questions = 0;

public slots:
    QDBusVariant Read(const QString& group, const QString& key) {
        if (group == "org.freedesktop.appearance" && key == "color-scheme") ++questions;
        // a portal wraps the value twice
        return QDBusVariant(QVariant::fromValue(QDBusVariant(preference)));
    }
};

class desktop_preference : public testing::Test {
protected:
    void SetUp() override {
        if (QStandardPaths::findExecutable("dbus-daemon").isEmpty() ||
            QStandardPaths::findExecutable("dbus-send").isEmpty())
            GTEST_SKIP() << "there is no bus";
        bus_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address"});
        ASSERT_TRUE(bus_.waitForReadyRead(10000));
        address_ = bus_.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address_.toUtf8());
        QDBusConnection desktop = QDBusConnection::connectToBus(address_, "desktop");
        ASSERT_TRUE(desktop.isConnected());
        ASSERT_TRUE(
            desktop.registerObject("/org/freedesktop/portal/desktop", &portal, QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(desktop.registerService("org.freedesktop.portal.Desktop"));
    }
    void TearDown() override {
        for (const char* name : {"desktop", "qt_default_session_bus"})
            QDBusConnection::disconnectFromBus(name);
        bus_.kill();
        bus_.waitForFinished();
    }

    void announce(uint preference, const QString& key = "color-scheme") const {
        // from another process, like a real portal
        QProcess::execute("dbus-send",
                          {"--bus=" + address_, "--type=signal", "/org/freedesktop/portal/desktop",
                           "org.freedesktop.portal.Settings.SettingChanged", "string:org.freedesktop.appearance",
                           "string:" + key, QString("variant:uint32:%1").arg(preference)});
    }
    bool hears(std::size_t count) {
        return wait_until([&] { return reported.size() >= count; }, 10000);
    }

    false_portal portal;
    std::vector<qt::scheme> reported;

private:
    QString address_;
    QProcess bus_;
};

TEST_F(desktop_preference, is_read_and_followed) {
    portal.preference = 1;
    const auto watch = qt::watch_desktop([this](qt::scheme s) { reported.push_back(s); });
    EXPECT_TRUE(reported.empty()) << "nothing waits for the answer";
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(reported[0], qt::scheme::dark);
    announce(7, "accent-color");
    announce(2);
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(reported[1], qt::scheme::light);
    announce(1);
    ASSERT_TRUE(hears(3));
    EXPECT_EQ(reported[2], qt::scheme::dark);
    announce(0);
    ASSERT_TRUE(hears(4));
    EXPECT_EQ(reported[3], qt::scheme::light) << "no preference any more";
}

TEST_F(desktop_preference, reports_nothing_without_a_preference) {
    const auto watch = qt::watch_desktop([this](qt::scheme s) { reported.push_back(s); });
    ASSERT_TRUE(wait_until([this] { return portal.questions == 1; }, 10000));
    announce(1);
    ASSERT_TRUE(hears(1));
    EXPECT_EQ(reported.size(), 1U) << "the answer came first and was no preference";
}

TEST(session_bus, is_not_started_if_the_session_has_none) {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("XDG_RUNTIME_DIR");
    bool reported = false;
    const auto watch = qt::watch_desktop([&reported](qt::scheme) { reported = true; });
    EXPECT_FALSE(wait_until([&reported] { return reported; }, 200));
}

} // namespace

} // namespace desk::gui

#include "posix_desktop_scheme_test.moc"
