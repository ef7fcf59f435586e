#pragma once

#include "controls/color.h"
#include "controls/property.h"

#include <functional>
#include <string>
#include <variant>

namespace desk {

class window;
class frame;
class button;
class label;
class text_box;
class combo_box;
class check_box;
class option_button;
class slider;
class picture;
class line;
class list_view;
class tree_view;
class timer;

/// A pointer to a control's own class. `controls/kinds.h` dispatches on it.
using any_control = std::variant<window*, frame*, button*, label*, text_box*, combo_box*, check_box*, option_button*,
                                 slider*, picture*, line*, list_view*, tree_view*, timer*>;

/// What an event calls. Empty: nothing listens.
using event = std::function<void()>;

/// The font of a control.
enum class text_font {
    sans,       ///< the usual one
    small,      ///< the same, for secondary text
    fixed,      ///< fixed pitch, cells of 8 x 16 pixels
    large_bold, ///< for a mark that is read at arm's length
};

/// A control of a window as a plain model, which the procedures of the desk read and write and an adapter draws.
/// Positions are in twips (15 per pixel), relative to the frame or window that contains it.
class control {
public:
    /// `self` is `this` of the derived class.
    explicit control(any_control self) : self_(self) {}
    control(const control&) = delete;
    control& operator=(const control&) = delete;
    virtual ~control() = default;

    any_control self() const { return self_; }

    /// The name in the code, with the index in a control array: "cmd_out(2)".
    std::string full_name() const;

    /// Whether it and every frame around it are visible.
    bool shown() const;
    /// Whether it and every frame around it are visible and enabled.
    bool usable() const;

    /// Gives it the focus if it is usable; raises GotFocus if it did not have the focus.
    void set_focus();
    bool has_focus() const;

    std::string name;        ///< without the index
    int index = -1;          ///< in its control array; -1: no array
    frame* parent = nullptr; ///< the frame that contains it; none: the window itself
    window* owner = nullptr; ///< the window it belongs to

    property<bool> visible{*this, true};
    property<bool> enabled{*this, true};
    property<int> left{*this, 0};
    property<int> top{*this, 0};
    property<int> width{*this, 0};
    property<int> height{*this, 0};
    property<color> back_color{*this, color_button_face};
    property<color> fore_color{*this, color_black};
    property<std::string> tool_tip{*this, ""}; ///< shown even if it is disabled

    event on_got_focus;

private:
    friend class window;
    friend void mark_changed(control& owner);
    any_control self_;
    bool changed_ = false;
};

} // namespace desk
