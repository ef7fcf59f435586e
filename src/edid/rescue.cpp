#include "edid/rescue.h"

#include "edid/format/buffer.h"
#include "edid/format/file_kind.h"
#include "edid/format/file_readers.h"
#include "edid/format/file_writers.h"
#include "runtime/disk.h"
#include "runtime/failure.h"
#include "runtime/files.h"
#include "runtime/text.h"

#include <system_error>

namespace desk {

namespace {

using make_folder = std::function<std::filesystem::path()>;

class bytes_of_file final : public byte_receiver {
public:
    std::string bytes;
    void take(std::uint8_t byte) override { bytes.push_back(static_cast<char>(byte)); }
    void start_again() override { bytes.clear(); }
    void finish_one_block() override { bytes.append(edid_size - edid_block_size, '\xFF'); }
};

/// The bytes that the desk's readers get from a file.
std::string bytes_in(const std::string& path) {
    const std::string file = read_whole_file(path_from_utf8(path));
    bytes_of_file found;
    read_file(kind_by_last_characters(path), file, found,
              [] { throw runtime_failure(failure::does_not_return, "the file holds no EDID"); });
    return std::move(found.bytes);
}

std::filesystem::path numbered(const std::filesystem::path& file, int number) {
    std::filesystem::path older = file;
    older.replace_filename(utf8_from_path(file.stem()) + "_" + std::to_string(number) +
                           utf8_from_path(file.extension()));
    return older;
}

/// A dangling link takes a name too.
bool is_taken(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(file, error));
}

/// Renames the newest file to number 1, and the older ones up to the first gap to the next number.
std::error_code make_room_for(const std::filesystem::path& file) {
    if (!is_taken(file)) return {};
    int last = 1;
    while (last < older_rescued_files && is_taken(numbered(file, last)))
        ++last;
    std::error_code error;
    // a file that can't be renamed is not overwritten
    for (; last > 1 && !error; --last)
        std::filesystem::rename(numbered(file, last - 1), numbered(file, last), error);
    if (!error) std::filesystem::rename(file, numbered(file, 1), error);
    return error;
}

std::error_code keep_as_newest(std::string_view content, const std::filesystem::path& file) {
    // another desk can be rescuing its texts to the same folder
    const folder_lock lock(file.parent_path());
    const std::error_code error = make_room_for(file);
    return error ? error : write_new_file(file, content, outlives::power_loss, open_to::others);
}

/// Saves under the first free name and sets `file` to it: in a folder that everyone can write to, an existing file or
/// link belongs to someone else.
std::error_code keep_under_free_name(std::string_view content, std::filesystem::path& file) {
    constexpr int most_names = 10000;
    const std::filesystem::path first = file;
    std::error_code error = write_new_file(file, content, outlives::power_loss, open_to::owner);
    for (int i = 1; i < most_names && error == std::errc::file_exists; ++i)
        error = write_new_file(file = numbered(first, i), content, outlives::power_loss, open_to::owner);
    return error;
}

/// A text to be saved in the first folder possible.
class rescued_text {
public:
    rescued_text(std::string_view edid_text, const char* name) : content_(simple_hex_of(edid_text)), name_(name) {}

    bool put_into(const std::filesystem::path& folder) {
        const std::filesystem::path file = folder / name_;
        return is_kept(file, keep_as_newest(content_, file));
    }
    bool put_into_temporary_folder() {
        std::error_code error;
        std::filesystem::path file = std::filesystem::temp_directory_path(error) / name_;
        if (!error) error = keep_under_free_name(content_, file);
        return is_kept(file, error);
    }
    void add_reason(const std::string& reason) { reasons_ += (reasons_.empty() ? "" : "; ") + reason; }

    /// "is kept in the file NAME (no file can be written in FOLDER: REASON)."
    std::string kept() const {
        return " is kept in the file " + utf8_from_path(kept_in_) + (reasons_.empty() ? "." : " (" + reasons_ + ").");
    }
    std::string not_kept() const { return " could not be kept: " + reasons_ + "."; }

private:
    bool is_kept(const std::filesystem::path& file, const std::error_code& error) {
        if (error)
            add_reason("no file can be written in " + utf8_from_path(file.parent_path()) + ": " + error.message());
        else
            kept_in_ = file;
        return !error;
    }

    std::string content_;
    const char* name_;
    std::filesystem::path kept_in_;
    std::string reasons_;
};

bool put_into_user_folder(rescued_text& text, const std::filesystem::path& directory, const make_folder& user_folder) {
    if (!user_folder) return false;
    try {
        const std::filesystem::path folder = user_folder();
        return folder != directory && text.put_into(folder);
    } catch (const runtime_failure& f) {
        text.add_reason(f.what());
        return false;
    }
}

std::string what_became_of(const std::string& window_text, const std::string& text_file, const char* name,
                           const std::filesystem::path& directory, const make_folder& user_folder) {
    const std::string_view edid_text = edid_text_of(window_text);
    if (file_holds(text_file, edid_text)) return " is in the file " + text_file + ".";
    rescued_text text(edid_text, name);
    const bool kept = text.put_into(directory) || put_into_user_folder(text, directory, user_folder) ||
                      text.put_into_temporary_folder();
    return kept ? text.kept() : text.not_kept();
}

} // namespace

std::string rescue_window_texts(const workbench_frame& view, const shared_fields& fields,
                                const std::filesystem::path& directory, const make_folder& user_folder) noexcept {
    std::string lines;
    const auto rescue = [&](const char* window, const text_box& box, const std::string& file, const char* name) {
        try {
            const std::string text = box.text;
            if (edid_text_of(text).empty()) return;
            const std::string line = window + what_became_of(text, file, name, directory, user_folder);
            lines += lines.empty() ? line : "\n" + line;
        } catch (...) {
            // the failure that ends the program is the one to report
        }
    };
    rescue("The EDID of the READ window", view.txt_read, fields.read_text_file, rescued_read_name);
    rescue("The EDID of the WRITE window", view.txt_write, fields.write_text_file, rescued_write_name);
    return lines;
}

std::string_view edid_text_of(std::string_view window_text) {
    const bool begins_with_a_pair =
        window_text.size() >= 2 && hex_digit(window_text[0]) >= 0 && hex_digit(window_text[1]) >= 0;
    if (!begins_with_a_pair) return {};
    const std::size_t status = window_text.find_first_not_of("0123456789ABCDEF /\r\n");
    if (status == std::string_view::npos) return window_text;
    // a message begins with its own line end
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
