// One exchange: bytes arrive in any pieces at any times, whatever answer the desk expects.

#include "desk_under_fuzz.h"
#include "fuzz_input.h"
#include "link/commands.h"

#include <array>

namespace {

using namespace desk;

constexpr int most_pieces = 40;
constexpr std::array commands = {std::string_view("TIM001"),
                                 std::string_view("HDC999"),
                                 command::query_favorite_timings,
                                 command::query_autorun_list,
                                 command::query_custom_string,
                                 command::read_edid,
                                 command::reset};

/// Number of bytes of any value that a download in this view accepts as its answer; 0: the digits decide.
int counted_answer(const exchange& link) {
    if (!link.download_mode) return 0;
    switch (link.view_mode) {
    case view::favorite_timing:
        return std::max(1, link.fav_timing_count * 6);
    case view::favorite_pattern:
        return std::max(1, link.fav_pattern_count * 6);
    case view::autorun_config:
        return 768;
    case view::pattern_select:
        return link.selected_pattern() == 41 ? 18 : 0;
    case view::edid_read_write:
        return 18;
    default:
        return 0;
    }
}

bool is_answer(const exchange& link, std::string_view text, std::string_view cmd) {
    if (!link.download_mode && text.substr(0, 3) != cmd.substr(0, 3)) return false;
    if (const int count = counted_answer(link)) return text.size() >= static_cast<std::size_t>(count);
    const auto digit = [&](std::size_t place) { return text[place] >= '0' && text[place] <= '9'; };
    return text.size() >= 6 && digit(3) && digit(4) && digit(5);
}

/// Schedules pieces of bytes.
void let_arrive(test::fake_machine& m, fuzz::fuzz_input& input) {
    std::int64_t at = 0;
    for (int piece = input.below(most_pieces); piece > 0; --piece) {
        at += input.byte() * 2;
        m.events.in(at, [&m, bytes = std::string(input.text())] { m.port.arrive(bytes); });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::fuzz_input input(data, size);
    test::fake_machine m;
    exchange link(m.host);
    m.events.ticking = &link.tim_rx;
    link.com_port = 1;
    link.set_comm();
    const std::string_view cmd = commands.at(static_cast<std::size_t>(input.below(static_cast<int>(commands.size()))));
    link.view_mode = static_cast<std::int16_t>(input.below(8));
    link.download_mode = input.yes();
    link.fav_timing_count = static_cast<std::int16_t>(input.byte());
    link.fav_pattern_count = static_cast<std::int16_t>(input.byte());
    const int selected = input.below(45);
    link.selected_pattern = [selected] { return selected; };
    m.port.arrive(input.short_text(8)); // leftovers of an earlier exchange
    std::string heard;
    m.events.on_pump = [&] { heard = link.rx_text; };
    m.port.on_write = [&](const std::string& written) {
        fuzz::demand(!is_answer(link, heard, cmd), "an answered command is not sent again");
        fuzz::demand(written == cmd, "only the command is written");
        fuzz::demand(m.port.waiting.empty(), "earlier bytes do not count as the answer");
        let_arrive(m, input);
    };

    fuzz::demand(fuzz::ends_well([&] { link.tx_cmd(cmd); }), "an exchange of some thousand bytes ends");
    fuzz::demand(link.rx_text.size() == static_cast<std::size_t>(link.rx_count), "each byte is counted");
    fuzz::demand(link.rx_done == is_answer(link, link.rx_text, cmd), "exactly the valid answers are accepted");
    const std::size_t tries = m.port.take_written().size();
    fuzz::demand(tries == 2 || (tries == 1 && link.rx_done), "an unanswered command is sent twice");
    fuzz::demand(!link.tim_rx.enabled, "nothing is received between exchanges");
    return 0;
}
