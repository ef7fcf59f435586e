#include "controls/layout.h"

#include "controls/kinds.h"

#include <cstdlib>

namespace desk {

namespace {

void set_name(control& c, const std::string& full_name) {
    const std::size_t bracket = full_name.find('(');
    c.name = full_name.substr(0, bracket);
    c.index = bracket == std::string::npos ? -1 : std::atoi(full_name.c_str() + bracket + 1);
}

void set_caption(control& c, std::string caption) {
    const std::size_t mark = caption.find('&');
    const char mnemonic = mark == std::string::npos ? '\0' : caption.at(mark + 1);
    if (mnemonic != 0) caption.erase(mark, 1);
    visit(c, [&](auto& self) {
        if constexpr (requires { self.mnemonic; }) self.mnemonic = mnemonic;
        if constexpr (requires { self.caption; }) self.caption = caption;
    });
}

void set_flags(control& c, unsigned flags) {
    const text_font font = (flags & fixed_pitch) != 0   ? text_font::fixed
                           : (flags & large_bold) != 0  ? text_font::large_bold
                           : (flags & small_print) != 0 ? text_font::small
                                                        : text_font::sans;
    if ((flags & hidden) != 0) c.visible = false;
    if ((flags & disabled) != 0) c.enabled = false;
    visit(c, overloaded{
                 [&](frame& f) {
                     f.role = (flags & view_frame) != 0      ? frame_kind::view
                              : (flags & overlay_frame) != 0 ? frame_kind::overlay
                              : (flags & page_frame) != 0    ? frame_kind::page
                                                             : frame_kind::group;
                 },
                 [&](button& b) { b.in_column = (flags & in_column) != 0; },
                 [&](label& l) {
                     l.in_middle = (flags & in_middle) != 0;
                     l.font = font;
                 },
                 [&](text_box& t) {
                     t.font = font;
                     t.locked = (flags & locked) != 0;
                     t.multi_line = (flags & multi_line) != 0;
                     t.on_grid = (flags & on_grid) != 0;
                     t.any_length = (flags & any_length) != 0;
                 },
                 [](const control&) {},
             });
}

} // namespace

void lay_out(window& w, const std::vector<placement>& table) {
    for (const placement& p : table) {
        set_name(p.model, p.name);
        p.model.parent = p.parent;
        p.model.left = p.left;
        p.model.top = p.top;
        p.model.width = p.width;
        p.model.height = p.height;
        set_caption(p.model, p.caption);
        set_flags(p.model, p.flags);
        w.add(p.model);
    }
}

} // namespace desk
