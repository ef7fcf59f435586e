#include "operated_simulator.h"

#include <QTest>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace desk::gui {

namespace {

constexpr int limit_ms = 10000;

bool is_traffic(const QByteArray& line) { return line.startsWith("> ") || line.startsWith("< "); }

} // namespace

operated_simulator::operated_simulator(std::unique_ptr<simulator_program> program) : program_(std::move(program)) {
    // its first line says that the terminal exists
    wait_for([this] { return !replies().isEmpty(); });
}

void operated_simulator::wait_for(const std::function<bool()>& come) {
    for (int ms = 0; !come(); ++ms) {
        if (ms == limit_ms) throw std::runtime_error("the simulator does not answer");
        QTest::qWait(1); // it may need this thread's events
    }
}

QList<QByteArray> operated_simulator::replies() const {
    QList<QByteArray> lines = program_->printed().split('\n');
    lines.removeLast(); // incomplete line
    lines.erase(std::remove_if(lines.begin(), lines.end(), is_traffic), lines.end());
    return lines;
}

operated_simulator::~operated_simulator() { program_->end(); }

void operated_simulator::kill() { program_->kill(); }

void operated_simulator::command(const QString& line) {
    const qsizetype before = replies().size();
    program_->type(line.toUtf8());
    wait_for([&] { return replies().size() > before; });
}

QByteArray operated_simulator::sink(int number) {
    command("sink " + QString::number(number));
    return QByteArray::fromHex(replies().constLast());
}

QStringList operated_simulator::traffic() {
    QStringList lines;
    const QByteArray all = program_->printed();
    for (const QByteArray& line : all.mid(read_).split('\n')) {
        if (is_traffic(line)) lines.append(QString::fromLatin1(line));
    }
    read_ = all.size();
    return lines;
}

QStringList operated_simulator::commands() {
    QStringList heard;
    for (const QString& line : traffic()) {
        if (line.startsWith("> ")) heard.append(line.mid(2));
    }
    return heard;
}

QStringList operated_simulator::commands_up_to(const QString& last) {
    wait_for([&] { return program_->printed().indexOf("> " + last.toLatin1() + "\n", read_) >= 0; });
    return commands();
}

} // namespace desk::gui
