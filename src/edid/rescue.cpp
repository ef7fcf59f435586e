#include "edid/rescue.h"

#include "edid/buffer.h"
#include "edid/file_readers.h"
#include "edid/file_writers.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"
#include "runtime/windows_1252.h"

#include <system_error>

namespace desk {

namespace {

class bytes_of_file final : public byte_receiver {
public:
    std::string bytes;
    void take(std::uint8_t byte) override { bytes.push_back(static_cast<char>(byte)); }
    void start_again() override { bytes.clear(); }
    void finish_one_block() override { bytes.append(edid_size - edid_block_size, '\xFF'); }
};

/// What the desk's readers get out of a file.
std::string bytes_in(const std::string& path) {
    const std::string file = read_whole_file(path_from_utf8(path));
    const std::string kind = upper_case(last_characters(path, 3));
    bytes_of_file found;
    if (kind == "HEX") {
        read_hex(file, found);
    } else if (kind == "BIN") {
        read_bin(file, found);
    } else {
        read_ddc(file, found, [] { throw runtime_failure(failure::does_not_return, "the file holds no EDID"); });
    }
    return std::move(found.bytes);
}

std::filesystem::path numbered(const std::filesystem::path& file, int number) {
    std::filesystem::path older = file;
    older.replace_filename(utf8_from_path(file.stem()) + "_" + std::to_string(number) +
                           utf8_from_path(file.extension()));
    return older;
}

/// Gives every older file the next number, as far as there is no gap, and the newest one number 1.
void make_room_for(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) return;
    int last = 1;
    while (last < older_rescued_files && std::filesystem::exists(numbered(file, last), error))
        ++last;
    // one that can't be renamed is not written over: this throws
    for (; last > 1; --last)
        std::filesystem::rename(numbered(file, last - 1), numbered(file, last));
    std::filesystem::rename(file, numbered(file, 1));
}

std::string keep(std::string_view edid_text, const std::filesystem::path& file) {
    make_room_for(file);
    replace_whole_file(file, simple_hex_of(edid_text));
    return " is kept in the file " + utf8_from_path(file) + ".";
}

std::string keep_where_possible(std::string_view edid_text, const char* name, const std::filesystem::path& directory) {
    try {
        return keep(edid_text, directory / name);
    } catch (const std::exception&) {
        return keep(edid_text, std::filesystem::temp_directory_path() / name);
    }
}

std::string what_became_of(const std::string& window_text, const std::string& text_file, const char* name,
                           const std::filesystem::path& directory) {
    const std::string_view edid_text = edid_text_of(window_text);
    if (file_holds(text_file, edid_text)) return " is in the file " + text_file + ".";
    try {
        return keep_where_possible(edid_text, name, directory);
    } catch (const std::exception&) {
        return " could not be kept: no file can be written in " + utf8_from_path(directory) + ".";
    }
}

} // namespace

std::string rescue_window_texts(const workbench_frame& view, const shared_fields& fields,
                                const std::filesystem::path& directory) noexcept {
    std::string told;
    const auto rescue = [&](const char* window, const text_box& box, const std::string& file, const char* name) {
        try {
            const std::string text = box.text;
            if (edid_text_of(text).empty()) return;
            const std::string line = window + what_became_of(text, file, name, directory);
            told += told.empty() ? line : "\n" + line;
        } catch (...) {
            // the failure that ends the program is the one to be told
        }
    };
    rescue("The EDID of the READ window", view.txt_read, fields.read_text_file, rescued_read_name);
    rescue("The EDID of the WRITE window", view.txt_write, fields.write_text_file, rescued_write_name);
    return told;
}

std::string_view edid_text_of(std::string_view window_text) {
    const bool begins_with_a_pair =
        window_text.size() >= 2 && hex_digit(window_text[0]) >= 0 && hex_digit(window_text[1]) >= 0;
    if (!begins_with_a_pair) return {};
    const std::size_t status = window_text.find_first_not_of("0123456789ABCDEF /\r\n");
    if (status == std::string_view::npos) return window_text;
    // a status line begins with a line end of its own
    const std::string_view edid_text = window_text.substr(0, status);
    return edid_text.ends_with(line_end) ? edid_text.substr(0, edid_text.size() - line_end.size()) : edid_text;
}

bool file_holds(const std::string& path, std::string_view edid_text) {
    if (path.empty()) return false;
    try {
        return bytes_in(path).starts_with(bin_of(edid_text));
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace desk
