#include "generator/state_text.h"

#include "runtime/text.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace desk {

namespace {

std::string named(int value, int first, std::initializer_list<std::string_view> names) {
    const int index = value - first;
    std::string text = std::to_string(value);
    if (index >= 0 && index < static_cast<int>(names.size())) text += " (" + std::string(names.begin()[index]) + ")";
    return text;
}

std::string on_or_off(int value) { return value == 0 ? "off" : "on"; }

std::string count_of(const std::vector<bool>& flags) {
    return std::to_string(std::count(flags.begin(), flags.end(), true)) + " of " + std::to_string(flags.size());
}

std::string custom_text(const generator_state& state) {
    std::string text;
    for (const std::uint8_t code : state.custom_string) {
        if (code == 0) break;
        text += code >= 0x20 && code < 0x7F ? static_cast<char>(code) : '.';
    }
    return text;
}

std::string sink_line(const generator_state& state, std::size_t index) {
    const edid_sink& sink = state.sinks.at(index);
    std::string text = "sink " + named(static_cast<int>(index) + 1, 1, {"HDMI/DVI OUT", "HDMI/DVI IN", "VGA OUT"});
    text += sink.edid ? ": " + std::to_string(sink.edid->size()) + " bytes" : std::string(": none");
    if (sink.write_protected) text += ", write-protected";
    if (static_cast<int>(index) + 1 == state.chosen_sink) text += ", chosen";
    return text + "\n";
}

} // namespace

std::string state_text(const generator_state& state) {
    const auto used = std::count_if(state.autorun_rows.begin(), state.autorun_rows.end(),
                                    [](const autorun_row& row) { return row.interval_s != 0; });
    std::string text = "timing " + std::to_string(state.timing) + ", pattern " + std::to_string(state.pattern) +
                       ", output " + named(state.output_format, 1, {"PC", "HD", "DVI", "HDMI"}) + ", HDCP " +
                       on_or_off(state.hdcp) + "\n";
    text += "audio source " + named(state.audio_source, 1, {"EXT 7.1CH", "EXT OPT", "INT SINE"}) + ", channels " +
            named(state.lpcm, 1, {"2 CH", "5.1 CH", "7.1 CH"}) + "\n";
    text += "colour space " + named(state.color_space, 1, {"RGB444", "YUV444", "YUV422"}) + ", deep colour " +
            named(state.deep_color, 1, {"8 BIT", "10 BIT", "12 BIT"}) + "\n";
    text += "colours " + std::to_string(state.color_r) + ", " + std::to_string(state.color_g) + ", " +
            std::to_string(state.color_b) + ", grey " + std::to_string(state.color_y) + "\n";
    text += "autorun " + on_or_off(state.autorun) + ", " + std::to_string(used) + " of " +
            std::to_string(state.autorun_rows.size()) + " rows in use\n";
    text += "my favorite " + on_or_off(state.my_favorite) + ", " + count_of(state.favorite_timings) + " timings, " +
            count_of(state.favorite_patterns) + " patterns\n";
    text += "custom string \"" + custom_text(state) + "\"\n";
    for (std::size_t i = 0; i < state.sinks.size(); ++i)
        text += sink_line(state, i);
    text += "version " + state.version + ", thinks " + std::to_string(state.think_time.count()) + " ms, erases " +
            std::to_string(state.erase_time.count()) + " ms";
    return text;
}

} // namespace desk
