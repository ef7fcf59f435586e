#pragma once

#include "controls/control.h"

#include <functional>
#include <string>
#include <vector>

namespace desk {

class timer;

/// A window as a model: its controls in the order they lie over each other, the last one on top unless another has been
/// raised. It collects which of them have changed until its face has followed.
class window : public control {
public:
    window() : control(control_kind::window) {
        owner = this;
        back_color = color_window;
        visible = false; // until it is opened
    }

    property<std::string> caption{*this, ""};

    /// Takes a control into the window. It must outlive the window's use.
    void add(control& c);
    const std::vector<control*>& controls() const { return controls_; }
    /// Puts a control over all that lies beside it.
    void raise(const control& c);
    bool lies_over(const control& c, const control& other) const;
    const std::vector<timer*>& timers() const { return timers_; }
    /// By its full name ("cmd_out(2)"); none: nullptr.
    control* find(const std::string& full_name) const;

    /// The controls that have changed since the last call, each once.
    std::vector<control*> take_changed();

    /// The control that grows where the operator enlarges the window, which then draws nothing larger; none: everything
    /// is drawn larger.
    const control* takes_extra_room = nullptr;

    control* focused = nullptr; ///< the control with the focus; none at first

    /// A control that can't be used any more loses the focus; one that was only disabled gets it back when it can be
    /// used again, unless another has taken it. Raises nothing. Called when control goes back to the operator.
    void settle_focus();

    event on_load;
    event on_unload;
    event on_close;                        ///< the title bar of a modal window closes it; empty: it has no such way out
    std::function<void(int)> on_key_press; ///< a key that reaches the window itself

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
