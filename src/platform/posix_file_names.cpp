#include "platform/file_names.h"

#include "runtime/text.h"

namespace desk {

// folders here are case-sensitive, but files are copied to systems whose folders are not
std::string folded_name(std::string_view name) { return lower_case(name); }

} // namespace desk
