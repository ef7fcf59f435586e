#pragma once

#include "edid/checksum_rule.h"
#include "edid/file_readers.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"

#include <string>

namespace desk {

/// What each byte of an EDID file runs through on its way into the WRITE window.
class byte_step final : public byte_receiver {
public:
    enum class append {
        at_once,
        line_by_line, ///< a HEX file's bytes, when their line is finished
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
