#include "edid/file_number_1.h"

#include "runtime/failure.h"
#include "runtime/files.h"

namespace desk {

std::string file_number_1::open_for_reading(const std::string& path) {
    check_free(path);
    std::string content = read_whole_file(path_from_utf8(path));
    open_ = true;
    return content;
}

void file_number_1::replace(const std::string& path, std::string_view bytes) const {
    check_free(path);
    replace_whole_file(path_from_utf8(path), bytes);
}

void file_number_1::write_over(const std::string& path, std::string_view bytes) const {
    check_free(path);
    write_over_file(path_from_utf8(path), bytes);
}

void file_number_1::check_free(const std::string& path) const {
    if (open_)
        throw runtime_failure(failure::file_already_open,
                              "the file " + path + " can't be opened: a file that failed earlier is still open");
}

} // namespace desk
