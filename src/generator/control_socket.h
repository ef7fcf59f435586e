#pragma once

#include "generator/typed_lines.h"

#include <filesystem>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include <poll.h>
#include <sys/types.h>

namespace desk {

/// A Unix socket for the user alone that takes lines from several programs at once. Whoever sends a line gets the
/// reply to it. Never waits for anybody.
class control_socket {
public:
    /// Listens at `path`. A socket there that belongs to this user and that no program listens at any more is replaced.
    /// Throws failure::path_file_access_error for anything else that has the name, and where the system refuses.
    explicit control_socket(std::filesystem::path path);
    /// Removes the socket if it still has the name.
    ~control_socket();
    control_socket(const control_socket&) = delete;
    control_socket& operator=(const control_socket&) = delete;

    /// Appends what to wait for. `serve` takes these entries.
    void add_polled(std::vector<pollfd>& polled) const;

    /// Whether there is work without waiting.
    bool has_line() const;

    /// Reads and writes what is possible at once, and carries out one line of each program: the pace of the caller's
    /// own work is kept.
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
    std::list<client> clients_; // the one that was heard last at the end
};

} // namespace desk
