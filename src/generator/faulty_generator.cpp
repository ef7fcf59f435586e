#include "generator/faulty_generator.h"

#include "runtime/text.h"

#include <algorithm>
#include <random>
#include <utility>

namespace desk {

namespace {

using std::chrono::milliseconds;

// The desk waits 755 ms per try: a delayed answer is usually in time, a late one meets the next try or command.
constexpr std::uint32_t least_delay_ms = 50;
constexpr std::uint32_t delay_span_ms = 650;
constexpr std::uint32_t least_late_ms = 800;
constexpr std::uint32_t late_span_ms = 2200;
constexpr std::uint32_t most_silent_answers = 9;
constexpr std::uint32_t least_absence_ms = 200;
constexpr std::uint32_t absence_span_ms = 4800;
constexpr std::uint32_t most_extra_bytes = 16;
constexpr std::uint32_t most_garbled_bytes = 3;

std::vector<std::uint8_t*> bytes_in(answer& parts) {
    std::vector<std::uint8_t*> all;
    for (answer_part& part : parts) {
        for (std::uint8_t& byte : part.data)
            all.push_back(&byte);
    }
    return all;
}

void garble(answer& parts, std::uint32_t size) {
    const std::vector<std::uint8_t*> all = bytes_in(parts);
    std::mt19937 random(size);
    const std::size_t first = random() % all.size();
    // in a row, like noise on a line, and so that no change undoes another
    const std::size_t end = std::min<std::size_t>(all.size(), first + 1 + size % most_garbled_bytes);
    for (std::size_t i = first; i < end; ++i)
        *all.at(i) ^= static_cast<std::uint8_t>(1 + random() % 255);
}

void shorten(answer& parts, std::uint32_t size) {
    std::size_t missing = 1 + size % bytes_in(parts).size();
    for (auto part = parts.rbegin(); part != parts.rend() && missing > 0; ++part) {
        const std::size_t cut = std::min(missing, part->data.size());
        part->data.resize(part->data.size() - cut);
        missing -= cut;
    }
}

void lengthen(answer& parts, std::uint32_t size) {
    std::mt19937 random(size);
    const std::uint32_t count = 1 + size % most_extra_bytes;
    for (std::uint32_t i = 0; i < count; ++i)
        parts.back().data.push_back(static_cast<std::uint8_t>(random() % 256));
}

} // namespace

void faulty_generator::follow(fault_plan plan) {
    plan_ = std::move(plan);
    silent_answers_ = 0;
}

answer faulty_generator::command(std::string_view six) {
    return carry_out([&] { return generator_.command(six); }, [&](std::uint32_t) { store_neighbour(six); });
}

answer faulty_generator::raw_block(std::string_view command, const bytes& block) {
    return carry_out([&] { return generator_.raw_block(command, block); },
                     [&](std::uint32_t size) {
                         bytes other = block;
                         other.at(size % other.size()) ^= 0xFF;
                         generator_.raw_block(command, other);
                     });
}

std::optional<std::chrono::milliseconds> faulty_generator::take_absence() {
    return std::exchange(absence_, std::nullopt);
}

answer faulty_generator::carry_out(const std::function<answer()>& rightly,
                                   const std::function<void(std::uint32_t)>& wrongly) {
    last_ = fault::none;
    if (plan_.idle()) return rightly();
    const generator_state before = generator_.state;
    answer parts = rightly();
    if (parts.empty() && generator_.state == before) return parts;
    if (silent_answers_ > 0) {
        --silent_answers_;
        note(fault::silent);
        return {};
    }
    const fault_plan::decision d = plan_.next();
    if (d.what == fault::forget || d.what == fault::miswrite) {
        lie(d, before, wrongly);
        return parts;
    }
    return spoil(std::move(parts), d);
}

void faulty_generator::lie(const fault_plan::decision& d, const generator_state& before,
                           const std::function<void(std::uint32_t)>& wrongly) {
    const generator_state honest = std::exchange(generator_.state, before);
    if (d.what == fault::miswrite) wrongly(d.size);
    if (generator_.state != honest) note(d.what);
}

answer faulty_generator::spoil(answer parts, const fault_plan::decision& d) {
    // a block that is taken in silence has no answer
    if (d.what == fault::none || bytes_in(parts).empty()) return parts;
    note(d.what);
    switch (d.what) {
    case fault::repeat: {
        const answer once = parts;
        parts.insert(parts.end(), once.begin(), once.end());
        return parts;
    }
    case fault::garble:
        garble(parts, d.size);
        return parts;
    case fault::delay:
        parts.front().pause += milliseconds(least_delay_ms + d.size % delay_span_ms);
        return parts;
    case fault::late:
        parts.front().pause += milliseconds(least_late_ms + d.size % late_span_ms);
        return parts;
    case fault::shorten:
        shorten(parts, d.size);
        return parts;
    case fault::lengthen:
        lengthen(parts, d.size);
        return parts;
    case fault::silent:
        silent_answers_ = d.size % most_silent_answers;
        return {};
    case fault::unplug:
        absence_ = milliseconds(least_absence_ms + d.size % absence_span_ms);
        return {};
    default:
        return {};
    }
}

/// Stores the next number instead, or the previous one if there is no next.
void faulty_generator::store_neighbour(std::string_view six) {
    const generator_state before = generator_.state;
    const int asked = static_cast<int>(val(six.substr(3)));
    if (asked == simulated_generator::query) return;
    for (const int number : {asked + 1, asked - 1}) {
        std::string digits = std::to_string(number);
        if (number < 0 || digits.size() > 3) continue;
        digits.insert(0, 3 - digits.size(), '0');
        // a refused number leaves the state as it is
        generator_.command(std::string(six.substr(0, 3)) + digits);
        if (generator_.state != before) return;
    }
}

void faulty_generator::note(fault f) {
    last_ = f;
    ++counts_[f];
}

} // namespace desk
