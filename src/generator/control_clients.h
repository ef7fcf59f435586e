#pragma once

#include "runtime/typed_lines.h"

#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace desk {

/// A program at the control channel. No call waits for it.
class control_connection {
public:
    virtual ~control_connection() = default;

    enum class input { none, some, ended, gone };
    /// Appends some of what has arrived.
    virtual input receive(std::string& text) = 0;
    /// Removes what has been sent from the front of `text`. Returns false if the program is gone.
    virtual bool send(std::string& text) = 0;
};

/// The programs at the control channel: carries out the lines of each and returns to it the replies to its own.
class control_clients {
public:
    /// Beyond `most`, the one that was served least recently is dropped: programs that hang do not lock out others.
    void add(std::unique_ptr<control_connection> connection);
    static constexpr std::size_t most = 16;

    enum class waits_for { sending, input };
    /// Calls `visit` for each connection that waits for something. A program that does not read its replies is not
    /// read from.
    void for_each_waiting(const std::function<void(control_connection&, waits_for)>& visit) const;

    /// Whether a line is ready.
    bool has_line() const;

    /// Reads and writes, and carries out at most one line of each program, so that the caller's own work keeps its
    /// pace.
    void serve(const std::function<std::string(std::string_view line)>& reply_to);

private:
    struct client {
        std::unique_ptr<control_connection> connection;
        typed_lines lines = {};
        std::string unsent = {};
        bool ended = false; // sends no more
        bool gone = false;
    };

    static void read_from(client& c);
    static void send_to(client& c);

    std::list<client> clients_; // the least recently served first
};

} // namespace desk
