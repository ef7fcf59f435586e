#include "generator/generator_on_line.h"

#include "generator/simulated_generator.h"
#include "runtime/text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace desk {

namespace {

constexpr std::chrono::nanoseconds most_ahead = 512 * paced_line::byte_time;

std::string shown(std::string_view data) {
    if (std::all_of(data.begin(), data.end(), [](char c) { return c >= 0x20 && c < 0x7F; })) return std::string(data);
    std::string text = "hex:";
    for (const char c : data)
        text += hex2(static_cast<std::uint8_t>(c));
    return text;
}

} // namespace

void generator_on_line::receive(const bytes& data, time now) {
    if (!cable_.pulled_out(now)) from_desk_.send({answer_part{{}, data}}, now);
}

bool generator_on_line::ready_for_more(time now) const { return from_desk_.free_at() - now < most_ahead; }

bytes generator_on_line::take_due(time now) {
    cable_.settle(now);
    // each byte is heard at its own time, however late the call: the pace does not depend on the caller
    while (const std::optional<time> at = from_desk_.next_arrival()) {
        if (*at > now) break;
        hear(from_desk_.take_until(*at), *at);
    }
    from_desk_.take_finished_parts(now);
    log_answers(now);
    return to_desk_.take_until(now);
}

void generator_on_line::hear(const bytes& data, time now) {
    stream_.receive(string_of(data), now);
    while (const std::optional<stream_item> item = stream_.next()) {
        log_answers(now);
        log_.push_back("> " + shown(item->data));
        answer_item(*item, now);
    }
}

void generator_on_line::answer_item(const stream_item& item, time now) {
    if (!item.raw) last_command_ = item.data;
    const answer parts =
        item.raw ? generator_.raw_block(last_command_, bytes_of(item.data)) : generator_.command(item.data);
    if (const fault f = generator_.last_fault(); f != fault::none) log_.push_back("! " + std::string(fault_name(f)));
    if (const std::optional<std::chrono::milliseconds> absence = generator_.take_absence()) {
        cut();
        cable_.pull_out_until(now + *absence);
        return;
    }
    to_desk_.send(parts, now);
    if (item.raw) return;
    if (const std::size_t count = simulated_generator::raw_block_after(item.data))
        stream_.expect_raw(count, std::max(now, to_desk_.free_at()));
}

void generator_on_line::log_answers(time now) {
    for (const bytes& part : to_desk_.take_finished_parts(now))
        log_.push_back("< " + shown(string_of(part)));
}

std::optional<generator_on_line::time> generator_on_line::next_due() const {
    if (const std::optional<time> back_at = cable_.back_at()) return back_at;
    const std::optional<time> in = from_desk_.next_arrival();
    const std::optional<time> out = to_desk_.next_arrival();
    if (in && out) return std::min(*in, *out);
    return in ? in : out;
}

std::vector<std::string> generator_on_line::take_log() { return std::exchange(log_, {}); }

void generator_on_line::cut() {
    from_desk_.clear();
    to_desk_.clear();
    stream_.forget();
}

} // namespace desk
