#include "qt/reading_order.h"

#include "controls/kinds.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace desk::qt {

namespace {

struct place {
    int left;
    int top;
    int right;
    int bottom;
};

/// The control's place in its window.
place place_of(const control& c) {
    place p{c.left, c.top, c.left + c.width, c.top + c.height};
    for (const control* around = c.parent; around != nullptr; around = around->parent) {
        p.left += around->left;
        p.right += around->left;
        p.top += around->top;
        p.bottom += around->top;
    }
    return p;
}

bool lies_within(const place& inner, const place& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool lies_in(const control& c, const control& around) {
    for (const control* p = c.parent; p != nullptr; p = p->parent)
        if (p == &around) return true;
    return false;
}

bool is_selected_of_its_group(const option_button& o) {
    for (const control* c : o.owner->controls()) {
        const auto* const other = as<option_button>(c);
        if (other != nullptr && other->parent == o.parent && other->value && other->usable()) return other == &o;
    }
    return true;
}

bool takes_keys(const control& c) {
    if (const auto* const o = as<option_button>(&c)) return is_selected_of_its_group(*o);
    if (const auto* const l = as<label>(&c)) return l->on_click && !l->caption.get().empty();
    return is<button, text_box, combo_box, check_box, slider, list_view, tree_view>(c);
}

/// Whether a frame covers all of it.
bool is_covered(const control& c) {
    const std::vector<control*>& all = c.owner->controls();
    return std::any_of(all.begin(), all.end(), [&c](const control* f) {
        return is<frame>(*f) && f->shown() && f != &c && !lies_in(c, *f) && lies_within(place_of(c), place_of(*f)) &&
               c.owner->lies_over(*f, c);
    });
}

bool has_two_sides(const std::vector<control*>& in_a_frame) {
    return std::count_if(in_a_frame.begin(), in_a_frame.end(), [](const control* c) {
               const auto* const page = as<text_box>(c);
               return page != nullptr && page->any_length;
           }) > 1;
}

class reader {
public:
    explicit reader(const window& w) {
        for (control* c : w.controls())
            if (c->shown() && (is<frame>(*c) || takes_keys(*c))) insert(c);
        read(nullptr);
    }

    std::vector<control*> stops;

private:
    void insert(control* c) {
        const place p = place_of(*c);
        control* around = c->parent;
        // a control that overlaps a sibling frame is read as its child
        for (control* f : frames_)
            if (f->parent == c->parent && lies_within(p, place_of(*f))) around = f;
        children_[around].push_back(c);
        if (is<frame>(*c)) frames_.push_back(c);
    }

    void read(const control* around) {
        std::vector<control*>& here = children_[around];
        if (has_two_sides(here)) {
            for (control* c : here)
                add_stop(c);
            return;
        }
        // of two with the same top, the taller one starts the row
        std::stable_sort(here.begin(), here.end(), [](const control* a, const control* b) {
            const place p = place_of(*a);
            const place q = place_of(*b);
            return std::tie(p.top, q.bottom) < std::tie(q.top, p.bottom);
        });
        for (auto row = here.begin(); row != here.end();) {
            const place first = place_of(**row);
            const int middle = (first.top + first.bottom) / 2;
            const auto end =
                std::find_if(row + 1, here.end(), [&](const control* c) { return place_of(*c).top >= middle; });
            std::stable_sort(row, end, [](const control* a, const control* b) {
                const place p = place_of(*a);
                const place q = place_of(*b);
                return std::tie(p.left, p.top) < std::tie(q.left, q.top);
            });
            for (; row != end; ++row)
                add_stop(*row);
        }
    }

    void add_stop(control* c) {
        if (is<frame>(*c))
            read(c);
        else if (can_be_reached(*c))
            stops.push_back(c);
    }

    std::vector<control*> frames_;
    std::map<const control*, std::vector<control*>> children_;
};

} // namespace

bool can_be_reached(const control& c) { return c.usable() && !is_covered(c); }

bool can_take_keys(const control& c) { return takes_keys(c) && can_be_reached(c); }

control& neighbour(control& c, bool next) {
    std::vector<control*> group;
    for (control* other : c.owner->controls()) {
        if (!same_kind(*other, c) || other->parent != c.parent) continue;
        // in a group of option buttons, only the selected one is a stop
        if (is<option_button>(c) ? can_be_reached(*other) : can_take_keys(*other)) group.push_back(other);
    }
    if (!next) std::reverse(group.begin(), group.end());
    const auto me = std::find(group.begin(), group.end(), &c);
    if (me == group.end()) return c;
    return me + 1 == group.end() ? *group.front() : **(me + 1);
}

std::vector<control*> tab_stops(const window& w) { return reader(w).stops; }

control* stop_of(const std::vector<control*>& stops, const control* c) {
    const auto found = std::find_if(stops.begin(), stops.end(), [c](const control* stop) {
        return stop == c ||
               (c != nullptr && is<option_button>(*c) && same_kind(*stop, *c) && stop->parent == c->parent);
    });
    return found == stops.end() ? nullptr : *found;
}

} // namespace desk::qt
