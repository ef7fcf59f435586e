#include "batch/edid_file.h"

#include "edid/file_readers.h"
#include "runtime/failure.h"
#include "runtime/files.h"

#include <algorithm>
#include <cstdint>

namespace desk::batch {

namespace {

/// Keeps the first two blocks and counts the rest.
class first_two_blocks final : public byte_receiver {
public:
    explicit first_two_blocks(edid_buffer& edid) : edid_(edid) {}
    void take(std::uint8_t byte) override {
        if (count_ < edid_.size()) edid_.at(count_) = byte;
        ++count_;
    }
    void start_again() override { count_ = 0; }
    std::size_t count() const { return count_; }

private:
    edid_buffer& edid_;
    std::size_t count_ = 0;
};

runtime_failure no_edid(const std::string& why) { return {failure::input_past_end_of_file, why}; }

void read_into(std::string_view file, file_kind kind, byte_receiver& bytes) {
    if (kind == file_kind::hex) {
        if (!read_hex(file, bytes)) throw no_edid("an X stands where it doesn't belong");
    } else if (kind == file_kind::ddc) {
        const auto give_up = [] { throw no_edid("the capture does not end with an EDID: its header is not there"); };
        if (!read_ddc(file, bytes, give_up)) throw no_edid("it is empty");
    } else if (kind == file_kind::bin) {
        if (!read_bin(file, bytes)) throw no_edid("it is empty");
    } else {
        throw no_edid("it is no .hex, .bin or .ddc file, nor one without an extension");
    }
}

std::string remark_on(std::size_t count) {
    const std::string held = "its EDID has " + std::to_string(count) + " bytes";
    if (count == edid_block_size) return held + "; block 1 counts as FF";
    if (count < edid_size) return held + "; missing bytes up to 256 count as FF";
    if (count > edid_size) return held + "; the first two blocks are reported";
    return "";
}

} // namespace

edid_file read_edid_file(const std::filesystem::path& path, file_kind kind) {
    edid_file result;
    first_two_blocks bytes(result.edid);
    read_into(read_whole_file(path), kind, bytes);
    const std::size_t count = bytes.count();
    if (count == 0) throw no_edid("it contains no bytes");
    if (count < edid_size) std::fill(result.edid.begin() + static_cast<std::ptrdiff_t>(count), result.edid.end(), 0xFF);
    result.remark = remark_on(count);
    return result;
}

} // namespace desk::batch
