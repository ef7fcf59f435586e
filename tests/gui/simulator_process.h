#pragma once

#include <QProcess>
#include <QString>

namespace desk::gui {

/// The simulated generator as a program of its own on a pseudo terminal, with `link` leading to it.
class simulator_process {
public:
    explicit simulator_process(const QString& link);
    ~simulator_process();
    simulator_process(const simulator_process&) = delete;
    simulator_process& operator=(const simulator_process&) = delete;

    /// Ends at once, as if the cable had been pulled.
    void kill();
    /// One of its lines of misbehaviour.
    void tell(const QString& line);

private:
    QProcess process_;
    QString link_;
};

} // namespace desk::gui
