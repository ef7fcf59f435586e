#pragma once

#include "bench_fixture.h"

#include "controls/control.h"
#include "controls/window.h"

#include <ostream>
#include <string>
#include <vector>

namespace desk::gui {

/// A view, possibly with an overlay, and the clicks that lead to it.
struct view {
    const char* name;
    std::vector<const char*> clicks;
};
inline void PrintTo(const view& v, std::ostream* out) { *out << v.name; }
const std::vector<view>& every_view();
std::string name_of_view(const ::testing::TestParamInfo<view>& info);

/// A desk with a generator and one previous file.
class view_bench : public bench {
protected:
    view_bench();

    /// Shows a view and discards the generator's traffic so far.
    void show(const view& v);

    window& form() { return desk().form; }
    static QString widget_name(const control& c);
};

} // namespace desk::gui
