#include "simulator_program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QUuid>

#include <stdexcept>

namespace desk::gui {

namespace {

constexpr int limit_ms = 10000;

/// Windows has no pseudo terminals, so the test's starter runs the simulator outside: orders are lines of a file that
/// the starter follows, and the output is in a file beside it.
class kept_process final : public simulator_program {
public:
    kept_process(const QString& link, const QStringList& options) {
        const QString folder = qEnvironmentVariable("VELOTRACE_SIM_KEEPER");
        if (folder.isEmpty()) throw std::runtime_error("VELOTRACE_SIM_KEEPER does not name the keeper's folder");
        folder_ = QDir(folder);
        log_name_ = "log_" + QUuid::createUuid().toString(QUuid::Id128);
        const QStringList words = QStringList{"start", log_name_, QFileInfo(link).fileName()} + options;
        order(words.join(' ').toUtf8());
    }

    void end() override { order_and_wait("end"); }
    void kill() override { order_and_wait("kill"); }
    void type(const QByteArray& line) override { order("type " + log_name_.toUtf8() + " " + line); }

    QByteArray printed() const override {
        QFile log(folder_.filePath(log_name_));
        return log.open(QFile::ReadOnly) ? log.readAll() : QByteArray();
    }

private:
    void order(const QByteArray& line) const {
        QFile orders(folder_.filePath("orders"));
        if (!orders.open(QFile::WriteOnly | QFile::Append))
            throw std::runtime_error("the keeper's orders can't be written");
        orders.write(line + "\n");
    }

    void order_and_wait(const QByteArray& verb) {
        if (has_ended_) return;
        has_ended_ = true;
        order(verb + " " + log_name_.toUtf8());
        const QString done = folder_.filePath(log_name_ + ".ended");
        for (int ms = 0; ms < limit_ms && !QFile::exists(done); ++ms)
            QThread::msleep(1);
    }

    QDir folder_;
    QString log_name_;
    bool has_ended_ = false;
};

} // namespace

std::unique_ptr<simulator_program> start_simulator(const QString& link, const QStringList& options) {
    return std::make_unique<kept_process>(link, options);
}

} // namespace desk::gui
