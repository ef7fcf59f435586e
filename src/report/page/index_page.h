#pragma once

#include "report/page/index_row.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace desk::page {

/// The most rows of one page.
inline constexpr std::size_t most_rows = 5000;

/// The file name of the page of a report: "a" gives "a.html". A name that could be one of the index, such as "index" or
/// "Index-DEL", gets a "_" in front.
std::string page_file_name(std::string_view report_name);

/// Saves a page under a file name.
using page_saver = std::function<void(const std::string& file_name, std::string_view page)>;

/// Writes index.html: a table of all displays, or, if they are more than `rows_of_page`, a table of their makers, each
/// with pages of its own, index-DEL.html and index-DEL-2.html. `rows` is sorted by maker and model if they are more.
/// `version` is the program's, `missing` counts the files without a page.
void write_index(std::span<index_row> rows, std::size_t missing, std::string_view version, const page_saver& save,
                 std::size_t rows_of_page = most_rows);

} // namespace desk::page
