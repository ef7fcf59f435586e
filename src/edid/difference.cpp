#include "edid/difference.h"

#include "edid/text_scanner.h"
#include "runtime/text.h"

#include <algorithm>

namespace desk {

namespace {

/// The canonical text of 256 bytes has 933 characters; remarks can be longer.
constexpr std::size_t longest_looked_at = 4096;

class places final : public text_findings {
public:
    explicit places(std::string_view text) : window_text_(text) {}

    void pair(std::string_view digits) override {
        ended_ = ended_ || found.size() == edid_size || digits.size() != 2 || hex_digit(digits[0]) < 0 ||
                 hex_digit(digits[1]) < 0;
        if (!ended_) found.push_back(static_cast<std::size_t>(digits.data() - window_text_.data()));
    }

    std::vector<std::size_t> found;

private:
    std::string_view window_text_;
    bool ended_ = false;
};

} // namespace

void difference::look_at(const edid_buffers& buffers) {
    bytes_.clear();
    for (std::size_t i = 0; i < edid_size; ++i)
        if (buffers.write_buff.at(i) != buffers.read_buff.at(i)) bytes_.push_back(i);
    write_ = state_of(workbench_.txt_write);
    read_ = state_of(workbench_.txt_read);
}

const std::vector<std::size_t>& difference::bytes() const {
    static const std::vector<std::size_t> none;
    return write_ == state_of(workbench_.txt_write) && read_ == state_of(workbench_.txt_read) ? bytes_ : none;
}

std::vector<std::size_t> places_of_bytes(std::string_view window_text) {
    const std::string_view looked_at = window_text.substr(0, longest_looked_at);
    places all(looked_at);
    scan_window_text(looked_at, all);
    return std::move(all.found);
}

} // namespace desk
