#include "batch/input_files.h"

#include "edid/format/file_kind.h"
#include "platform/file_names.h"
#include "runtime/files.h"
#include "runtime/path_text.h"

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <string_view>

namespace desk::batch {

namespace {

namespace fs = std::filesystem;

void add_folder(input_files& found, const std::string& name) {
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator entry(path_from_utf8(name), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        std::string file_name = utf8_from_path(entry->path().filename());
        const bool fits = !file_name.starts_with('.') && kind_by_extension(file_name) != file_kind::unknown;
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
        found.files.push_back({.folder = folder, .name = std::move(file_name)});
}

void add_file(input_files& found, const std::string& name) {
    const fs::path path = path_from_utf8(name);
    std::string folder = path.has_parent_path() ? utf8_from_path(path.parent_path() / "") : "";
    // consecutive names are mostly in the same folder
    if (found.folders.empty() || found.folders.back() != folder) found.folders.push_back(std::move(folder));
    found.files.push_back(
        {.folder = static_cast<std::uint32_t>(found.folders.size() - 1), .name = utf8_from_path(path.filename())});
}

using group = std::vector<input_file*>;

/// Calls `work` with each group of files for which `name` is the same, in the order in which they were named.
template <class Name, class Work>
void for_each_group(std::vector<input_file>& files, Name name, Work work) {
    std::vector<std::string> names;
    names.reserve(files.size());
    for (const input_file& file : files)
        names.push_back(folded_name(name(file)));
    std::vector<std::uint32_t> order(files.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) { return names[a] < names[b]; });
    for (std::size_t i = 0; i < order.size();) {
        const std::string& shared = names[order[i]];
        group members;
        do
            members.push_back(&files[order[i++]]);
        while (i < order.size() && names[order[i]] == shared);
        if (members.size() > 1) work(members);
    }
}

/// Files that differ only in their extension keep it; an equal extension distinguishes nothing.
void keep_extensions(const group& files) {
    const bool one_name = std::all_of(files.begin(), files.end(), [&](const input_file* f) {
        return folded_name(f->name) == folded_name(files.front()->name);
    });
    for (input_file* f : files)
        f->keeps_extension = !one_name;
}

/// The names of a folder and the folders that it is in, innermost first, as far as the command line names them.
std::vector<std::string> folder_names(const std::string& folder) {
    std::vector<std::string> names;
    const fs::path path = path_from_utf8(folder).parent_path();
    for (fs::path rest = path; rest.has_filename() && rest.filename() != "." && rest.filename() != "..";
         rest = rest.parent_path())
        names.push_back(utf8_from_path(rest.filename()));
    return names;
}

/// Adds a folder to the names of a group of files that are in different folders. False: no file has a folder to add.
bool add_folder_to_names(const input_files& found, const group& files) {
    const auto folder = [&](const input_file* f) -> const std::string& { return found.folders.at(f->folder); };
    if (std::all_of(files.begin(), files.end(),
                    [&](const input_file* f) { return folder(f) == folder(files.front()); }))
        return false;
    bool added = false;
    for (input_file* f : files)
        if (f->kept_folders < std::min<std::size_t>(folder_names(folder(f)).size(), 255)) {
            ++f->kept_folders;
            added = true;
        }
    return added;
}

/// Gives the reports different names as far as possible.
void distinguish_names(input_files& found) {
    for_each_group(
        found.files, [](const input_file& f) { return without_extension(f.name); }, keep_extensions);
    const auto report_name = [&](const input_file& f) { return found.report_name(f); };
    for (bool added = true; added;) {
        added = false;
        for_each_group(found.files, report_name,
                       [&](const group& files) { added = add_folder_to_names(found, files) || added; });
    }
    for_each_group(found.files, report_name, [](const group& files) {
        for (input_file* f : files)
            f->shares_name = true;
    });
}

} // namespace

input_files find_input_files(const std::vector<std::string>& names) {
    input_files found;
    for (const std::string& name : names) {
        std::error_code error;
        if (fs::is_directory(path_from_utf8(name), error))
            add_folder(found, name);
        else
            add_file(found, name);
    }
    distinguish_names(found);
    return found;
}

std::string input_files::report_name(const input_file& file) const {
    std::string name(file.keeps_extension ? std::string_view(file.name) : without_extension(file.name));
    if (file.kept_folders == 0) return name;
    const std::vector<std::string> names = folder_names(folders.at(file.folder));
    for (std::size_t i = 0; i < file.kept_folders; ++i)
        name.insert(0, names.at(i) + "_");
    return name;
}

} // namespace desk::batch
