#pragma once

#include "generator/command_stream.h"
#include "generator/simulated_generator.h"
#include "own_line.h"

#include <QTimer>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>

namespace desk::gui {

/// When the cable is pulled in a transfer, in bytes from its beginning.
struct pull_moment {
    enum class after {
        never,
        received, ///< after this many bytes from the desk, before any answer to the last
        answered, ///< after this many bytes from the desk and their answers: when the next byte arrives
        sent      ///< after this many bytes to the desk
    };
    after what = after::never;
    std::size_t bytes = 0;
};

/// A simulated generator at port 1 of a desk, with a cable to pull. Runs in a separate thread, so that the cable can be
/// pulled while the desk runs no events.
class line_to_pull {
public:
    /// `folder`: the desk's own.
    explicit line_to_pull(std::filesystem::path folder);
    ~line_to_pull() { end_thread(); }
    line_to_pull(const line_to_pull&) = delete;
    line_to_pull& operator=(const line_to_pull&) = delete;

    /// Connects the generator, with its state, to a new line.
    void plug();
    /// Marks the start of a transfer, and the moment in it to pull the cable.
    void pull_at(pull_moment moment);
    void pull();
    bool is_pulled() const { return pulled_; }

    simulated_generator generator{79, 64};

private:
    void serve();
    void receive(std::uint8_t byte);
    void send(const answer& parts);
    void send(const bytes& data);
    bool is_now(pull_moment::after what, std::size_t count) const;
    void hang_up();
    void end_thread();
    void let_the_desk_read() const;

    std::filesystem::path folder_;
    std::unique_ptr<own_line> line_;
    command_stream stream_;
    std::string last_command_;
    pull_moment moment_;
    std::size_t received_ = 0;
    std::size_t sent_ = 0;
    std::atomic<bool> pulled_ = false;
    std::atomic<bool> ending_ = false;
    std::shared_ptr<void> pace_ = pace_of_own_lines();
    QTimer turns_; // with the receiver's interval, in the desk's thread
    std::atomic<int> turn_ = 0;
    std::thread thread_;
};

} // namespace desk::gui
