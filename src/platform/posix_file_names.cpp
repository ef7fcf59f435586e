#include "platform/file_names.h"

#include "runtime/text.h"

namespace desk {

// folders tell upper and lower case apart, but files are carried to systems that don't
std::string alike_name(std::string_view name) { return lower_case(name); }

} // namespace desk
