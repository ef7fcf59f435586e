#pragma once

#include "edid/buffers.h"
#include "edid/shared_fields.h"
#include "report/text/report_text.h"
#include "translate/decode/translation_tables.h"

#include <string>
#include <string_view>

namespace desk::test {

/// The report of the EDID that a fixture translates, with the fixture's tables and fields.
struct built_report {
    const edid_buffers& buffers;
    translation_tables& tables;
    shared_fields& fields;
    std::string report_text{};

    bool report_build(std::string_view date, std::string_view time) {
        return desk::report_build(report_text, buffers.trans_buff, tables, fields.sn_value, date, time);
    }
};

} // namespace desk::test
