#include "simulator_process.h"

#include <QThread>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace desk::gui {

namespace {

constexpr int limit_ms = 10000;

bool is_traffic(const QByteArray& line) { return line.startsWith("> ") || line.startsWith("< "); }

} // namespace

simulator_process::simulator_process(const QString& link, const QStringList& options)
    : program_(start_simulator(link, options)) {
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
    QList<QByteArray> lines = program_->printed().split('\n');
    lines.removeLast(); // it is not whole yet
    lines.erase(std::remove_if(lines.begin(), lines.end(), is_traffic), lines.end());
    return lines;
}

simulator_process::~simulator_process() { program_->end(); }

void simulator_process::kill() { program_->kill(); }

void simulator_process::tell(const QString& line) {
    const qsizetype before = replies().size();
    program_->type(line.toUtf8());
    wait_for([&] { return replies().size() > before; });
}

QByteArray simulator_process::sink(int number) {
    tell("sink " + QString::number(number));
    return QByteArray::fromHex(replies().constLast());
}

QStringList simulator_process::traffic() {
    QStringList lines;
    const QByteArray all = program_->printed();
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
    wait_for([&] { return program_->printed().indexOf("> " + last.toLatin1() + "\n", read_) >= 0; });
    return commands();
}

} // namespace desk::gui
