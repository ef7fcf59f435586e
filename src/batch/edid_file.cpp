#include "batch/edid_file.h"

#include "edid/format/file_readers.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <algorithm>
#include <cstdint>

namespace desk::batch {

namespace {

class all_bytes final : public byte_receiver {
public:
    explicit all_bytes(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}
    void take(std::uint8_t byte) override { bytes_.push_back(byte); }
    void start_again() override { bytes_.clear(); }

private:
    std::vector<std::uint8_t>& bytes_;
};

runtime_failure no_edid(const std::string& why) { return {failure::input_past_end_of_file, why}; }

void read_into(std::string_view file, file_kind kind, byte_receiver& bytes) {
    if (kind == file_kind::unknown) throw no_edid("its extension is neither .hex, .bin nor .ddc");
    const auto give_up = [] { throw no_edid("the capture does not end with an EDID: there is no header"); };
    if (!read_file(kind, file, bytes, give_up))
        throw no_edid(kind == file_kind::hex ? "an X is misplaced" : "it is empty");
}

std::string remark_on(std::size_t count) {
    const std::string held = "its EDID has " + std::to_string(count) + " bytes";
    if (count == edid_block_size) return held + "; block 1 counts as FF";
    if (count < edid_size) return held + "; missing bytes up to 256 count as FF";
    if (count > edid_size) return held + "; the first two blocks are reported";
    return "";
}

} // namespace

edid_file edid_in(std::string_view file, file_kind kind) {
    edid_file result;
    if (kind == file_kind::bin) result.bytes.reserve(file.size());
    all_bytes bytes(result.bytes);
    read_into(file, kind, bytes);
    if (result.bytes.empty()) throw no_edid("it contains no bytes");
    const std::size_t count = std::min(result.bytes.size(), edid_size);
    result.edid.fill(0xFF);
    std::copy_n(result.bytes.begin(), count, result.edid.begin());
    result.remark = remark_on(result.bytes.size());
    return result;
}

edid_file read_edid_file(const std::filesystem::path& path, file_kind kind) {
    return edid_in(read_whole_file(path), kind);
}

} // namespace desk::batch
