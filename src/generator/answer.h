#pragma once

#include "runtime/bytes.h"

#include <vector>

namespace desk {

/// One stretch of an answer: first the pause in milliseconds, then the bytes.
struct answer_part {
    double pause_ms = 0;
    bytes data;
};

/// What the generator sends on one command, part after part. An empty answer is silence.
using answer = std::vector<answer_part>;

} // namespace desk
