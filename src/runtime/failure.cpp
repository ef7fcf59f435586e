#include "runtime/failure.h"

namespace desk {

std::string_view failure_text(failure code) {
    switch (code) {
    case failure::does_not_return:
        return "Does not return";
    case failure::invalid_procedure_call:
        return "Invalid procedure call or argument";
    case failure::overflow:
        return "Overflow";
    case failure::subscript_out_of_range:
        return "Subscript out of range";
    case failure::division_by_zero:
        return "Division by zero";
    case failure::type_mismatch:
        return "Type mismatch";
    case failure::file_not_found:
        return "File not found";
    case failure::file_already_open:
        return "File already open";
    case failure::input_past_end_of_file:
        return "Input past end of file";
    case failure::bad_record_number:
        return "Bad record number";
    case failure::path_file_access_error:
        return "Path/File access error";
    case failure::invalid_property_value:
        return "Invalid property value";
    case failure::index_out_of_bounds:
        return "Index out of bounds";
    case failure::key_not_unique:
        return "Key is not unique in collection";
    }
    return "";
}

runtime_failure::runtime_failure(failure code, std::string why) : code_(code), why_(std::move(why)) {}

const char* runtime_failure::what() const noexcept { return why_.c_str(); }

} // namespace desk
