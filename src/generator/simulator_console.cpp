#include "generator/simulator_console.h"

#include "generator/sink_edids.h"
#include "generator/state_text.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

namespace desk {

namespace {

constexpr int most_answers = 9999;
constexpr int longest_ms = 600000;

constexpr std::string_view help_text =
    "drop [N]            drop the next N answers (1)\n"
    "garble [N]          change one byte of the next N answers (1)\n"
    "delay MS [N]        delay the next N answers by MS milliseconds (1)\n"
    "short BYTES [N]     cut the last BYTES bytes off the next N answers (1)\n"
    "refuse CMD ANSWER   answer CMD with ANSWER and do not carry it out\n"
    "refuse CMD none     neither answer CMD nor carry it out\n"
    "refuse CMD off      carry CMD out again; refuse off: all commands\n"
    "faults RATE [seed N] [KIND...]\n"
    "                    RATE % of answers are faulty, by chance; the same seed gives\n"
    "                    the same faults. KIND is any of these, or omitted for all:\n"
    "                      drop      the answer is dropped\n"
    "                      repeat    it is sent twice\n"
    "                      garble    up to three of its bytes are wrong\n"
    "                      delay     it is up to 700 ms late\n"
    "                      late      it is 800 to 3000 ms late\n"
    "                      short     its end is missing\n"
    "                      long      extra bytes follow it\n"
    "                      silent    it and up to eight more are dropped\n"
    "                      unplug    the cable is out for up to 5 seconds\n"
    "                      forget    it is correct, but nothing was stored\n"
    "                      miswrite  it is correct, but something else was stored\n"
    "faults off          no more faults by chance\n"
    "silent / speak      stop answering / answer again\n"
    "unplug / plug       unplug the cable / plug it in again\n"
    "sink N              show the bytes of sink N\n"
    "sink N FILE         load the EDID of FILE into sink N (1 to 3)\n"
    "sink N first        restore the EDID that sink N had at the start\n"
    "sink N none         remove sink N\n"
    "protect N on|off    write-protect sink N, or not\n"
    "erase MS            set how long an EDID erase takes\n"
    "think MS            set the pause before each answer\n"
    "state               show the generator's memory and the faults\n"
    "quit                end the simulator";

/// Says why a line can't be carried out.
class bad_line : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

std::string hex_text(const bytes& data) {
    std::string text;
    for (const std::uint8_t byte : data)
        text += hex2(byte);
    return text;
}

bool is_space(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// The words of a line. The third word of `sink` is the rest of the line, since file names may contain spaces.
std::vector<std::string_view> words_of(std::string_view line) {
    while (!line.empty() && is_space(line.back()))
        line.remove_suffix(1);
    std::vector<std::string_view> words;
    while (true) {
        line.remove_prefix(
            static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), is_space) - line.begin()));
        if (line.empty()) return words;
        const bool rest = words.size() == 2 && words.front() == "sink";
        const auto end = rest ? line.end() : std::find_if(line.begin(), line.end(), is_space);
        const auto size = static_cast<std::size_t>(end - line.begin());
        words.push_back(line.substr(0, size));
        line.remove_prefix(size);
    }
}

void check_count(const std::vector<std::string_view>& line, std::size_t least, std::size_t most) {
    if (line.size() < least) throw bad_line(std::string(line.front()) + ": a word is missing. Try help.");
    if (line.size() > most) throw bad_line(std::string(line.front()) + ": too many words. Try help.");
}

int number_of(std::string_view word, int lowest, int highest) {
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || value < lowest || value > highest) {
        throw bad_line("\"" + std::string(word) + "\" is not a whole number from " + std::to_string(lowest) + " to " +
                       std::to_string(highest) + ".");
    }
    return value;
}

/// The optional number of answers at this place of the line.
int count_of(const std::vector<std::string_view>& line, std::size_t place) {
    return line.size() > place ? number_of(line[place], 0, most_answers) : 1;
}

std::chrono::milliseconds time_of(std::string_view word) {
    return std::chrono::milliseconds(number_of(word, 0, longest_ms));
}

std::string next_answers(int count, std::string_view what) {
    if (count == 1) return "The next answer " + std::string(what) + ".";
    return "The next " + std::to_string(count) + " answers " + std::string(what) + ".";
}

bytes edid_of_file(std::string_view name) {
    bytes edid = bytes_of(read_whole_file(path_from_utf8(name)));
    if (edid.size() != sink_memory_size && edid.size() != sink_memory_size / 2)
        throw bad_line(std::string(name) + " holds " + std::to_string(edid.size()) + " bytes; an EDID has 128 or 256.");
    // after a single block, the sink reads as erased memory
    edid.resize(sink_memory_size, 0xFF);
    return edid;
}

} // namespace

std::string simulator_console::take_line(std::string_view line) {
    try {
        const words parts = words_of(line);
        return parts.empty() ? std::string() : carry_out(parts);
    } catch (const runtime_failure& f) {
        return f.sentence();
    } catch (const std::exception& e) {
        return e.what();
    }
}

std::string simulator_console::carry_out(const words& line) {
    const std::string_view name = line.front();
    if (name == "drop") return drop(line);
    if (name == "garble") return garble(line);
    if (name == "delay") return delay(line);
    if (name == "short") return shorten(line);
    if (name == "refuse") return refuse(line);
    if (name == "faults") return faults(line);
    if (name == "sink") return sink(line);
    if (name == "protect") return protect(line);
    if (name == "erase") return erase_time(line);
    if (name == "think") return think_time(line);

    check_count(line, 1, 1);
    if (name == "silent" || name == "speak") {
        faults_.set_silent(name == "silent");
        return faults_.silent() ? "The generator answers nothing." : "The generator answers.";
    }
    if (name == "unplug" || name == "plug") {
        name == "unplug" ? cable_.unplug() : cable_.plug();
        return cable_.unplugged() ? "The cable is unplugged." : "The cable is plugged in.";
    }
    if (name == "state") return state_text();
    if (name == "help") return std::string(help_text);
    if (name == "quit") {
        quit_asked_ = true;
        return "Good-bye.";
    }
    throw bad_line("\"" + std::string(name) + "\" is not a command. Try help.");
}

std::string simulator_console::drop(const words& line) {
    check_count(line, 1, 2);
    const int count = count_of(line, 1);
    faults_.drop(count);
    return next_answers(count, count == 1 ? "is dropped" : "are dropped");
}

std::string simulator_console::garble(const words& line) {
    check_count(line, 1, 2);
    const int count = count_of(line, 1);
    faults_.garble(count);
    return next_answers(count, count == 1 ? "has a wrong byte" : "have a wrong byte");
}

std::string simulator_console::delay(const words& line) {
    check_count(line, 2, 3);
    const std::chrono::milliseconds by = time_of(line[1]);
    const int count = count_of(line, 2);
    faults_.delay(count, by);
    return next_answers(count, (count == 1 ? "comes " : "come ") + std::to_string(by.count()) + " ms late");
}

std::string simulator_console::shorten(const words& line) {
    check_count(line, 2, 3);
    const int missing = number_of(line[1], 1, most_answers);
    const int count = count_of(line, 2);
    faults_.shorten(count, static_cast<std::size_t>(missing));
    return next_answers(count, (count == 1 ? "lacks " : "lack ") + std::to_string(missing) +
                                   (missing == 1 ? " byte" : " bytes"));
}

std::string simulator_console::refuse(const words& line) {
    check_count(line, 2, 3);
    if (line.size() == 2 && line[1] == "off") {
        faults_.stop_refusing_all();
        return "Every command is carried out.";
    }
    check_count(line, 3, 3);
    if (line[1].size() != 6) throw bad_line("\"" + std::string(line[1]) + "\" is not a command of six characters.");
    const std::string command(line[1]);
    if (line[2] == "off") {
        faults_.stop_refusing(command);
        return command + " is carried out.";
    }
    if (line[2] == "none") {
        faults_.refuse(command, "");
        return command + " is not answered.";
    }
    faults_.refuse(command, std::string(line[2]));
    return command + " is answered with " + std::string(line[2]) + ".";
}

std::string simulator_console::faults(const words& line) {
    faults_.follow(fault_plan_of({line.begin() + 1, line.end()}));
    return faults_.plan().text();
}

std::string simulator_console::sink(const words& line) {
    check_count(line, 2, 3);
    const int number = number_of(line[1], 1, static_cast<int>(sink_count));
    edid_sink& target = generator_.state.sinks.at(static_cast<std::size_t>(number) - 1);
    if (line.size() == 2) return target.edid ? hex_text(*target.edid) : "none";
    std::optional<bytes> edid;
    if (line[2] == "first") {
        edid = first_sink_edid(number);
    } else if (line[2] != "none") {
        edid = edid_of_file(line[2]);
    }
    target.edid = std::move(edid);
    return "Sink " + std::to_string(number) + (target.edid ? " holds a new EDID." : " is removed.");
}

std::string simulator_console::protect(const words& line) {
    check_count(line, 3, 3);
    const int number = number_of(line[1], 1, static_cast<int>(sink_count));
    if (line[2] != "on" && line[2] != "off") throw bad_line("protect: the last word is on or off.");
    edid_sink& target = generator_.state.sinks.at(static_cast<std::size_t>(number) - 1);
    target.write_protected = line[2] == "on";
    return "Sink " + std::to_string(number) + (target.write_protected ? " is" : " is not") + " write-protected.";
}

std::string simulator_console::erase_time(const words& line) {
    check_count(line, 2, 2);
    generator_.state.erase_time = time_of(line[1]);
    return "An erase takes " + std::string(line[1]) + " ms.";
}

std::string simulator_console::think_time(const words& line) {
    check_count(line, 2, 2);
    generator_.state.think_time = time_of(line[1]);
    return "The generator pauses " + std::string(line[1]) + " ms before each answer.";
}

std::string simulator_console::state_text() const {
    return desk::state_text(generator_.state) + "\nline: " +
           (cable_.unplugged() ? "unplugged"
            : faults_.silent() ? "silent"
                               : "answers") +
           ", " + faults_.text();
}

} // namespace desk
