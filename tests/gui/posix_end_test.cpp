// However its end is requested and whatever it waits for, the desk ends in order within two seconds.

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLibraryInfo>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>

namespace desk::gui {

namespace {

constexpr int patience_ms = 60000; // for a desk or a display server to start
#if defined(WITH_SANITIZERS)
constexpr int longest_end_ms = 20000; // the sanitizers look for leaks
#else
constexpr int longest_end_ms = 2000;
#endif

class ended_desk : public ::testing::Test {
protected:
    ended_desk() {
        desk_.setWorkingDirectory(folder_.path());
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            QFile::copy(QString(FIRST_FILES) + "/" + name, folder_.filePath(name));
            QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
        set_environment({});
    }
    ~ended_desk() override {
        if (desk_.state() == QProcess::NotRunning) return;
        desk_.kill();
        desk_.waitForFinished(patience_ms);
    }

    void set_environment(const QMap<QString, QString>& variables) {
        QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
        all.insert("HOME", folder_.path());
        for (const auto& [name, value] : variables.asKeyValueRange())
            all.insert(name, value);
        desk_.setProcessEnvironment(all);
    }

    void enter(const QString& situation) {
        desk_.start(ENDING_DESK, {situation, folder_.path()});
        while (!printed_.contains("there\n")) {
            ASSERT_TRUE(desk_.waitForReadyRead(patience_ms)) << desk_.readAllStandardError().toStdString();
            printed_ += desk_.readAllStandardOutput();
        }
        ASSERT_EQ(desk_.state(), QProcess::Running);
        // an orderly end rewrites it
        ASSERT_TRUE(QFile::remove(folder_.filePath("marlo_rs232.ini")));
    }

    void send(int signal) { ::kill(static_cast<pid_t>(desk_.processId()), signal); }

    /// Waits for the end and returns the exit status; -1: it crashed.
    int status(int limit_ms = longest_end_ms) {
        QElapsedTimer passed;
        passed.start();
        EXPECT_TRUE(desk_.waitForFinished(patience_ms)) << "it does not end";
        EXPECT_LT(passed.elapsed(), limit_ms);
        told_ = desk_.readAllStandardError();
        EXPECT_FALSE(told_.contains("Sanitizer")) << told_.toStdString();
        return desk_.exitStatus() == QProcess::NormalExit ? desk_.exitCode() : -1;
    }

    bool are_settings_written() const {
        QFile settings(folder_.filePath("marlo_rs232.ini"));
        return settings.open(QFile::ReadOnly) && settings.readAll().startsWith("1\r\n");
    }

    /// The content of the file that standard error names for the READ window's EDID.
    QByteArray rescued() const {
        static const QRegularExpression line("^velotrace: The EDID of the READ window is kept in the file (.*)\\.$",
                                             QRegularExpression::MultilineOption);
        QFile file(line.match(QString::fromUtf8(told_)).captured(1));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    void expect_end_in_order(int signal = SIGTERM) {
        send(signal);
        EXPECT_EQ(status(), 0);
        EXPECT_TRUE(are_settings_written());
        EXPECT_TRUE(rescued().startsWith("00 FF FF FF FF FF FF 00")) << told_.toStdString();
    }

    QTemporaryDir folder_;
    QProcess desk_;
    QByteArray printed_;
    QByteArray told_;
};

class desk_that_waits : public ended_desk, public ::testing::WithParamInterface<const char*> {};

TEST_P(desk_that_waits, ends_in_order) {
    enter(GetParam());
    if (!HasFatalFailure()) expect_end_in_order();
}

INSTANTIATE_TEST_SUITE_P(in, desk_that_waits,
                         ::testing::Values("rest", "exchange", "erase", "automatic_run", "modal_window", "report",
                                           "message_box", "file_dialog", "menu_of_the_file_dialog", "menu_of_a_text",
                                           "open_list", "held_slider"),
                         [](const auto& test) { return std::string(test.param); });

class desk_with_a_close_button : public ended_desk, public ::testing::WithParamInterface<const char*> {};

TEST_P(desk_with_a_close_button, ends_in_order_and_rescues_nothing) {
    enter(GetParam());
    if (HasFatalFailure()) return;
    desk_.write("close\n");
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(are_settings_written());
    // Intended.
    EXPECT_EQ(rescued(), "");
}

INSTANTIATE_TEST_SUITE_P(in, desk_with_a_close_button,
                         ::testing::Values("rest", "exchange", "erase", "automatic_run", "modal_window", "report",
                                           "message_box", "file_dialog", "menu_of_the_file_dialog", "menu_of_a_text",
                                           "open_list", "held_slider"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(ended_desk, ends_in_order_at_each_signal) {
    enter("rest");
    expect_end_in_order(SIGINT);
}

TEST_F(ended_desk, ends_in_order_when_its_terminal_hangs_up) {
    enter("exchange");
    expect_end_in_order(SIGHUP);
}

TEST_F(ended_desk, treats_several_requests_as_one) {
    enter("exchange");
    for (const int signal : {SIGTERM, SIGHUP, SIGTERM, SIGINT})
        send(signal);
    expect_end_in_order();
}

TEST_F(ended_desk, ends_in_order_with_standard_error_unread) {
    enter("rest");
    desk_.closeReadChannel(QProcess::StandardError);
    send(SIGTERM);
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(are_settings_written());
}

TEST_F(ended_desk, ends_although_a_port_never_sends) {
    enter("endless_drain");
    send(SIGTERM);
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(are_settings_written());
}

TEST_F(ended_desk, ends_during_the_box_of_a_failure_with_its_status) {
    enter("failure_box");
    send(SIGTERM);
    EXPECT_EQ(status(), 1);
    EXPECT_FALSE(are_settings_written()) << "intended";
    EXPECT_TRUE(rescued().startsWith("00 FF"));
}

TEST_F(ended_desk, ends_during_the_box_of_a_port_before_its_window_appears) {
    QFile no_terminal(folder_.filePath("com1"));
    ASSERT_TRUE(no_terminal.open(QFile::WriteOnly));
    enter("start_up");
    send(SIGTERM);
    EXPECT_EQ(status(), 0);
    // nothing has changed
    EXPECT_FALSE(are_settings_written());
}

/// The real velotrace program.
class ended_program : public ended_desk {
protected:
    /// Starts it from a folder; `words` precede it on the shell's command line.
    void start_program(const QString& folder, const QString& words = "") {
        QDir(folder_.path()).mkpath(folder);
        const QString path = folder_.filePath(folder + "/velotrace");
        std::error_code error;
        std::filesystem::create_hard_link(VELOTRACE, path.toStdString(), error);
        if (error) std::filesystem::copy_file(VELOTRACE, path.toStdString());
        desk_.start("/bin/sh", {"-c", words + "exec " + path});
    }

    void write_settings_without_a_port() {
        QFile settings(folder_.filePath("marlo_rs232.ini"));
        ASSERT_TRUE(settings.open(QFile::WriteOnly | QFile::Truncate));
        settings.write(without_a_port);
    }

    /// Whether the running program has a signal in a set of /proc/PID/status: "SigCgt" lists those with handlers.
    bool has_signal(const QByteArray& set, int signal) const {
        QFile status(QString("/proc/%1/status").arg(desk_.processId()));
        if (!status.open(QFile::ReadOnly)) return false;
        for (const QByteArray& line : status.readAll().split('\n')) {
            if (line.startsWith(set + ":"))
                return (line.mid(set.size() + 1).trimmed().toULongLong(nullptr, 16) >> (signal - 1) & 1) != 0;
        }
        return false;
    }

    void wait_until_it_handles_signals() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return has_signal("SigCgt", SIGTERM); }, patience_ms));
    }

    QByteArray settings() const {
        QFile file(folder_.filePath("marlo_rs232.ini"));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    const QByteArray without_a_port = "0\r\n" + QByteArray("\"\"\r\n").repeated(10) + "0\r\n0\r\n0\r\n";
};

TEST_F(ended_program, ends_in_order_even_during_start_up) {
    write_settings_without_a_port();
    start_program(".");
    wait_until_it_handles_signals();
    send(SIGTERM);
    // let it start up first
    EXPECT_EQ(status(patience_ms), 0);
    EXPECT_EQ(settings(), without_a_port);
}

TEST_F(ended_program, outlives_its_terminal_if_hang_ups_are_ignored) {
    write_settings_without_a_port();
    start_program(".", "trap '' HUP; ");
    wait_until_it_handles_signals();
    EXPECT_TRUE(has_signal("SigCgt", SIGINT));
    EXPECT_TRUE(has_signal("SigIgn", SIGHUP));
    send(SIGTERM);
    EXPECT_EQ(status(patience_ms), 0);
}

TEST_F(ended_program, ends_during_the_box_of_a_failed_start) {
    QDir(folder_.path()).mkpath("installed/share/velotrace-desk");
    set_environment({{"XDG_DATA_HOME", "/dev/null/data"}});
    start_program("installed/bin");
    QByteArray output;
    const auto is_reported = [&] { return (output += desk_.readAllStandardError()).contains("velotrace: "); };
    ASSERT_TRUE(QTest::qWaitFor(is_reported, patience_ms));
    send(SIGTERM);
    EXPECT_EQ(status(), 1);
}

/// A desk on a private display server that disappears.
class desk_without_its_display : public ended_desk {
protected:
    ~desk_without_its_display() override {
        server_.kill();
        server_.waitForFinished(patience_ms);
    }

    static bool is_there(const char* server, const char* platform) {
        const QString plugin = QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms/" + platform;
        return !QStandardPaths::findExecutable(server).isEmpty() && QFile::exists(plugin);
    }

    /// Qt ends the program with memory of its libraries still allocated.
    static QString without_a_search_for_leaks() { return qEnvironmentVariable("ASAN_OPTIONS") + ":detect_leaks=0"; }

    void start_xvfb() {
        server_.start("Xvfb", {"-displayfd", "1", "-nolisten", "tcp"});
        ASSERT_TRUE(server_.waitForReadyRead(patience_ms)) << server_.readAllStandardError().toStdString();
        const QString display = ":" + QString::fromLatin1(server_.readAllStandardOutput().trimmed());
        set_environment(
            {{"QT_QPA_PLATFORM", "xcb"}, {"DISPLAY", display}, {"ASAN_OPTIONS", without_a_search_for_leaks()}});
    }

    void start_weston() {
        QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
        own.insert("XDG_RUNTIME_DIR", runtime_.path());
        server_.setProcessEnvironment(own);
        server_.start("weston", {"--backend=headless-backend.so", "--socket=bench", "--idle-time=0"});
        ASSERT_TRUE(QTest::qWaitFor([this] { return QFile::exists(runtime_.filePath("bench")); }, patience_ms));
        set_environment(
            {{"QT_QPA_PLATFORM", "wayland"}, {"WAYLAND_DISPLAY", "bench"}, {"XDG_RUNTIME_DIR", runtime_.path()}});
    }

    /// Qt ends the program; everything has been saved by then.
    void expect_all_saved() {
        server_.kill();
        EXPECT_EQ(status(), 1);
        EXPECT_TRUE(are_settings_written());
        EXPECT_TRUE(rescued().startsWith("00 FF FF FF FF FF FF 00")) << told_.toStdString();
    }

    QTemporaryDir runtime_;
    QProcess server_;
};

TEST_F(desk_without_its_display, saves_all_at_the_end_of_the_x_server) {
    if (!is_there("Xvfb", "libqxcb.so")) GTEST_SKIP() << "Xvfb is not installed";
    for (const char* situation : {"rest", "exchange", "message_box"}) {
        SCOPED_TRACE(situation);
        start_xvfb();
        if (HasFatalFailure()) return;
        printed_.clear();
        QFile::copy(QString(FIRST_FILES) + "/marlo_rs232.ini", folder_.filePath("marlo_rs232.ini"));
        enter(situation);
        if (HasFatalFailure()) return;
        expect_all_saved();
        server_.waitForFinished(patience_ms);
    }
}

TEST_F(desk_without_its_display, saves_all_at_the_end_of_the_wayland_compositor) {
    if (!is_there("weston", "libqwayland-generic.so")) GTEST_SKIP() << "weston or qt6-wayland is not installed";
    start_weston();
    if (HasFatalFailure()) return;
    enter("exchange");
    if (!HasFatalFailure()) expect_all_saved();
}

} // namespace

} // namespace desk::gui
