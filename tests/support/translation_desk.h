#pragma once

#include "edid/buffers.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/workbench_frame.h"
#include "report/report_builder.h"
#include "runtime/failure.h"
#include "translate/node_dispatch.h"
#include "translate/translation_frame.h"
#include "translate/translation_tables.h"
#include "translate/translation_tree.h"

#include <optional>
#include <string>

namespace desk::test {

/// The translation panel and the report without the rest of the desk: cheap to have a fresh one for each click.
struct translation_desk {
    edid_buffers buffers;
    shared_fields fields;
    serial_number serial{buffers, fields};
    workbench_frame workbench;
    translation_frame view;
    translation_tables tables;
    node_dispatch dispatch{view, buffers, tables, serial, fields};
    translation_tree tree{workbench, view, buffers, tables, dispatch};
    report_builder report{buffers, tables, serial, fields};

    /// TRANS of the READ side. Gives the failure that ends the program.
    std::optional<runtime_failure> translate(const edid_buffer& edid) {
        buffers.read_buff = edid;
        return failure_in([this] { tree.cmd_read_translate_click(); });
    }
    std::optional<runtime_failure> click(int node) {
        return failure_in([&] { view.tree_edid.on_node_click(node); });
    }
    std::string text() const { return view.txt_edid.text; }

private:
    template <class Work>
    static std::optional<runtime_failure> failure_in(Work work) {
        try {
            work();
        } catch (const runtime_failure& f) {
            return f;
        }
        return std::nullopt;
    }
};

} // namespace desk::test
