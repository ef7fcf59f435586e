#pragma once

#include "simulator_program.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace desk::gui {

/// The simulated generator, with access to its console.
class operated_simulator {
public:
    explicit operated_simulator(std::unique_ptr<simulator_program> program);
    /// Starts the simulator's program with `link` leading to its line and command-line `options`.
    explicit operated_simulator(const QString& link, const QStringList& options = {})
        : operated_simulator(start_simulator(link, options)) {}
    ~operated_simulator();
    operated_simulator(const operated_simulator&) = delete;
    operated_simulator& operator=(const operated_simulator&) = delete;

    /// Kills it, as if the cable were pulled.
    void kill();
    /// Sends a console line; returns when it has taken effect.
    void command(const QString& line);
    /// The 256 bytes of sink `number`; empty if there is none.
    QByteArray sink(int number);

    bool has_printed(const QByteArray& text) const { return program_->printed().contains(text); }

    /// The traffic since the last call, as printed ("> TIM007", "< TIM007").
    QStringList traffic();
    /// The commands in that traffic, without "> ".
    QStringList commands();
    /// The same, after waiting for `last`: a command without an answer arrives later. Throws std::runtime_error if it
    /// does not arrive.
    QStringList commands_up_to(const QString& last);

private:
    /// Complete lines other than traffic.
    QList<QByteArray> replies() const;
    static void wait_for(const std::function<bool()>& come);

    std::unique_ptr<simulator_program> program_;
    qsizetype read_ = 0;
};

} // namespace desk::gui
