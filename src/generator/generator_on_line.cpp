#include "generator/generator_on_line.h"

#include "generator/simulated_generator.h"
#include "runtime/text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace desk {

namespace {

constexpr std::int64_t most_ahead_ns = 512 * paced_line::byte_ns;

std::string shown(std::string_view data) {
    if (std::all_of(data.begin(), data.end(), [](char c) { return c >= 0x20 && c < 0x7F; })) return std::string(data);
    std::string text = "hex:";
    for (const char c : data)
        text += hex2(static_cast<std::uint8_t>(c));
    return text;
}

} // namespace

void generator_on_line::receive(const bytes& data, std::int64_t now_ns) {
    if (!absent(now_ns)) from_desk_.send({{0, data}}, now_ns);
}

bool generator_on_line::ready_for_more(std::int64_t now_ns) const {
    return from_desk_.free_ns() - now_ns < most_ahead_ns;
}

bytes generator_on_line::take_due(std::int64_t now_ns) {
    if (!absent(now_ns)) absent_until_ns_.reset();
    // each byte is heard at its own time, however late this is called: the pace does not depend on the caller
    while (const std::optional<std::int64_t> at_ns = from_desk_.next_arrival_ns()) {
        if (*at_ns > now_ns) break;
        hear(from_desk_.take_until(*at_ns), *at_ns);
    }
    from_desk_.take_finished_parts(now_ns);
    log_answers(now_ns);
    return to_desk_.take_until(now_ns);
}

void generator_on_line::hear(const bytes& data, std::int64_t now_ns) {
    stream_.receive(string_of(data), static_cast<double>(now_ns) / 1e6);
    while (const std::optional<stream_item> item = stream_.next()) {
        log_answers(now_ns);
        log_.push_back("> " + shown(item->data));
        answer_item(*item, now_ns);
    }
}

void generator_on_line::answer_item(const stream_item& item, std::int64_t now_ns) {
    if (!item.raw) last_command_ = item.data;
    const answer parts =
        item.raw ? generator_.raw_block(last_command_, bytes_of(item.data)) : generator_.command(item.data);
    if (const fault f = generator_.last_fault(); f != fault::none) log_.push_back("! " + std::string(fault_name(f)));
    if (const std::optional<int> ms = generator_.take_absence_ms()) {
        cut();
        absent_until_ns_ = now_ns + std::int64_t{*ms} * 1'000'000;
        return;
    }
    to_desk_.send(parts, now_ns);
    if (item.raw) return;
    if (const std::size_t count = simulated_generator::raw_block_after(item.data))
        stream_.expect_raw(count, static_cast<double>(std::max(now_ns, to_desk_.free_ns())) / 1e6);
}

void generator_on_line::log_answers(std::int64_t now_ns) {
    for (const bytes& part : to_desk_.take_finished_parts(now_ns))
        log_.push_back("< " + shown(string_of(part)));
}

std::optional<std::int64_t> generator_on_line::next_due_ns() const {
    if (absent_until_ns_) return absent_until_ns_;
    const std::optional<std::int64_t> in = from_desk_.next_arrival_ns();
    const std::optional<std::int64_t> out = to_desk_.next_arrival_ns();
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
