#include "platform/end_request.h"

namespace desk {

end_request::end_request() = default;

end_request::~end_request() = default;

bool end_request::received() const { return false; }

int end_request::descriptor() const { return -1; }

} // namespace desk
