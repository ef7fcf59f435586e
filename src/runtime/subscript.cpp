#include "runtime/subscript.h"

#include "runtime/failure.h"

#include <string>

namespace desk {

void fail_subscript(std::int64_t subscript, std::size_t size) {
    throw runtime_failure(failure::subscript_out_of_range,
                          "there is no element " + std::to_string(subscript) + " of " + std::to_string(size));
}

} // namespace desk
