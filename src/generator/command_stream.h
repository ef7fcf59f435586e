#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace desk {

/// One whole thing from the desk: a command of six characters or a raw block.
struct stream_item {
    bool raw = false;
    std::string data;
    double complete_ms = 0; // when its last byte arrived
};

/// Cuts the bytes from the desk into whole items. What stays incomplete over a silence of more than `silence_ms` is
/// forgotten, so that half a command does not shift all later ones; an abandoned raw block likewise, and the stream
/// is back to commands then.
class command_stream {
public:
    static constexpr std::size_t command_size = 6;
    static constexpr double silence_ms = 300;

    /// Takes bytes that arrived at `now_ms`. Times never go back.
    void receive(std::string_view bytes, double now_ms);

    /// The next whole item, or none. Pull until none is left; after a command that is followed by a raw block call
    /// `expect_raw` before the next pull.
    std::optional<stream_item> next();

    /// The next `count` bytes are one raw block. The desk sends it once it has the answer to its command, so silence
    /// counts from `since_ms`, when that answer has arrived.
    void expect_raw(std::size_t count, double since_ms);

    bool raw_expected() const { return raw_count_ > 0; }

    /// Drops what is incomplete and any raw block expected.
    void forget();

private:
    void drop(std::size_t count);
    void drop_what_was_left_behind();
    std::size_t item_size() const { return raw_expected() ? raw_count_ : command_size; }

    std::string pending_;
    std::vector<double> arrived_ms_; // of each pending byte
    std::size_t raw_count_ = 0;
    double raw_since_ms_ = 0;
};

} // namespace desk
