#include "model_watch.h"

#include "controls/kinds.h"
#include "controls/list_view.h"
#include "controls/tree_view.h"

#include <sstream>
#include <utility>

namespace desk::gui {

namespace {

void write_list(std::ostream& out, const list_view& l) {
    out << l.selected();
    for (int i = 1; i <= l.row_count(); ++i)
        out << (l.row(i).checked ? '+' : '-');
}

void write_tree(std::ostream& out, const tree_view& t) {
    for (const tree_node& n : t.nodes())
        out << n.expanded << n.bold;
}

std::string line_of(const control& c) {
    std::ostringstream out;
    out << c.visible.get() << c.enabled.get() << ' ' << c.left.get() << ' ' << c.top.get() << ' ' << c.width.get()
        << ' ' << c.height.get() << ' ' << c.back_color.get() << ' ' << c.fore_color.get() << ' ';
    if (const auto* const f = as<frame>(&c)) out << f->caption.get();
    if (const auto* const b = as<button>(&c)) out << b->caption.get();
    if (const auto* const l = as<label>(&c)) out << l->caption.get();
    if (const auto* const t = as<text_box>(&c)) out << t->text.get();
    if (const auto* const o = as<combo_box>(&c)) out << o->list_index();
    if (const auto* const k = as<check_box>(&c)) out << k->value.get();
    if (const auto* const o = as<option_button>(&c)) out << o->value.get();
    if (const auto* const s = as<slider>(&c)) out << s->value();
    if (const auto* const l = as<list_view>(&c)) write_list(out, *l);
    if (const auto* const t = as<tree_view>(&c)) write_tree(out, *t);
    return out.str();
}

bool lies_at(const control& c, int left, int top) {
    for (const control* around = c.parent; around != nullptr; around = around->parent) {
        left -= around->left;
        top -= around->top;
    }
    return left >= c.left && top >= c.top && left < c.left + c.width && top < c.top + c.height;
}

} // namespace

model_snapshot snapshot_of(const window& w) {
    model_snapshot all;
    for (const control* c : w.controls())
        if (!is<timer>(*c)) all[c->full_name()] = line_of(*c);
    return all;
}

std::set<std::string> changes(const model_snapshot& before, const model_snapshot& after) {
    std::set<std::string> changed;
    for (const auto& [name, line] : after)
        if (before.at(name) != line) changed.insert(name);
    return changed;
}

template <class Procedure, class Counter>
void event_watch::replace(Procedure& procedure, Counter counter) {
    if (!procedure) return;
    put_back_.push_back([&procedure, real = std::exchange(procedure, std::move(counter))] { procedure = real; });
}

event_watch::event_watch(window& w) {
    replace(w.on_key_press, [](int) {});
    for (control* c : w.controls())
        watch(*c);
}

event_watch::~event_watch() {
    for (const auto& put_back : put_back_)
        put_back();
}

void event_watch::watch(control& c) {
    const auto count = [this, name = c.full_name()] { ++seen_[name]; };
    const auto count_with_number = [count](int) { count(); };
    if (auto* const b = as<button>(&c)) replace(b->on_click, count);
    if (auto* const l = as<label>(&c)) {
        replace(l->on_click, count);
        replace(l->on_mouse_move, [] {});
    }
    if (auto* const o = as<combo_box>(&c)) replace(o->on_click, count);
    if (auto* const k = as<check_box>(&c)) replace(k->on_click, count);
    if (auto* const o = as<option_button>(&c)) replace(o->on_click, count);
    if (auto* const t = as<text_box>(&c)) replace(t->on_key_press, count_with_number);
    if (auto* const t = as<tree_view>(&c)) replace(t->on_node_click, count_with_number);
    if (auto* const s = as<slider>(&c)) {
        replace(s->on_change, count);
        replace(s->on_scroll, count);
    }
    if (auto* const l = as<list_view>(&c)) {
        replace(l->on_click, count);
        replace(l->on_double_click, count);
        replace(l->on_key_up, count);
    }
}

std::map<std::string, int> event_watch::take() { return std::exchange(seen_, {}); }

const control* on_top_at(const window& w, int left, int top) {
    const control* on_top = nullptr;
    for (const control* c : w.controls()) {
        if (is<timer, line>(*c) || !c->shown()) continue;
        bool in_sight = lies_at(*c, left, top);
        // a frame clips its children
        for (const control* around = c->parent; around != nullptr; around = around->parent)
            in_sight = in_sight && lies_at(*around, left, top);
        if (in_sight && (on_top == nullptr || w.lies_over(*c, *on_top))) on_top = c;
    }
    return on_top;
}

} // namespace desk::gui
