#include "simulator_program.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace desk::gui {

namespace {

constexpr int process_limit_ms = 10000;

class own_process final : public simulator_program {
public:
    own_process(const QString& link, const QStringList& options) : link_(link) {
        process_.setProgram(VELOTRACE_SIM);
        process_.setArguments(options + QStringList{link});
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // an unread pipe would block it
        process_.setStandardOutputFile(log_folder_.filePath("log"));
        process_.start();
    }

    void end() override {
        process_.closeWriteChannel();
        process_.terminate();
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
    QProcess process_;
    QString link_;
    QTemporaryDir log_folder_;
};

} // namespace

std::unique_ptr<simulator_program> start_simulator(const QString& link, const QStringList& options) {
    return std::make_unique<own_process>(link, options);
}

} // namespace desk::gui
