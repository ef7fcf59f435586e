#pragma once

#include "edid/format/checksum_rule.h"
#include "edid/format/file_readers.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"

#include <string>

namespace desk {

/// Shows the bytes of an EDID file in the WRITE window, with their checksums.
class byte_step final : public byte_receiver {
public:
    enum class append {
        at_once,
        line_by_line, ///< for a HEX file, at the end of each line
    };

    byte_step(workbench_frame& view, window_text& text, append when)
        : workbench_(view), window_text_(text), when_(when) {}

    void take(std::uint8_t byte) override;
    void finish_line() override;
    void start_again() override;
    void finish_one_block() override;

private:
    workbench_frame& workbench_;
    window_text& window_text_;
    append when_;
    checksum_rule rule_;
    std::string line_;
};

} // namespace desk
