#pragma once

#include "report/frm_report.h"
#include "translate/translation_frame.h"

#include <memory>
#include <string>

namespace desk {

/// Opens frm_report for the button of the translation panel.
class report_opener {
public:
    report_opener(machine& m, translation_frame& view, const edid_buffers& buffers, translation_tables& tables,
                  shared_fields& fields);

    /// Opens frm_report above the other windows; returns when it is closed.
    void cmd_edid_report_click();

    /// The text of the last report, even if it failed half way; empty if there was none.
    std::string report_text() const { return frm_report_ ? frm_report_->report_text : ""; }

private:
    machine& machine_;
    const edid_buffers& buffers_;
    translation_tables& tables_;
    shared_fields& fields_;
    std::shared_ptr<frm_report> frm_report_; // the last one opened, kept for inspection if the program ends in it
};

} // namespace desk
