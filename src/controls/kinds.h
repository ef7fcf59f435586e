#pragma once

#include "controls/controls.h"
#include "controls/list_view.h"
#include "controls/tree_view.h"
#include "controls/window.h"

#include <string_view>
#include <variant>

namespace desk {

/// A function object of several lambdas, one for each class that `visit` passes.
template <class... Lambdas>
struct overloaded : Lambdas... {
    using Lambdas::operator()...;
};
template <class... Lambdas>
overloaded(Lambdas...) -> overloaded<Lambdas...>;

/// Calls `act` with the control as its own class and returns the result. `act` has to accept every class of control.
template <class Act>
decltype(auto) visit(control& c, Act&& act) {
    return std::visit([&](auto* self) -> decltype(auto) { return act(*self); }, c.self());
}
template <class Act>
decltype(auto) visit(const control& c, Act&& act) {
    return std::visit([&](const auto* self) -> decltype(auto) { return act(*self); }, c.self());
}

/// Whether a control is of one of these classes.
template <class... Controls>
bool is(const control& c) {
    return (std::holds_alternative<Controls*>(c.self()) || ...);
}

/// The control as this class; nullptr if it is of another class, or nullptr.
template <class Control>
Control* as(control* c) {
    return c != nullptr && is<Control>(*c) ? std::get<Control*>(c->self()) : nullptr;
}
template <class Control>
const Control* as(const control* c) {
    return c != nullptr && is<Control>(*c) ? std::get<Control*>(c->self()) : nullptr;
}

inline bool same_kind(const control& a, const control& b) { return a.self().index() == b.self().index(); }

/// The name of the control's class: "list_view".
std::string_view kind_name(const control& c);

} // namespace desk
