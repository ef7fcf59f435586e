#pragma once

#include "runtime/bytes.h"

#include <chrono>
#include <vector>

namespace desk {

/// One part of an answer: a pause, then the bytes.
struct answer_part {
    std::chrono::milliseconds pause{0};
    bytes data;
};

/// What the generator sends in reply to one command, part after part. An empty answer is silence.
using answer = std::vector<answer_part>;

} // namespace desk
