// However the end of the user's log-on finds the desk, it ends in order.

#include "operated_simulator.h"
#include "platform/port_file.h"
#include "runtime/files.h"
#include "runtime/windows_api.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace desk::gui {

namespace {

constexpr int patience_ms = 60000;   // for a desk to start
constexpr int longest_end_ms = 5000; // Windows shows the desk as an obstacle after this

std::vector<HWND> windows_of(qint64 process) {
    struct search {
        DWORD process;
        std::vector<HWND> found;
    } wanted{static_cast<DWORD>(process), {}};
    const auto note = [](HWND window, LPARAM into) -> BOOL {
        auto& all = *reinterpret_cast<search*>(into);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == all.process) all.found.push_back(window);
        return TRUE;
    };
    EnumWindows(note, reinterpret_cast<LPARAM>(&wanted));
    return wanted.found;
}

class logged_off_desk : public ::testing::Test {
protected:
    logged_off_desk() {
        for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
            QFile::copy(QString(FIRST_FILES) + "/" + name, folder_.filePath(name));
            QFile::setPermissions(folder_.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
        }
        desk_.setWorkingDirectory(folder_.path());
        desk_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    ~logged_off_desk() override {
        if (desk_.state() == QProcess::NotRunning) return;
        desk_.kill();
        desk_.waitForFinished(patience_ms);
    }

    static QString beside(const QString& program) {
        return QDir(QCoreApplication::applicationDirPath()).filePath(program);
    }

    void enter(const QString& situation) {
        desk_.start(beside("ending_desk.exe"), {situation, folder_.path()});
        QByteArray printed;
        while (!printed.contains("there")) {
            ASSERT_TRUE(desk_.waitForReadyRead(patience_ms));
            printed += desk_.readAllStandardOutput();
        }
        ASSERT_EQ(desk_.state(), QProcess::Running);
        // an orderly end rewrites it
        ASSERT_TRUE(QFile::remove(folder_.filePath("marlo_rs232.ini")));
    }

    /// As Windows does: first it asks every window, then it tells every window the result.
    bool allows_log_off() const {
        const std::vector<HWND> windows = windows_of(desk_.processId());
        EXPECT_FALSE(windows.empty());
        bool all = true;
        for (HWND one : windows) {
            DWORD_PTR answer = 0;
            EXPECT_NE(SendMessageTimeoutW(one, WM_QUERYENDSESSION, 0, static_cast<LPARAM>(ENDSESSION_LOGOFF),
                                          SMTO_NORMAL, longest_end_ms, &answer),
                      0);
            all = all && answer != 0;
        }
        return all;
    }
    void send_result(bool ends) const {
        for (HWND one : windows_of(desk_.processId())) {
            DWORD_PTR unused = 0;
            SendMessageTimeoutW(one, WM_ENDSESSION, ends ? TRUE : FALSE, static_cast<LPARAM>(ENDSESSION_LOGOFF),
                                SMTO_NORMAL, longest_end_ms, &unused);
        }
    }

    /// Waits for the end and returns the exit status; -1: it crashed.
    int status() {
        QElapsedTimer passed;
        passed.start();
        EXPECT_TRUE(desk_.waitForFinished(patience_ms)) << "it does not end";
        EXPECT_LT(passed.elapsed(), longest_end_ms);
        return desk_.exitStatus() == QProcess::NormalExit ? desk_.exitCode() : -1;
    }
    QByteArray content(const QString& name) const {
        QFile file(folder_.filePath(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder_;
    QProcess desk_;
};

class logged_off_desk_that_waits : public logged_off_desk, public ::testing::WithParamInterface<const char*> {};

TEST_P(logged_off_desk_that_waits, ends_in_order) {
    enter(GetParam());
    if (HasFatalFailure()) return;
    EXPECT_TRUE(allows_log_off());
    EXPECT_FALSE(QFile::exists(folder_.filePath("marlo_rs232.ini"))) << "another program can still cancel it";
    send_result(true);
    EXPECT_TRUE(content("marlo_rs232.ini").startsWith("1\r\n")) << "Windows can end the program at once";
    EXPECT_TRUE(content("rescued_read.hex").startsWith("00 FF FF FF FF FF FF 00"));
    EXPECT_EQ(status(), 0);
}

// The file dialog is the system's own.
INSTANTIATE_TEST_SUITE_P(in, logged_off_desk_that_waits,
                         ::testing::Values("rest", "exchange", "erase", "modal_window", "report", "message_box",
                                           "file_dialog", "menu_of_a_text", "open_list", "held_slider"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(logged_off_desk, ends_although_a_port_never_sends) {
    enter("endless_drain");
    if (HasFatalFailure()) return;
    EXPECT_TRUE(allows_log_off());
    send_result(true);
    EXPECT_TRUE(content("marlo_rs232.ini").startsWith("1\r\n"));
    EXPECT_EQ(status(), 0);
}

/// The real program, with the simulated generator at its port.
class logged_off_program : public logged_off_desk {
protected:
    void start_program() {
        const QString program = folder_.filePath("velotrace.exe");
        ASSERT_TRUE(QFile::copy(beside("velotrace.exe"), program));
        QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
        all.insert("QT_PLUGIN_PATH", QCoreApplication::applicationDirPath());
        all.insert("PATH", QDir::toNativeSeparators(QCoreApplication::applicationDirPath()) + ";" + all.value("PATH"));
        desk_.setProcessEnvironment(all);
        desk_.start(program);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !is_port_free(); }, patience_ms)) << "it does not connect";
        ASSERT_TRUE(QTest::qWaitFor([this] { return has_window(); }, patience_ms));
        ASSERT_TRUE(QFile::remove(folder_.filePath("marlo_rs232.ini")));
    }
    /// Does not open it: the desk may just be about to.
    bool is_port_free() const {
        const auto pipe = device_of_port_file(port_file(folder_.path().toStdWString(), 1));
        return pipe && WaitNamedPipeW(path_from_utf8(*pipe).c_str(), 1);
    }
    bool has_window() const {
        for (HWND one : windows_of(desk_.processId())) {
            if (IsWindowVisible(one) != 0 && GetWindowTextLengthW(one) > 0) return true;
        }
        return false;
    }

    operated_simulator generator_{folder_.filePath("com1")};
};

TEST_F(logged_off_program, closes_its_port_and_writes_its_settings) {
    start_program();
    if (HasFatalFailure()) return;
    EXPECT_TRUE(allows_log_off());
    send_result(true);
    EXPECT_TRUE(content("marlo_rs232.ini").startsWith("1\r\n"));
    EXPECT_EQ(status(), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return is_port_free(); }, patience_ms));
}

TEST_F(logged_off_program, goes_on_if_another_program_cancels) {
    start_program();
    if (HasFatalFailure()) return;
    EXPECT_TRUE(allows_log_off());
    send_result(false);
    EXPECT_TRUE(allows_log_off());
    EXPECT_EQ(desk_.state(), QProcess::Running);
    EXPECT_FALSE(is_port_free());
    send_result(true);
    EXPECT_TRUE(content("marlo_rs232.ini").startsWith("1\r\n"));
    EXPECT_EQ(status(), 0);
}

} // namespace

} // namespace desk::gui
