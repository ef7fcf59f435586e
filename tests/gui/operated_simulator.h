#pragma once

#include "simulator_program.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace desk::gui {

/// The simulated generator with an operator who types lines and reads what it prints.
class operated_simulator {
public:
    explicit operated_simulator(std::unique_ptr<simulator_program> program);
    /// The simulator's own program on a line that `link` leads to; `options` are those of its command line.
    explicit operated_simulator(const QString& link, const QStringList& options = {})
        : operated_simulator(start_simulator(link, options)) {}
    ~operated_simulator();
    operated_simulator(const operated_simulator&) = delete;
    operated_simulator& operator=(const operated_simulator&) = delete;

    /// Ends at once, as if the cable had been pulled.
    void kill();
    /// One of its lines of misbehaviour; returns when it has been carried out.
    void tell(const QString& line);
    /// The 256 bytes that sink `number` holds; empty: none is there.
    QByteArray sink(int number);

    /// Whether it has printed this since it started.
    bool has_printed(const QByteArray& text) const { return program_->printed().contains(text); }

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
