#include "generator/simulated_generator.h"

#include "generator/catalogue_size.h"
#include "generator/sink_edids.h"
#include "runtime/failure.h"
#include "runtime/text.h"

#include <algorithm>
#include <utility>

namespace desk {

namespace {

std::string three_digits(int value) {
    std::string text = std::to_string(value);
    text.insert(0, 3 - std::min<std::size_t>(3, text.size()), '0');
    return text;
}

void check_count(int count, std::string_view of_what) {
    if (count >= 0 && count <= largest_catalogue) return;
    throw runtime_failure(failure::invalid_procedure_call, std::to_string(count) + " " + std::string(of_what) +
                                                               ": there can be 0 to " +
                                                               std::to_string(largest_catalogue));
}

} // namespace

/// A value that a command sets and its query reports. No value: there is no such command.
struct simulated_generator::setting {
    int* value = nullptr;
    int lowest = 0;
    int highest = 0;
};

simulated_generator::simulated_generator(int timing_count, int pattern_count) {
    set_catalogue_size(timing_count, pattern_count);
    for (std::size_t i = 0; i < sink_count; ++i)
        state.sinks.at(i).edid = first_sink_edid(static_cast<int>(i) + 1);
}

void simulated_generator::set_catalogue_size(int timing_count, int pattern_count) {
    check_count(timing_count, "timings");
    check_count(pattern_count, "patterns");
    state.favorite_timings.resize(static_cast<std::size_t>(timing_count));
    state.favorite_patterns.resize(static_cast<std::size_t>(pattern_count));
    if (state.timing > timing_count) state.timing = 1;
    if (state.pattern > pattern_count) state.pattern = 1;
}

void simulated_generator::reset() {
    generator_settings fresh;
    fresh.favorite_timings.resize(state.favorite_timings.size());
    fresh.favorite_patterns.resize(state.favorite_patterns.size());
    static_cast<generator_settings&>(state) = std::move(fresh);
}

answer simulated_generator::command(std::string_view six) {
    if (six.size() != 6 || !std::all_of(six.begin() + 3, six.end(), is_digit)) return {};
    const std::string_view letters = six.substr(0, 3);
    const int argument = (six[3] - '0') * 100 + (six[4] - '0') * 10 + (six[5] - '0');
    if (setting_of(letters).value != nullptr) return set_or_tell(letters, argument);
    if (six == "FT+999" || six == "FP+999") return favorites(letters);
    if (letters == "FT+" || letters == "FT-" || letters == "FP+" || letters == "FP-")
        return favorite(letters, argument);
    return fixed_command(six);
}

answer simulated_generator::fixed_command(std::string_view six) {
    if (six == "VER001") return say(state.version);
    if (six == "RST001") {
        reset();
        return {{state.reset_time, bytes_of(six)}};
    }
    if (six == "MOT001" || six == "EWR001") return say(six);
    if (six == "MOT999")
        return say(std::string(six) + std::string(state.custom_string.begin(), state.custom_string.end()));
    if (six == "ATS999") return autorun_list();
    if (six == "ERD001") return edid_data();
    if (six == "ERS001") return erase_edid();
    return {};
}

simulated_generator::setting simulated_generator::setting_of(std::string_view letters) {
    if (letters == "TIM") return {&state.timing, 1, timing_count()};
    if (letters == "PAT") return {&state.pattern, 1, pattern_count()};
    if (letters == "OUT") return {&state.output_format, 1, 4};
    if (letters == "HDC") return {&state.hdcp, 0, 1};
    if (letters == "ASC") return {&state.audio_source, 1, 3};
    if (letters == "PCM") return {&state.lpcm, 1, state.audio_source == 3 ? 1 : 3};
    if (letters == "CSC") return {&state.color_space, 1, 3};
    if (letters == "DEE") return {&state.deep_color, 1, 3};
    if (letters == "ATO") return {&state.autorun, 0, 1};
    if (letters == "FAV") return {&state.my_favorite, 0, 1};
    if (letters == "CRR") return {&state.color_r, 0, 255};
    if (letters == "CRG") return {&state.color_g, 0, 255};
    if (letters == "CRB") return {&state.color_b, 0, 255};
    if (letters == "CRY") return {&state.color_y, 0, 255};
    if (letters == "ESC") return {&state.chosen_sink, 1, static_cast<int>(sink_count)};
    if (letters == "ATN") return {&state.chosen_autorun_row, 1, static_cast<int>(autorun_row_count)};

    autorun_row& row = state.autorun_rows.at(static_cast<std::size_t>(state.chosen_autorun_row) - 1);
    if (letters == "ATT") return {&row.timing, 1, timing_count()};
    if (letters == "ATP") return {&row.pattern, 1, pattern_count()};
    if (letters == "ATI") return {&row.interval_s, 0, query - 1};
    return {};
}

answer simulated_generator::set_or_tell(std::string_view letters, int argument) {
    const setting target = setting_of(letters);
    const bool refused = argument != query && (argument < target.lowest || argument > target.highest);
    if (refused && letters == "PCM") return say("PCM100");
    if (!refused && argument != query) {
        *target.value = argument;
        after_setting(letters);
    }
    return say(std::string(letters) + three_digits(*target.value));
}

void simulated_generator::after_setting(std::string_view letters) {
    // the built-in sine has two channels only
    if (letters == "ASC" && state.audio_source == 3) state.lpcm = 1;
    // grey is a level on all three colours, or on Y alone with both colour differences at their zero
    if (letters == "CRY") {
        state.color_g = state.color_y;
        state.color_r = state.color_b = state.color_space == 1 ? state.color_y : 128;
    }
}

answer simulated_generator::favorite(std::string_view letters, int argument) {
    std::vector<bool>& flags = letters[1] == 'T' ? state.favorite_timings : state.favorite_patterns;
    if (argument == query) return {};
    if (argument < 1 || static_cast<std::size_t>(argument) > flags.size()) return say(std::string(letters) + "000");
    flags.at(static_cast<std::size_t>(argument) - 1) = letters[2] == '+';
    return say(std::string(letters) + three_digits(argument));
}

answer simulated_generator::favorites(std::string_view letters) const {
    const std::vector<bool>& flags = letters[1] == 'T' ? state.favorite_timings : state.favorite_patterns;
    std::string text;
    for (std::size_t i = 0; i < flags.size(); ++i)
        text += std::string(letters.substr(0, 2)) + (flags[i] ? "+" : "-") + three_digits(static_cast<int>(i) + 1);
    return text.empty() ? answer{} : say(text);
}

answer simulated_generator::autorun_list() const {
    std::string text;
    int number = 0;
    for (const autorun_row& row : state.autorun_rows) {
        text += "ATN" + three_digits(++number) + "ATT" + three_digits(row.timing) + "ATP" + three_digits(row.pattern) +
                "ATI" + three_digits(row.interval_s);
    }
    return say(text);
}

answer simulated_generator::edid_data() const {
    answer parts = say("ERD001");
    if (chosen_sink().edid) parts.push_back({state.data_time, *chosen_sink().edid});
    return parts;
}

answer simulated_generator::erase_edid() {
    edid_sink& sink = chosen_sink();
    const bool done = sink.edid && !sink.write_protected;
    if (done) sink.edid->assign(sink_memory_size, 0xFF);
    answer parts = say("ERS001");
    parts.push_back({state.erase_time, bytes_of(done ? "ERS002" : "ERS003")});
    return parts;
}

answer simulated_generator::write_edid(const bytes& block) {
    edid_sink& sink = chosen_sink();
    const bool done = sink.edid && !sink.write_protected;
    if (done) sink.edid = block;
    return {{state.write_time, bytes_of(done ? "EWR002" : "EWR003")}};
}

std::size_t simulated_generator::raw_block_after(std::string_view command) {
    if (command == "MOT001") return custom_string_size;
    if (command == "EWR001") return sink_memory_size;
    return 0;
}

answer simulated_generator::raw_block(std::string_view command, const bytes& block) {
    if (block.empty() || block.size() != raw_block_after(command)) return {};
    if (command == "EWR001") return write_edid(block);
    std::copy(block.begin(), block.end(), state.custom_string.begin());
    return {};
}

edid_sink& simulated_generator::chosen_sink() {
    return state.sinks.at(static_cast<std::size_t>(state.chosen_sink) - 1);
}

const edid_sink& simulated_generator::chosen_sink() const {
    return state.sinks.at(static_cast<std::size_t>(state.chosen_sink) - 1);
}

answer simulated_generator::say(std::string_view text) const { return {{state.think_time, bytes_of(text)}}; }

} // namespace desk
