#pragma once

#include "controls/control.h"

#include <functional>
#include <string>
#include <vector>

namespace desk {

class timer;

/// A window as a model: its controls in stacking order, the last one on top unless another is raised. It records which
/// of them have changed, for the adapter to follow.
class window : public control {
public:
    window() : control(this) {
        owner = this;
        back_color = color_window;
        visible = false; // until it is opened
    }

    property<std::string> caption{*this, ""};

    /// Adds a control, which must outlive the use of the window.
    void add(control& c);
    const std::vector<control*>& controls() const { return controls_; }
    /// Puts a control on top of its siblings.
    void raise(const control& c);
    bool lies_over(const control& c, const control& other) const;
    const std::vector<timer*>& timers() const { return timers_; }
    /// Finds a control by its full name ("cmd_out(2)"); nullptr if there is none.
    control* find(const std::string& full_name) const;

    /// The controls that have changed since the last call, without duplicates.
    std::vector<control*> take_changed();

    /// The control that grows when the operator enlarges the window, at unchanged scale; none: everything is scaled.
    const control* takes_extra_room = nullptr;

    control* focused = nullptr; ///< the control with the focus; none at first

    /// Takes the focus from a control that is no longer usable; one that was only disabled gets it back once it is
    /// usable again, unless another has taken it. Raises no event. Called when control returns to the operator.
    void settle_focus();

    event on_load;
    event on_unload;
    event on_close;                        ///< closing by the title bar of a modal window; empty: not possible
    std::function<void(int)> on_key_press; ///< for keys that reach the window itself

private:
    friend void mark_changed(control& owner);
    std::size_t height_of(const control& c) const;

    std::vector<control*> controls_;
    std::vector<const control*> raised_; // the last one on top
    std::vector<timer*> timers_;
    std::vector<control*> changed_;
    control* disabled_with_focus_ = nullptr;
};

} // namespace desk
