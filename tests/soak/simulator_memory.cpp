#include "soak/simulator_memory.h"

#include "generator/control_address.h"

#include <sstream>
#include <stdexcept>

#include <poll.h>
#include <unistd.h>

namespace desk::test {

namespace {

constexpr int patience_ms = 20000;

/// The text after the first `words`, up to the end of its line.
std::string text_after(const std::string& state, const std::string& words) {
    const std::size_t at = state.find(words);
    if (at == std::string::npos) throw std::runtime_error("the simulator's state has no \"" + words + "\"");
    const std::size_t from = at + words.size();
    return state.substr(from, state.find('\n', from) - from);
}

int number_after(const std::string& state, const std::string& words) { return std::stoi(text_after(state, words)); }

int switch_after(const std::string& state, const std::string& words) {
    return text_after(state, words).starts_with("on") ? 1 : 0;
}

/// A line "  garble: 7" for each kind.
std::map<std::string, int> faults_of(const std::string& state) {
    std::map<std::string, int> faults;
    std::istringstream lines(state);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("  ")) faults[line.substr(2, line.find(':') - 2)] = number_after(line, ": ");
    }
    return faults;
}

} // namespace

std::string simulator_control::send(const std::string& line) const {
    const auto address = control_address(socket_);
    if (!address) throw std::runtime_error("the path of the control socket is too long");
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const std::string sent = line + "\n";
    bool ok = ::connect(connection, reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0 &&
              ::send(connection, sent.data(), sent.size(), MSG_NOSIGNAL) > 0;
    ::shutdown(connection, SHUT_WR);
    std::string reply;
    while (ok) {
        pollfd ready{connection, POLLIN, 0};
        std::array<char, 4096> chunk{};
        const ssize_t got =
            ::poll(&ready, 1, patience_ms) > 0 ? ::recv(connection, chunk.data(), chunk.size(), 0) : ssize_t{-1};
        if (got == 0) break;
        ok = got > 0;
        if (ok) reply.append(chunk.data(), static_cast<std::size_t>(got));
    }
    ::close(connection);
    if (!ok) throw std::runtime_error("the simulator does not answer \"" + line + "\"");
    while (reply.ends_with('\n'))
        reply.pop_back();
    return reply;
}

simulator_memory simulator_control::memory() const {
    const std::string state = send("state");
    simulator_memory m;
    m.timing = number_after(state, "timing ");
    m.pattern = number_after(state, "pattern ");
    m.output = number_after(state, "output ");
    m.hdcp = switch_after(state, "HDCP ");
    m.audio = number_after(state, "audio source ");
    m.lpcm = number_after(state, "channels ");
    m.color_space = number_after(state, "colour space ");
    m.deep_color = number_after(state, "deep colour ");
    std::istringstream colors(text_after(state, "colours "));
    char comma = 0;
    colors >> m.colors[0] >> comma >> m.colors[1] >> comma >> m.colors[2];
    const std::string autorun = text_after(state, "autorun ");
    m.autorun = autorun.starts_with("on") ? 1 : 0;
    m.autorun_steps = number_after(autorun, ", ");
    const std::string favorite = text_after(state, "my favorite ");
    m.favorite = favorite.starts_with("on") ? 1 : 0;
    m.favorite_timings = number_after(favorite, ", ");
    m.favorite_patterns = number_after(favorite, "timings, ");
    m.custom_string = text_after(state, "custom string \"");
    m.custom_string.pop_back();
    m.faults = faults_of(state);
    return m;
}

bytes simulator_control::sink(int number) const {
    const std::string digits = send("sink " + std::to_string(number));
    bytes edid;
    for (std::size_t i = 0; digits != "none" && i + 1 < digits.size(); i += 2)
        edid.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return edid;
}

} // namespace desk::test
