#pragma once

#include "runtime/bytes.h"
#include "runtime/windows_api.h"

#include <memory>

namespace desk {

/// A device that was opened for overlapped use: no call waits for it. Once a call has failed the device counts as
/// gone, and unsent data is lost.
class overlapped_device {
public:
    /// Takes over the handle.
    explicit overlapped_device(HANDLE handle) : handle_(handle) {}
    ~overlapped_device();
    overlapped_device(const overlapped_device&) = delete;
    overlapped_device& operator=(const overlapped_device&) = delete;

    HANDLE handle() const { return handle_; }
    bool is_gone() const { return gone_; }

    /// Call it when the system reports that the device no longer works.
    void lose();

    /// Fetches up to `count` bytes that the system has; `received` has those that have come.
    void fetch(std::size_t count);
    bytes& received();
    void discard_received();

    void write(const bytes& data);
    /// Bytes not yet given to the device.
    std::size_t waiting();
    /// Bytes that the device has been given and has not yet finished with.
    std::size_t in_flight();
    /// Forgets both.
    void drop_unsent();

private:
    /// One read or write. The system uses the memory until it has finished.
    struct transfer {
        OVERLAPPED state{};
        bytes data;
    };
    enum class outcome { pending, done, cancelled, failed };

    outcome outcome_of(transfer& one);
    void send_waiting();
    void cancel(std::unique_ptr<transfer>& one);

    HANDLE handle_;
    bool gone_ = false;
    bytes waiting_;
    bytes received_;
    std::unique_ptr<transfer> writing_;
    std::unique_ptr<transfer> reading_;
};

} // namespace desk
