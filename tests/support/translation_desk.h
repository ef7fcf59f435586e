#pragma once

#include "runtime/failure.h"
#include "support/built_report.h"
#include "support/translation_panel.h"

#include <optional>
#include <string>

namespace desk::test {

/// The translation panel and the report without the rest of the desk: cheap to have a fresh one for each click.
struct translation_desk : translation_panel {
    built_report report{buffers, tables, fields};

    /// TRANS of the READ side. Gives the failure that ends the program.
    std::optional<runtime_failure> translate(const edid_buffer& edid) {
        buffers.read_buff = edid;
        return failure_in([this] { tree.cmd_read_translate_click(); });
    }
    std::optional<runtime_failure> click(int node) {
        return failure_in([&] { view.tree_edid.on_node_click(node); });
    }
    std::string text() const { return view.txt_edid.text.get(); }

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
