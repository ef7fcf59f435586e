#pragma once

#include "controls/controls.h"
#include "controls/window.h"

#include <vector>

namespace desk::qt {

/// Hands the keys of a window to the control that the operator uses next when a view or a frame over it comes on show,
/// and back to the one that had them when the frame goes. A control that can't be reached never keeps them.
class focus_guide {
public:
    explicit focus_guide(window& w);

    /// Takes the keys from what can't be used any more. Called before the widgets follow their models.
    void let_go();
    /// Called when the widgets have followed.
    void follow();

    /// The button that closes the frame on top or the small window: with `by_enter` its OK, else what Escape presses.
    /// None: nullptr.
    button* way_out(bool by_enter) const;

private:
    struct stage {
        const control* shown;
        control* next;   ///< gets the keys
        button* way_out; ///< none: nullptr
        control* before; ///< had them
        bool was_shown;
    };

    void open(stage& s);
    void close(stage& s);

    window& window_;
    std::vector<stage> stages_;
    control* last_ = nullptr;                // the control that had the keys last
    control* wanted_ = nullptr;              // gets them as soon as it can
    const control* has_till_then_ = nullptr; // where another has them, the operator has taken them elsewhere
};

} // namespace desk::qt
