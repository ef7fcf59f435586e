#include "batch/input_files.h"

#include "platform/file_names.h"
#include "runtime/files.h"
#include "runtime/text.h"

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <string_view>

namespace desk::batch {

namespace {

namespace fs = std::filesystem;

/// A name without its extension; the point that a name begins with belongs to it.
std::string_view without_extension(std::string_view name) {
    const std::size_t point = name.rfind('.');
    return point == std::string_view::npos || point == 0 ? name : name.substr(0, point);
}

/// 0 for names that may lead to one file.
int compare_names(std::string_view a, std::string_view b) { return alike_name(a).compare(alike_name(b)); }

void add_folder(input_files& found, const std::string& name) {
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(path_from_utf8(name), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        std::string file_name = utf8_from_path(entry->path().filename());
        const bool fits = !file_name.starts_with('.') && kind_of(file_name) != file_kind::unknown;
        if (fits && !entry->is_directory(unknown)) names.push_back(std::move(file_name));
    }
    if (error) {
        found.problems.push_back(name + ": the folder can't be read: " + error.message() + ".");
        return;
    }
    if (names.empty()) found.problems.push_back(name + ": there is no EDID file in this folder.");
    std::sort(names.begin(), names.end());
    const auto folder = static_cast<std::uint32_t>(found.folders.size());
    found.folders.push_back(utf8_from_path(path_from_utf8(name) / ""));
    for (std::string& file_name : names)
        found.files.push_back({folder, false, false, std::move(file_name)});
}

void add_file(input_files& found, const std::string& name) {
    const fs::path path = path_from_utf8(name);
    std::string folder = path.has_parent_path() ? utf8_from_path(path.parent_path() / "") : "";
    // files that are named one behind the other mostly stand in one folder
    if (found.folders.empty() || found.folders.back() != folder) found.folders.push_back(std::move(folder));
    found.files.push_back(
        {static_cast<std::uint32_t>(found.folders.size() - 1), false, false, utf8_from_path(path.filename())});
}

using group = std::vector<input_file*>;

/// Does something with each group of files that have a part of their names in common, in the order they were named.
template <class Name, class Work>
void for_each_group(std::vector<input_file>& files, Name name, Work work) {
    std::vector<std::uint32_t> order(files.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
        return compare_names(name(files[a]), name(files[b])) < 0;
    });
    for (std::size_t i = 0; i < order.size();) {
        group members;
        do
            members.push_back(&files[order[i++]]);
        while (i < order.size() && compare_names(name(*members.front()), name(files[order[i]])) == 0);
        if (members.size() > 1) work(members);
    }
}

/// Files that differ in their extension alone keep it; where it is the same it tells nothing apart.
void keep_extensions(const group& files) {
    const bool one_name = std::all_of(files.begin(), files.end(), [&](const input_file* f) {
        return compare_names(f->name, files.front()->name) == 0;
    });
    for (input_file* f : files)
        f->keeps_extension = !one_name;
}

/// Only the first of a name has its report.
void take_name(const group& files) {
    for (std::size_t i = 1; i < files.size(); ++i)
        files[i]->name_taken = true;
}

} // namespace

file_kind kind_of(std::string_view name) {
    const std::string extension = lower_case(name.substr(without_extension(name).size()));
    if (extension.empty() || extension == ".bin") return file_kind::bin;
    if (extension == ".hex") return file_kind::hex;
    if (extension == ".ddc") return file_kind::ddc;
    return file_kind::unknown;
}

input_files find_input_files(const std::vector<std::string>& names) {
    input_files found;
    for (const std::string& name : names) {
        std::error_code error;
        if (fs::is_directory(path_from_utf8(name), error))
            add_folder(found, name);
        else
            add_file(found, name);
    }
    for_each_group(
        found.files, [](const input_file& f) { return without_extension(f.name); }, keep_extensions);
    for_each_group(found.files, report_name, take_name);
    return found;
}

std::string_view report_name(const input_file& file) {
    return file.keeps_extension ? std::string_view(file.name) : without_extension(file.name);
}

} // namespace desk::batch
