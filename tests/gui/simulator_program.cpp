#include "simulator_program.h"

#include "simulator_on_event_loop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace desk::gui {

namespace {

constexpr int process_limit_ms = 10000;

/// The program beside the test, as in a package, or that of the build.
QString program() {
    const QString built = VELOTRACE_SIM;
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(QFileInfo(built).fileName());
    return QFile::exists(beside) ? beside : built;
}

/// On Windows port n has the file port<n>.txt in place of the link com<n>.
QString native_link(const QString& link) {
#ifdef _WIN32
    return QString(link).replace(QRegularExpression("com(\\d)$"), "port\\1.txt");
#else
    return link;
#endif
}

class own_process final : public simulator_program {
public:
    own_process(const QString& link, const QStringList& options) : link_(native_link(link)) {
        process_.setProgram(program());
        process_.setArguments(options + QStringList{link_});
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // an unread pipe would block it
        process_.setStandardOutputFile(log_folder_.filePath("log"));
        process_.start();
    }

    void end() override {
        if (process_.state() == QProcess::NotRunning) return;
        type("quit");
        process_.waitForFinished(process_limit_ms);
    }

    void kill() override {
        process_.kill();
        process_.waitForFinished(process_limit_ms);
        QFile::remove(link_);
    }

    void type(const QByteArray& line) override {
        process_.write(line + "\n");
        process_.waitForBytesWritten(process_limit_ms);
    }

    QByteArray printed() const override {
        QFile log(log_folder_.filePath("log"));
        return log.open(QFile::ReadOnly) ? log.readAll() : QByteArray();
    }

private:
    QTemporaryDir log_folder_; // first: it goes after the process
    QProcess process_;
    QString link_;
};

} // namespace

std::unique_ptr<simulator_program> start_simulator(const QString& link, const QStringList& options) {
    return std::make_unique<own_process>(link, options);
}

std::unique_ptr<simulator_program> simulator_for(const QString& link) {
#ifdef _WIN32
    return start_simulator(link);
#else
    return simulator_on_event_loop(link);
#endif
}

void keep_closed(const QString& link) {
#ifdef _WIN32
    QFile file(native_link(link));
    if (file.open(QFile::WriteOnly)) file.write(R"(\\.\pipe\desk_test_that_nobody_serves)");
#else
    QFile::link("no_device", link);
#endif
}

} // namespace desk::gui
