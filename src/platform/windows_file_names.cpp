#include "platform/file_names.h"
#include "runtime/windows_api.h"

#include "runtime/files.h"

namespace desk {

std::string folded_name(std::string_view name) {
    // letters of all alphabets, in any system language: Windows folders compare names in upper case
    std::wstring wide = path_from_utf8(name).wstring();
    const int length = static_cast<int>(wide.size());
    std::wstring upper(wide.size(), L'\0');
    if (LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, wide.data(), length, upper.data(), length, nullptr,
                      nullptr, 0) == length)
        wide = upper;
    return utf8_from_path(wide);
}

} // namespace desk
