#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace desk::gui {

class simulator_program {
public:
    virtual ~simulator_program() = default;

    /// Ends it in order, or kills it as if the cable were pulled; returns when it has ended.
    virtual void end() = 0;
    virtual void kill() = 0;
    /// Types a line on its console.
    virtual void type(const QByteArray& line) = 0;
    /// All output so far.
    virtual QByteArray printed() const = 0;
};

/// Starts it with `options`; it makes `link`, "com<n>" in a desk's folder, lead to its line.
std::unique_ptr<simulator_program> start_simulator(const QString& link, const QStringList& options = {});

/// A simulator that shares this thread's event loop, where the system supports that.
std::unique_ptr<simulator_program> simulator_for(const QString& link);

/// Lets `link`, "com<n>" in a desk's folder, lead to no device, in place of this machine's own.
void keep_closed(const QString& link);

} // namespace desk::gui
