#include "line_to_pull.h"

#include "runtime/bytes.h"

#include <chrono>

#include <poll.h>

namespace desk::gui {

namespace {

using std::chrono::milliseconds;

/// The stream's clock stands still: a desk that is held up leaves nothing behind.
constexpr double now_ms = 0;

constexpr int receiver_turn_ms = 20;

} // namespace

line_to_pull::line_to_pull(std::filesystem::path link) : link_(std::move(link)) {
    turns_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] { ++turn_; });
    turns_.start(receiver_turn_ms);
    plug();
}

void line_to_pull::plug() {
    end_thread();
    stream_ = {};
    pulled_ = false;
    moment_ = {};
    terminal_.emplace();
    std::filesystem::remove(link_);
    std::filesystem::create_symlink(terminal_->name(), link_);
    ending_ = false;
    thread_ = std::thread([this] { serve(); });
}

void line_to_pull::pull_at(pull_moment moment) {
    end_thread();
    heard_ = 0;
    said_ = 0;
    moment_ = moment;
    // without a byte before it, the cable is out when the operator begins
    if (is_now(pull_moment::after::done, 0)) {
        hang_up();
        return;
    }
    ending_ = false;
    thread_ = std::thread([this] { serve(); });
}

void line_to_pull::pull() {
    end_thread();
    if (!pulled_) hang_up();
}

void line_to_pull::hang_up() {
    // the terminal's name may be another's by the time the desk looks for it again
    std::filesystem::remove(link_);
    std::filesystem::create_symlink("no_device", link_);
    terminal_.reset();
    pulled_ = true;
}

void line_to_pull::end_thread() {
    ending_ = true;
    if (thread_.joinable()) thread_.join();
}

void line_to_pull::serve() {
    while (!ending_ && !pulled_) {
        pollfd line{terminal_->descriptor(), POLLIN, 0};
        if (::poll(&line, 1, 5) <= 0) continue;
        for (const std::uint8_t byte : terminal_->read()) {
            if (!pulled_) hear(byte);
        }
    }
}

bool line_to_pull::is_now(pull_moment::after what, std::size_t count) const {
    return moment_.what == what && moment_.bytes == count;
}

void line_to_pull::hear(std::uint8_t byte) {
    if (is_now(pull_moment::after::done, heard_)) return hang_up();
    if (is_now(pull_moment::after::heard, ++heard_)) return hang_up();
    stream_.receive(string_of({byte}), now_ms);
    while (const std::optional<stream_item> item = stream_.next()) {
        if (item->raw) return say(generator.raw_block(last_command_, bytes_of(item->data)));
        last_command_ = item->data;
        say(generator.command(item->data));
        if (const std::size_t count = simulated_generator::raw_block_after(item->data))
            stream_.expect_raw(count, now_ms);
    }
}

void line_to_pull::let_the_desk_read() const {
    // the first turn may be under way, and the receiver's own comes at any time within the next two
    constexpr int enough_turns = 4;
    for (const int before = turn_; turn_ - before < enough_turns && !ending_;)
        std::this_thread::sleep_for(milliseconds(1));
}

void line_to_pull::say(const answer& parts) {
    for (const answer_part& part : parts) {
        std::this_thread::sleep_for(part.pause);
        if (!pulled_) say(part.data);
    }
}

void line_to_pull::say(const bytes& data) {
    const bool last = moment_.what == pull_moment::after::said && moment_.bytes <= said_ + data.size();
    const std::size_t count = last ? moment_.bytes - said_ : data.size();
    terminal_->write(bytes(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count)));
    said_ += count;
    if (!last) return;
    let_the_desk_read();
    hang_up();
}

} // namespace desk::gui
