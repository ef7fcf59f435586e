#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// A whole item from the desk: a command of six characters or a raw block.
struct stream_item {
    bool raw = false;
    std::string data;
    std::chrono::nanoseconds complete_at{0}; // when its last byte arrived
};

/// Cuts the bytes from the desk into whole items. What is incomplete after more than `silence` is discarded, so that
/// half a command does not shift all later ones. After an abandoned raw block the stream expects commands again.
class command_stream {
public:
    using time = std::chrono::nanoseconds;

    static constexpr std::size_t command_size = 6;
    static constexpr std::chrono::milliseconds silence{300};

    /// Takes bytes that arrived now. Times never go back.
    void receive(std::string_view bytes, time now);

    /// The next whole item, or none. Call it until none is left; after a command with a raw block call `expect_raw`
    /// first.
    std::optional<stream_item> next();

    /// The next `count` bytes are one raw block. The desk sends it once it has received the answer to the command, so
    /// silence counts from then.
    void expect_raw(std::size_t count, time answered_at);

    bool raw_expected() const { return raw_count_ > 0; }

    /// Discards what is incomplete, and expects commands.
    void forget();

private:
    void drop(std::size_t count);
    void drop_abandoned();
    std::size_t item_size() const { return raw_expected() ? raw_count_ : command_size; }

    std::string pending_;
    std::vector<time> arrived_; // when each pending byte did
    std::size_t raw_count_ = 0;
    time raw_since_{0};
};

} // namespace desk
