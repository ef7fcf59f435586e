#pragma once

#include "generator/answer.h"
#include "runtime/bytes.h"

#include <string>

namespace desk::test {

/// All bytes of an answer, without its pauses.
inline std::string text_of(const answer& parts) {
    std::string text;
    for (const answer_part& part : parts)
        text += string_of(part.data);
    return text;
}

} // namespace desk::test
