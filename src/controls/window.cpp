#include "controls/window.h"

#include "controls/controls.h"

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
    if (c.kind() == control_kind::timer) timers_.push_back(dynamic_cast<timer*>(&c));
    mark_changed(c);
}

control* window::find(const std::string& full_name) const {
    const auto found =
        std::find_if(controls_.begin(), controls_.end(), [&](const control* c) { return c->full_name() == full_name; });
    return found == controls_.end() ? nullptr : *found;
}

void window::settle_focus() {
    if (focused != nullptr && !focused->usable()) {
        disabled_with_focus_ = focused->shown() ? focused : nullptr;
        focused = nullptr;
    } else if (focused != nullptr) {
        disabled_with_focus_ = nullptr;
    } else if (disabled_with_focus_ != nullptr && !disabled_with_focus_->shown()) {
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
