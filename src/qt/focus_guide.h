#pragma once

#include "controls/controls.h"
#include "controls/window.h"

#include <vector>

namespace desk::qt {

/// Moves the focus to the control used next when a view or a frame over it appears, and back when the frame goes. An
/// unreachable control never keeps the focus.
class focus_guide {
public:
    explicit focus_guide(window& w);

    /// Takes the focus from a control that is no longer usable. Called before the widgets are updated.
    void drop_unusable_focus();
    /// Called after the widgets are updated.
    void follow();

    /// The button that closes the topmost frame or small window: its OK if `by_enter`, else the one for Escape.
    /// nullptr if there is none.
    button* closing_button(bool by_enter) const;

private:
    struct stage {
        const control* shown;
        control* next;          ///< gets the focus
        button* closing_button; ///< may be nullptr
        control* before;        ///< had the focus
        bool was_shown;
    };

    void open(stage& s);
    void close(stage& s);

    window& window_;
    std::vector<stage> stages_;
    control* last_ = nullptr;                // had the focus last
    control* pending_focus_ = nullptr;       // gets the focus as soon as it can
    const control* interim_focus_ = nullptr; // if another control has the focus, the operator has moved it
};

} // namespace desk::qt
