#include "simulator_process.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace desk::gui {

namespace {

constexpr int limit_ms = 10000;

bool is_traffic(const QByteArray& line) { return line.startsWith("> ") || line.startsWith("< "); }

} // namespace

simulator_process::simulator_process(const QString& link, const QStringList& options) : link_(link) {
    process_.setProgram(VELOTRACE_SIM);
    process_.setArguments(options + QStringList{link});
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // a pipe that nobody reads would hold it up
    process_.setStandardOutputFile(log_folder_.filePath("log"));
    process_.start();
    // its first line says that the terminal is there
    wait_for([this] { return !replies().isEmpty(); });
}

void simulator_process::wait_for(const std::function<bool()>& come) {
    for (int ms = 0; !come(); ++ms) {
        if (ms == limit_ms) throw std::runtime_error("the simulator does not answer");
        QThread::msleep(1);
    }
}

QList<QByteArray> simulator_process::replies() const {
    QList<QByteArray> lines = printed().split('\n');
    lines.removeLast(); // it is not whole yet
    lines.erase(std::remove_if(lines.begin(), lines.end(), is_traffic), lines.end());
    return lines;
}

QByteArray simulator_process::printed() const {
    QFile log(log_folder_.filePath("log"));
    return log.open(QFile::ReadOnly) ? log.readAll() : QByteArray();
}

simulator_process::~simulator_process() {
    process_.closeWriteChannel();
    process_.terminate();
    process_.waitForFinished(limit_ms);
}

void simulator_process::kill() {
    process_.kill();
    process_.waitForFinished(limit_ms);
    QFile::remove(link_);
}

void simulator_process::tell(const QString& line) {
    const qsizetype before = replies().size();
    process_.write(line.toUtf8() + "\n");
    process_.waitForBytesWritten(limit_ms);
    wait_for([&] { return replies().size() > before; });
}

QByteArray simulator_process::sink(int number) {
    tell("sink " + QString::number(number));
    return QByteArray::fromHex(replies().constLast());
}

QStringList simulator_process::traffic() {
    QStringList lines;
    const QByteArray all = printed();
    for (const QByteArray& line : all.mid(read_).split('\n')) {
        if (is_traffic(line)) lines.append(QString::fromLatin1(line));
    }
    read_ = all.size();
    return lines;
}

QStringList simulator_process::commands() {
    QStringList heard;
    for (const QString& line : traffic()) {
        if (line.startsWith("> ")) heard.append(line.mid(2));
    }
    return heard;
}

QStringList simulator_process::commands_up_to(const QString& last) {
    wait_for([&] { return printed().indexOf("> " + last.toLatin1() + "\n", read_) >= 0; });
    return commands();
}

} // namespace desk::gui
