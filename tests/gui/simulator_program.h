#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace desk::gui {

/// The running program of the simulated generator.
class simulator_program {
public:
    virtual ~simulator_program() = default;

    /// Ends in good order, or at once, as if the cable had been pulled; returns when it has ended.
    virtual void end() = 0;
    virtual void kill() = 0;
    /// What an operator types.
    virtual void type(const QByteArray& line) = 0;
    /// All that it has printed.
    virtual QByteArray printed() const = 0;
};

/// Starts it with `options`; `link` is to lead to its terminal.
std::unique_ptr<simulator_program> start_simulator(const QString& link, const QStringList& options = {});

} // namespace desk::gui
