#pragma once

#include "generator/answer.h"
#include "generator/generator_state.h"
#include "runtime/bytes.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

/// The generator as the line shows it: takes whole commands, remembers, and gives answers. Knows no clock; pauses
/// stand in the answers.
class simulated_generator {
public:
    /// The argument that asks for a value and sets none.
    static constexpr int query = 999;

    /// Starts with the power-on values and a sink on each connector. Throws as `set_catalogue_size`.
    simulated_generator(int timing_count, int pattern_count);

    /// How many timings and patterns there are, 0 to 998 each; favorite flags of rows that stay are kept.
    /// Throws failure::invalid_procedure_call for other numbers.
    void set_catalogue_size(int timing_count, int pattern_count);
    int timing_count() const { return static_cast<int>(state.favorite_timings.size()); }
    int pattern_count() const { return static_cast<int>(state.favorite_patterns.size()); }

    /// Carries out one command of six characters and gives its answer; silence for what is no command. A value out of
    /// range changes nothing and is answered with the value that stands.
    answer command(std::string_view six);

    /// The number of bytes of the raw block that the desk sends once `command` is answered: 0 where there is none.
    static std::size_t raw_block_after(std::string_view command);

    /// Takes the raw block that belongs to `command` and gives its answer. A block of the wrong size is passed over
    /// in silence.
    answer raw_block(std::string_view command, const bytes& block);

    /// Back to the power-on values. The sinks with their EDIDs, the version and the times stay.
    void reset();

    generator_state state;

private:
    struct setting;
    setting setting_of(std::string_view letters);
    answer set_or_tell(std::string_view letters, int argument);
    void after_setting(std::string_view letters);
    answer fixed_command(std::string_view six);
    answer favorite(std::string_view letters, int argument);
    answer favorites(std::string_view letters) const;
    answer autorun_list() const;
    answer edid_data() const;
    answer erase_edid();
    answer write_edid(const bytes& block);
    edid_sink& chosen_sink();
    const edid_sink& chosen_sink() const;
    answer say(std::string_view text) const;
};

} // namespace desk
