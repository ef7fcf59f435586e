#include "line_to_pull.h"

#include "runtime/bytes.h"

#include <chrono>
#include <utility>

namespace desk::gui {

namespace {

using std::chrono::milliseconds;

/// A frozen clock for the stream: partial commands never expire, however slow the desk.
constexpr command_stream::time now{0};

constexpr int receiver_turn_ms = 20;

} // namespace

line_to_pull::line_to_pull(std::filesystem::path folder) : folder_(std::move(folder)) {
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
    line_.reset();
    line_ = make_own_line(folder_);
    ending_ = false;
    thread_ = std::thread([this] { serve(); });
}

void line_to_pull::pull_at(pull_moment moment) {
    end_thread();
    received_ = 0;
    sent_ = 0;
    moment_ = moment;
    // before the first byte: the cable is out before the operator begins
    if (is_now(pull_moment::after::answered, 0)) {
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
    line_.reset();
    pulled_ = true;
}

void line_to_pull::end_thread() {
    ending_ = true;
    if (thread_.joinable()) thread_.join();
}

void line_to_pull::serve() {
    while (!ending_ && !pulled_) {
        for (const std::uint8_t byte : line_->read()) {
            if (!pulled_) receive(byte);
        }
    }
}

bool line_to_pull::is_now(pull_moment::after what, std::size_t count) const {
    return moment_.what == what && moment_.bytes == count;
}

void line_to_pull::receive(std::uint8_t byte) {
    if (is_now(pull_moment::after::answered, received_)) return hang_up();
    if (is_now(pull_moment::after::received, ++received_)) return hang_up();
    stream_.receive(string_of({byte}), now);
    while (const std::optional<stream_item> item = stream_.next()) {
        if (item->raw) return send(generator.raw_block(last_command_, bytes_of(item->data)));
        last_command_ = item->data;
        send(generator.command(item->data));
        if (const std::size_t count = simulated_generator::raw_block_after(item->data)) stream_.expect_raw(count, now);
    }
}

void line_to_pull::let_the_desk_read() const {
    // one turn may be in progress, and the receiver's own comes within the next two
    constexpr int enough_turns = 4;
    for (const int before = turn_; turn_ - before < enough_turns && !ending_;)
        std::this_thread::sleep_for(milliseconds(1));
}

void line_to_pull::send(const answer& parts) {
    for (const answer_part& part : parts) {
        std::this_thread::sleep_for(part.pause);
        if (!pulled_) send(part.data);
    }
}

void line_to_pull::send(const bytes& data) {
    const bool last = moment_.what == pull_moment::after::sent && moment_.bytes <= sent_ + data.size();
    const std::size_t count = last ? moment_.bytes - sent_ : data.size();
    line_->write(bytes(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(count)));
    sent_ += count;
    if (!last) return;
    let_the_desk_read();
    hang_up();
}

} // namespace desk::gui
