#pragma once

#include "report/frm_report.h"
#include "translate/translation_frame.h"

#include <memory>
#include <string>

namespace desk {

/// Who opens frm_report: the button of the translation panel.
class report_opener {
public:
    report_opener(machine& m, translation_frame& view, const edid_buffers& buffers, translation_tables& tables,
                  serial_number& serial, const shared_fields& fields);

    /// Opens frm_report above the other windows and returns when it has been closed.
    void cmd_edid_report_click();

    /// The text of the report built last, also one that has failed half way; empty where there was none.
    std::string report_text() const { return frm_report_ ? frm_report_->builder.report_text : ""; }

private:
    machine& machine_;
    const edid_buffers& buffers_;
    translation_tables& tables_;
    serial_number& serial_;
    const shared_fields& fields_;
    std::shared_ptr<frm_report> frm_report_; // the last one opened, to be looked at when the program has ended in it
};

} // namespace desk
