#include "simulator_process.h"

#include <QFile>

#include <stdexcept>

namespace desk::gui {

namespace {

constexpr int start_limit_ms = 10000;

} // namespace

simulator_process::simulator_process(const QString& link) : link_(link) {
    process_.setProgram(VELOTRACE_SIM);
    process_.setArguments({"--quiet", link});
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start();
    // its first line says that the terminal is there
    while (!process_.canReadLine()) {
        if (!process_.waitForReadyRead(start_limit_ms)) throw std::runtime_error("the simulator does not start");
    }
    process_.readLine();
}

simulator_process::~simulator_process() {
    process_.closeWriteChannel();
    process_.terminate();
    process_.waitForFinished(start_limit_ms);
}

void simulator_process::kill() {
    process_.kill();
    process_.waitForFinished(start_limit_ms);
    QFile::remove(link_);
}

void simulator_process::tell(const QString& line) {
    process_.write(line.toUtf8() + "\n");
    process_.waitForBytesWritten(start_limit_ms);
}

} // namespace desk::gui
