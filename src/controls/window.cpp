#include "controls/window.h"

#include "controls/kinds.h"

#include <algorithm>
#include <utility>

namespace desk {

void mark_changed(control& owner) {
    if (owner.changed_ || owner.owner == nullptr) return;
    owner.changed_ = true;
    owner.owner->changed_.push_back(&owner);
}

void window::add(control& c) {
    c.owner = this;
    controls_.push_back(&c);
    if (auto* const t = as<timer>(&c)) timers_.push_back(t);
    mark_changed(c);
}

control* window::find(const std::string& full_name) const {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(), [&](const control* c) { return c->full_name() == full_name; });
    return found == controls_.end() ? nullptr : *found;
}

void window::raise(const control& c) {
    raised_.erase(std::remove(raised_.begin(), raised_.end(), &c), raised_.end());
    raised_.push_back(&c);
}

bool window::lies_over(const control& c, const control& other) const {
    // compared with controls outside its frame, a control is as high as the frame
    const auto way_to = [](const control* to) {
        std::vector<const control*> way;
        for (; to != nullptr; to = to->parent)
            way.insert(way.begin(), to);
        return way;
    };
    const std::vector<const control*> way = way_to(&c);
    const std::vector<const control*> other_way = way_to(&other);
    const auto [at, other_at] = std::mismatch(way.begin(), way.end(), other_way.begin(), other_way.end());
    if (at == way.end() || other_at == other_way.end()) return at != way.end();
    return height_of(**at) > height_of(**other_at);
}

std::size_t window::height_of(const control& c) const {
    const auto place_in = [&c](const auto& all) { return std::find(all.begin(), all.end(), &c) - all.begin(); };
    const auto raised = static_cast<std::size_t>(place_in(raised_));
    return raised < raised_.size() ? controls_.size() + raised : static_cast<std::size_t>(place_in(controls_));
}

void window::settle_focus() {
    if (focused != nullptr && !focused->usable()) {
        disabled_with_focus_ = focused->shown() ? focused : nullptr;
        focused = nullptr;
    } else if (focused != nullptr || (disabled_with_focus_ != nullptr && !disabled_with_focus_->shown())) {
        disabled_with_focus_ = nullptr;
    } else if (disabled_with_focus_ != nullptr && disabled_with_focus_->usable()) {
        focused = std::exchange(disabled_with_focus_, nullptr);
    }
}

std::vector<control*> window::take_changed() {
    std::vector<control*> changed;
    changed.swap(changed_);
    for (control* c : changed)
        c->changed_ = false;
    return changed;
}

} // namespace desk
