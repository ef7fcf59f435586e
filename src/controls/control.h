#pragma once

#include "controls/color.h"
#include "controls/property.h"

#include <functional>
#include <string>
#include <string_view>

namespace desk {

class frame;
class window;

/// What an event calls. Empty: nothing listens.
using event = std::function<void()>;

enum class control_kind {
    window,
    frame,
    button,
    label,
    text_box,
    combo_box,
    check_box,
    option_button,
    slider,
    picture,
    line,
    list_view,
    tree_view,
    timer,
};

std::string_view kind_name(control_kind kind);

/// How a control writes its text.
enum class text_font {
    sans,       ///< the desk's one font
    small,      ///< the same for what comes second
    fixed,      ///< fixed pitch, one character a cell of 8 x 16 pixels
    large_bold, ///< for a mark that is read at arm's length
};

/// A control of a window, as a plain model: what the procedures of the desk read and write. A face draws it.
/// Places are in twips (15 to a pixel), from the corner of the frame or window that it lies in.
class control {
public:
    explicit control(control_kind kind) : kind_(kind) {}
    control(const control&) = delete;
    control& operator=(const control&) = delete;
    virtual ~control() = default;

    control_kind kind() const { return kind_; }

    /// The control's name in the code, with its index where it is part of an array: "cmd_out(2)".
    std::string full_name() const;

    /// Visible, and every frame around it too.
    bool shown() const;
    /// Visible and enabled, and every frame around it too.
    bool usable() const;

    /// Gives it the focus, if it is on show and enabled; raises GotFocus where it had it not.
    void set_focus();
    bool has_focus() const;

    std::string name;        ///< without the index
    int index = -1;          ///< place in its control array; -1: no array
    frame* parent = nullptr; ///< the frame it lies in; none: the window itself
    window* owner = nullptr; ///< the window it belongs to

    property<bool> visible{*this, true};
    property<bool> enabled{*this, true};
    property<int> left{*this, 0};
    property<int> top{*this, 0};
    property<int> width{*this, 0};
    property<int> height{*this, 0};
    property<color> back_color{*this, color_button_face};
    property<color> fore_color{*this, color_black};
    property<std::string> tool_tip{*this, ""}; ///< shown while the pointer rests on it, also where it is disabled

    event on_got_focus;

private:
    friend class window;
    friend void mark_changed(control& owner);
    control_kind kind_;
    bool changed_ = false;
};

} // namespace desk
