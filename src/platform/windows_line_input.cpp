#include "platform/line_input.h"

#include <array>
#include <cstdio>

#include <io.h>

namespace desk {

std::string line_input::read_more() const {
    // Ctrl+C ends the wait of a console; a pipe is read to its end
    std::array<char, 4096> chunk{};
    const int got = _read(_fileno(stdin), chunk.data(), static_cast<unsigned>(chunk.size()));
    return {chunk.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

} // namespace desk
