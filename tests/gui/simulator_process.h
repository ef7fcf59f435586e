#pragma once

#include "simulator_program.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace desk::gui {

/// The simulated generator as a program of its own on a pseudo terminal, with `link` leading to it.
class simulator_process {
public:
    /// `options` are its own on the command line.
    explicit simulator_process(const QString& link, const QStringList& options = {});
    ~simulator_process();
    simulator_process(const simulator_process&) = delete;
    simulator_process& operator=(const simulator_process&) = delete;

    /// Ends at once, as if the cable had been pulled.
    void kill();
    /// One of its lines of misbehaviour; returns when it has been carried out.
    void tell(const QString& line);
    /// The 256 bytes that sink `number` holds; empty: none is there.
    QByteArray sink(int number);

    /// The traffic since the last call, as the simulator prints it ("> TIM007", "< TIM007").
    QStringList traffic();
    /// The commands of that traffic alone, without the "> ".
    QStringList commands();
    /// The same, when this one has come: what is sent without an answer arrives later. Throws std::runtime_error where
    /// it doesn't come.
    QStringList commands_up_to(const QString& last);

private:
    /// The whole lines that are no traffic.
    QList<QByteArray> replies() const;
    static void wait_for(const std::function<bool()>& come);

    std::unique_ptr<simulator_program> program_;
    qsizetype read_ = 0;
};

} // namespace desk::gui
