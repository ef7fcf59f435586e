#pragma once

#include "bench_fixture.h"

#include "controls/control.h"
#include "controls/window.h"

#include <ostream>
#include <string>
#include <vector>

namespace desk::gui {

/// A view, with a frame over it or not, and the clicks that lead to it.
struct view {
    const char* name;
    std::vector<const char*> clicks;
};
inline void PrintTo(const view& v, std::ostream* out) { *out << v.name; }
const std::vector<view>& every_view();
/// For the names of tests.
std::string name_of_view(const ::testing::TestParamInfo<view>& info);

/// A desk with a generator and one file opened before.
class view_bench : public bench {
protected:
    view_bench();

    /// Nothing that the generator has heard till then counts.
    void show(const view& v);

    window& form() { return desk().form; }
    static QString widget_name(const control& c);
};

} // namespace desk::gui
