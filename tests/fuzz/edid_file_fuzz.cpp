// Files for edid_report: any bytes with any extension, compared with the desk's own reading.

#include "batch/edid_file.h"
#include "desk_under_fuzz.h"
#include "edid/byte_step.h"
#include "edid/file_readers.h"
#include "edid/file_writers.h"
#include "support/temporary_directory.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

using namespace desk;

struct kind_of_file {
    const char* name;
    batch::file_kind kind;
};
constexpr std::array<kind_of_file, 4> kinds = {{{"edid.hex", batch::file_kind::hex},
                                                {"edid.bin", batch::file_kind::bin},
                                                {"edid.ddc", batch::file_kind::ddc},
                                                {"edid.txt", batch::file_kind::unknown}}};

std::optional<batch::edid_file> read(const kind_of_file& what, std::string_view content) {
    static const test::temporary_directory directory;
    directory.put(what.name, content);
    std::optional<batch::edid_file> file;
    fuzz::ends_well([&] { file = batch::read_edid_file(directory / what.name, what.kind); });
    return file;
}

/// The file's bytes as shown in the desk's WRITE window; nothing if the desk refuses it or fails.
std::optional<std::string> shown_by_desk(batch::file_kind kind, std::string_view content) {
    fuzz::edid_side d;
    const bool hex = kind == batch::file_kind::hex;
    byte_step step(d.edid, d.texts, hex ? byte_step::append::line_by_line : byte_step::append::at_once);
    const auto no_header = [] { throw runtime_failure(failure::does_not_return, "there is no header"); };
    bool taken = false;
    const bool well = fuzz::ends_well([&] {
        taken = hex                             ? read_hex(content, step)
                : kind == batch::file_kind::ddc ? read_ddc(content, step, no_header)
                                                : read_bin(content, step);
    });
    if (!well || !taken) return std::nullopt;
    return bin_of(d.edid.txt_write.text.get());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const kind_of_file& what = kinds.at(data[0] % kinds.size());
    const std::string_view content = fuzz::text_of(data + 1, size - 1);
    const auto file = read(what, content);
    fuzz::demand(!file || what.kind != batch::file_kind::unknown, "a file of no known kind is refused");
    if (!file) return 0;
    auto shown = shown_by_desk(what.kind, content);
    if (!shown) return 0;
    const std::string bytes(file->edid.begin(), file->edid.end());
    fuzz::demand(!file->remark.empty() || shown->size() == edid_size, "a file of another length has its remark");
    shown->resize(edid_size, '\xFF');
    fuzz::demand(*shown == bytes, "the report is on the bytes that the desk shows");
    return 0;
}
