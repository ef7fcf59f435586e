#pragma once

#include "generator/answer.h"
#include "generator/generator_state.h"
#include "runtime/bytes.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace desk {

/// The generator as seen from the line: carries out whole commands, keeps its state and returns the answers. It has no
/// clock: pauses are part of the answers.
class simulated_generator {
public:
    /// The argument that queries a value instead of setting it.
    static constexpr int query = 999;

    /// Starts with the power-on values and a sink on each connector. Throws like `set_catalogue_size`.
    simulated_generator(int timing_count, int pattern_count);

    /// Sets the numbers of timings and patterns, 0 to 998 each; rows that remain keep their favorite flags.
    /// Throws failure::invalid_procedure_call for other numbers.
    void set_catalogue_size(int timing_count, int pattern_count);
    int timing_count() const { return static_cast<int>(state.favorite_timings.size()); }
    int pattern_count() const { return static_cast<int>(state.favorite_patterns.size()); }

    /// Carries out one command of six characters and returns its answer; silence if it is not a command. A value out of
    /// range changes nothing and is answered with the current value.
    answer command(std::string_view six);

    /// The size in bytes of the raw block that the desk sends once `command` is answered; 0: none.
    static std::size_t raw_block_after(std::string_view command);

    /// Takes the raw block that belongs to `command` and returns its answer. A block of the wrong size is ignored.
    answer raw_block(std::string_view command, const bytes& block);

    /// Restores the power-on values. Sinks, version and times keep theirs.
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
