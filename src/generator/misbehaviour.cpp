#include "generator/misbehaviour.h"

#include "generator/sink_edids.h"
#include "generator/state_text.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

namespace desk {

namespace {

constexpr int most_answers = 9999;
constexpr int longest_ms = 600000;

constexpr std::string_view help_text =
    "drop [N]            the next N answers are lost (1)\n"
    "garble [N]          the next N answers have one byte changed (1)\n"
    "delay MS [N]        the next N answers come MS milliseconds late (1)\n"
    "short BYTES [N]     the next N answers lack their last BYTES bytes (1)\n"
    "refuse CMD ANSWER   CMD is not carried out but answered with ANSWER\n"
    "refuse CMD none     CMD is not carried out and not answered\n"
    "refuse CMD off      ends that; refuse off ends all of them\n"
    "faults RATE [seed N] [KIND...]\n"
    "                    RATE of 100 answers go wrong, by chance; the same seed does\n"
    "                    the same again. KIND, one or more of them, or all:\n"
    "                      drop      the answer is lost\n"
    "                      repeat    it comes twice\n"
    "                      garble    up to three of its bytes are wrong\n"
    "                      delay     it comes up to 700 ms late\n"
    "                      late      it comes 800 to 3000 ms late\n"
    "                      short     its end is missing\n"
    "                      long      other bytes follow it\n"
    "                      silent    it and up to eight more are lost\n"
    "                      unplug    the cable is out for up to 5 seconds\n"
    "                      forget    it is right, but nothing was stored\n"
    "                      miswrite  it is right, but something else was stored\n"
    "faults off          ends that\n"
    "silent / speak      answers nothing / answers again\n"
    "unplug / plug       takes the generator off the line / puts it back\n"
    "sink N              shows the bytes of sink N\n"
    "sink N FILE         sink N (1 to 3) holds the EDID of FILE\n"
    "sink N first        sink N holds the EDID it had at the start\n"
    "sink N none         takes sink N away\n"
    "protect N on|off    write protection of sink N\n"
    "erase MS            how long an EDID erase takes\n"
    "think MS            the pause before each answer\n"
    "state               shows what the generator remembers\n"
    "quit                ends the program";

/// A line that can't be carried out.
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

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// The words of a line. The third takes the rest of it for `sink`, since names of files may hold blanks.
std::vector<std::string_view> words_of(std::string_view line) {
    while (!line.empty() && is_blank(line.back()))
        line.remove_suffix(1);
    std::vector<std::string_view> words;
    while (true) {
        line.remove_prefix(
            static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), is_blank) - line.begin()));
        if (line.empty()) return words;
        const bool rest = words.size() == 2 && words.front() == "sink";
        const auto end = rest ? line.end() : std::find_if(line.begin(), line.end(), is_blank);
        const auto size = static_cast<std::size_t>(end - line.begin());
        words.push_back(line.substr(0, size));
        line.remove_prefix(size);
    }
}

void check_count(const std::vector<std::string_view>& line, std::size_t least, std::size_t most) {
    if (line.size() < least) throw bad_line(std::string(line.front()) + ": something is missing. Try help.");
    if (line.size() > most) throw bad_line(std::string(line.front()) + ": there is too much on the line. Try help.");
}

int number_of(std::string_view word, int lowest, int highest) {
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || value < lowest || value > highest) {
        throw bad_line("\"" + std::string(word) + "\" is no whole number from " + std::to_string(lowest) + " to " +
                       std::to_string(highest) + ".");
    }
    return value;
}

/// The number at a place that may be left out.
int times_of(const std::vector<std::string_view>& line, std::size_t place) {
    return line.size() > place ? number_of(line[place], 0, most_answers) : 1;
}

std::string next_answers(int count, std::string_view what) {
    if (count == 1) return "The next answer " + std::string(what) + ".";
    return "The next " + std::to_string(count) + " answers " + std::string(what) + ".";
}

bytes edid_of_file(std::string_view name) {
    bytes edid = bytes_of(read_whole_file(path_from_utf8(name)));
    if (edid.size() != sink_memory_size && edid.size() != sink_memory_size / 2)
        throw bad_line(std::string(name) + " holds " + std::to_string(edid.size()) + " bytes; an EDID has 128 or 256.");
    // a sink with one block reads as an erased memory behind it
    edid.resize(sink_memory_size, 0xFF);
    return edid;
}

} // namespace

std::string misbehaviour::take_line(std::string_view line) {
    try {
        const words parts = words_of(line);
        return parts.empty() ? std::string() : carry_out(parts);
    } catch (const runtime_failure& f) {
        return f.sentence();
    } catch (const std::exception& e) {
        return e.what();
    }
}

std::string misbehaviour::carry_out(const words& line) {
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
        silent_ = name == "silent";
        return silent_ ? "The generator answers nothing." : "The generator answers.";
    }
    if (name == "unplug" || name == "plug") {
        unplugged_ = name == "unplug";
        return unplugged_ ? "The generator is off the line." : "The generator is on the line.";
    }
    if (name == "state") return state_text();
    if (name == "help") return std::string(help_text);
    if (name == "quit") {
        quit_asked_ = true;
        return "Good-bye.";
    }
    throw bad_line("\"" + std::string(name) + "\" is not known. Try help.");
}

std::string misbehaviour::drop(const words& line) {
    check_count(line, 1, 2);
    drops_ = times_of(line, 1);
    return next_answers(drops_, drops_ == 1 ? "is lost" : "are lost");
}

std::string misbehaviour::garble(const words& line) {
    check_count(line, 1, 2);
    garbles_ = times_of(line, 1);
    return next_answers(garbles_, garbles_ == 1 ? "has a wrong byte" : "have a wrong byte");
}

std::string misbehaviour::delay(const words& line) {
    check_count(line, 2, 3);
    const int ms = number_of(line[1], 0, longest_ms);
    delays_ = times_of(line, 2);
    delay_ms_ = ms;
    return next_answers(delays_, (delays_ == 1 ? "comes " : "come ") + std::to_string(ms) + " ms late");
}

std::string misbehaviour::shorten(const words& line) {
    check_count(line, 2, 3);
    const int count = number_of(line[1], 1, most_answers);
    shorts_ = times_of(line, 2);
    missing_bytes_ = static_cast<std::size_t>(count);
    return next_answers(shorts_, (shorts_ == 1 ? "lacks " : "lack ") + std::to_string(count) +
                                     (count == 1 ? " byte" : " bytes"));
}

std::string misbehaviour::refuse(const words& line) {
    check_count(line, 2, 3);
    if (line.size() == 2 && line[1] == "off") {
        refusals_.clear();
        return "Every command is carried out.";
    }
    check_count(line, 3, 3);
    if (line[1].size() != 6) throw bad_line("\"" + std::string(line[1]) + "\" is no command of six characters.");
    const std::string command(line[1]);
    if (line[2] == "off") {
        refusals_.erase(command);
        return command + " is carried out.";
    }
    if (line[2] == "none") {
        refusals_.insert_or_assign(command, "");
        return command + " is not answered.";
    }
    refusals_.insert_or_assign(command, std::string(line[2]));
    return command + " is answered with " + std::string(line[2]) + ".";
}

std::string misbehaviour::faults(const words& line) {
    faulty_.follow(fault_plan_of({line.begin() + 1, line.end()}));
    return faulty_.plan().text();
}

std::string misbehaviour::sink(const words& line) {
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
    return "Sink " + std::to_string(number) + (target.edid ? " holds a new EDID." : " is away.");
}

std::string misbehaviour::protect(const words& line) {
    check_count(line, 3, 3);
    const int number = number_of(line[1], 1, static_cast<int>(sink_count));
    if (line[2] != "on" && line[2] != "off") throw bad_line("protect: the last word is on or off.");
    edid_sink& target = generator_.state.sinks.at(static_cast<std::size_t>(number) - 1);
    target.write_protected = line[2] == "on";
    return "Sink " + std::to_string(number) + (target.write_protected ? " is" : " is not") + " write-protected.";
}

std::string misbehaviour::erase_time(const words& line) {
    check_count(line, 2, 2);
    generator_.state.erase_ms = number_of(line[1], 0, longest_ms);
    return "An erase takes " + std::string(line[1]) + " ms.";
}

std::string misbehaviour::think_time(const words& line) {
    check_count(line, 2, 2);
    generator_.state.think_ms = number_of(line[1], 0, longest_ms);
    return "The generator thinks for " + std::string(line[1]) + " ms.";
}

std::string misbehaviour::state_text() const {
    std::string text = desk::state_text(generator_.state);
    text += "\nline: ";
    text += unplugged_ ? "unplugged" : silent_ ? "silent" : "answers";
    text += ", " + std::to_string(drops_) + " to drop, " + std::to_string(garbles_) + " to garble, " +
            std::to_string(delays_) + " to delay, " + std::to_string(shorts_) + " to shorten";
    for (const auto& [command, instead] : refusals_)
        text.append("\nrefuses ").append(command).append(" with ").append(instead.empty() ? "silence" : instead);
    text.append("\n").append(faulty_.plan().text());
    for (const auto& [kind, count] : faulty_.counts())
        text.append("\n  ").append(fault_name(kind)).append(": ").append(std::to_string(count));
    return text;
}

answer misbehaviour::command(std::string_view six) {
    last_fault_ = fault::none;
    if (const auto found = refusals_.find(six); found != refusals_.end()) {
        if (found->second.empty()) return {};
        return bend({{generator_.state.think_ms, bytes_of(found->second)}});
    }
    answer parts = faulty_.command(six);
    last_fault_ = faulty_.last();
    return bend(std::move(parts));
}

answer misbehaviour::raw_block(std::string_view command, const bytes& block) {
    last_fault_ = fault::none;
    // the block of a refused command still comes, and goes nowhere
    if (refusals_.find(command) != refusals_.end()) return {};
    answer parts = faulty_.raw_block(command, block);
    last_fault_ = faulty_.last();
    return bend(std::move(parts));
}

answer misbehaviour::bend(answer parts) {
    if (parts.empty() || silent_) return {};
    if (drops_ > 0) {
        --drops_;
        return {};
    }
    if (delays_ > 0) {
        --delays_;
        parts.front().pause_ms += delay_ms_;
    }
    const auto longest = std::max_element(parts.begin(), parts.end(),
                                          [](const auto& a, const auto& b) { return a.data.size() < b.data.size(); });
    if (shorts_ > 0) {
        --shorts_;
        longest->data.resize(longest->data.size() - std::min(longest->data.size(), missing_bytes_));
    }
    if (garbles_ > 0 && !longest->data.empty()) {
        --garbles_;
        // a digit of a short answer becomes a letter
        longest->data.at(longest->data.size() / 2) ^= 0x40;
    }
    return parts;
}

} // namespace desk
