#pragma once

#include "runtime/typed_lines.h"

#include <filesystem>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>
#include <sys/types.h>

namespace desk {

/// A Unix socket that only this user can connect to. It takes lines from several programs at once and returns to each
/// the replies to its own. It never blocks.
class control_socket {
public:
    /// Listens at `path`. Replaces a socket of this user if no program listens there any more. Throws
    /// failure::path_file_access_error if anything else has the name, or if the system refuses.
    explicit control_socket(std::filesystem::path path);
    /// Removes the socket if it still has the name.
    ~control_socket();
    control_socket(const control_socket&) = delete;
    control_socket& operator=(const control_socket&) = delete;

    /// Appends the descriptors to wait for; then call `serve`.
    void add_polled(std::vector<pollfd>& polled) const;

    /// Whether a line is ready.
    bool has_line() const;

    /// Reads and writes without blocking, and carries out at most one line of each program, so that the caller's own
    /// work keeps its pace.
    void serve(const std::function<std::string(std::string_view line)>& reply_to);

private:
    struct client {
        int descriptor;
        typed_lines lines;
        std::string unsent;
        bool ended = false; // sends no more
        bool gone = false;
    };

    void accept_clients();
    static void read_from(client& c);
    static void send_to(client& c);
    bool is_this(const std::filesystem::path& path) const;

    std::filesystem::path path_;
    int listener_ = -1;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    std::list<client> clients_; // the least recently served first
};

} // namespace desk
