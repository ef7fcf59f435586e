#include "platform/windows_overlapped_device.h"

#include <chrono>

namespace desk {

namespace {

constexpr std::chrono::milliseconds longest_cancelling{100};

} // namespace

overlapped_device::~overlapped_device() {
    cancel(writing_);
    cancel(reading_);
    CloseHandle(handle_);
}

void overlapped_device::lose() {
    gone_ = true;
    discard_received();
    drop_unsent();
}

void overlapped_device::fetch(std::size_t count) {
    if (gone_ || reading_ || count == 0) return;
    reading_ = std::make_unique<transfer>();
    reading_->data.resize(count);
    if (ReadFile(handle_, reading_->data.data(), static_cast<DWORD>(count), nullptr, &reading_->state) ||
        GetLastError() == ERROR_IO_PENDING)
        return;
    reading_.reset();
    lose();
}

bytes& overlapped_device::received() {
    if (!reading_) return received_;
    switch (outcome_of(*reading_)) {
    case outcome::pending:
        break;
    case outcome::done:
        received_.insert(received_.end(), reading_->data.begin(), reading_->data.end());
        [[fallthrough]];
    case outcome::cancelled:
        reading_.reset();
        break;
    case outcome::failed:
        reading_.reset();
        lose();
        break;
    }
    return received_;
}

void overlapped_device::discard_received() {
    received_.clear();
    cancel(reading_);
}

void overlapped_device::write(const bytes& data) {
    if (gone_) return;
    waiting_.insert(waiting_.end(), data.begin(), data.end());
    send_waiting();
}

std::size_t overlapped_device::waiting() {
    send_waiting();
    return waiting_.size();
}

std::size_t overlapped_device::in_flight() {
    send_waiting();
    return writing_ ? writing_->data.size() : 0;
}

void overlapped_device::drop_unsent() {
    waiting_.clear();
    cancel(writing_);
}

/// When the transfer is done, its data are the bytes that were read, or those that were not written.
overlapped_device::outcome overlapped_device::outcome_of(transfer& one) {
    DWORD count = 0;
    if (!GetOverlappedResult(handle_, &one.state, &count, FALSE)) {
        switch (GetLastError()) {
        case ERROR_IO_INCOMPLETE:
            return outcome::pending;
        case ERROR_OPERATION_ABORTED:
            return outcome::cancelled;
        default:
            return outcome::failed;
        }
    }
    if (&one == reading_.get())
        one.data.resize(count);
    else
        one.data.erase(one.data.begin(), one.data.begin() + static_cast<std::ptrdiff_t>(count));
    return outcome::done;
}

void overlapped_device::send_waiting() {
    while (writing_ || !waiting_.empty()) {
        if (!writing_) {
            writing_ = std::make_unique<transfer>();
            writing_->data.swap(waiting_);
            if (!WriteFile(handle_, writing_->data.data(), static_cast<DWORD>(writing_->data.size()), nullptr,
                           &writing_->state) &&
                GetLastError() != ERROR_IO_PENDING) {
                writing_.reset();
                return lose();
            }
        }
        const std::size_t offered = writing_->data.size();
        const outcome how = outcome_of(*writing_);
        if (how == outcome::pending) return;
        const std::unique_ptr<transfer> over = std::move(writing_);
        if (how == outcome::failed) return lose();
        if (how == outcome::cancelled) continue;
        waiting_.insert(waiting_.begin(), over->data.begin(), over->data.end());
        // it takes nothing: try again at the next call
        if (over->data.size() == offered) return;
    }
}

void overlapped_device::cancel(std::unique_ptr<transfer>& one) {
    if (!one) return;
    CancelIoEx(handle_, &one->state);
    // a sleep takes up to 16 ms
    const auto end = std::chrono::steady_clock::now() + longest_cancelling;
    while (!HasOverlappedIoCompleted(&one->state) && std::chrono::steady_clock::now() < end)
        Sleep(1);
    // a driver that does not let go keeps the memory
    if (HasOverlappedIoCompleted(&one->state))
        one.reset();
    else
        static_cast<void>(one.release());
}

} // namespace desk
