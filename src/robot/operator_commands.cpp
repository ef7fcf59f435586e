#include "robot/operator_commands.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "robot/answers.h"
#include "runtime/windows_1252.h"

namespace desk::robot {

namespace {

using tokens_in = const std::vector<token>&;

constexpr const char* not_for_this_kind = "a control of this kind does not take that";
constexpr const char* nothing_listens = "nothing listens to that";

/// The number in the last token, at this place; none if it is missing or not a number.
std::optional<int> number_at(tokens_in tokens, std::size_t place) {
    return tokens.size() == place + 1 ? number_of(tokens[place]) : std::nullopt;
}

std::string click_it(control& c, tokens_in tokens) {
    if (tokens.size() != 2) return refused(bad_tokens);
    return visit(c, overloaded{
                        [](button& b) {
                            if (!b.on_click) return refused(nothing_listens);
                            click(b);
                            return ok();
                        },
                        [](list_view& l) {
                            if (l.selected() != 0) choose_row(l, l.selected());
                            return ok();
                        },
                        [](auto& other) {
                            if constexpr (requires { click(other); })
                                click(other);
                            else
                                other.set_focus();
                            return ok();
                        },
                    });
}

std::string double_click_it(control& c, tokens_in tokens) {
    auto* l = as<list_view>(&c);
    if (l == nullptr || tokens.size() != 2) return refused(not_for_this_kind);
    double_click(*l);
    return ok();
}

std::string select_it(control& c, tokens_in tokens) {
    const auto n = number_at(tokens, 2);
    if (!n) return refused(bad_tokens);
    if (auto* l = as<list_view>(&c)) {
        if (*n < 1 || *n > l->row_count()) return refused("no such row");
        choose_row(*l, *n);
    } else if (auto* b = as<combo_box>(&c)) {
        if (*n < 0 || *n >= b->list_count()) return refused("no such list index");
        choose_item(*b, *n);
    } else {
        return refused(not_for_this_kind);
    }
    return ok();
}

std::string check_it(control& c, tokens_in tokens) {
    auto* l = as<list_view>(&c);
    if (l == nullptr) return refused(not_for_this_kind);
    const auto n = tokens.size() == 4 ? number_of(tokens[2]) : std::nullopt;
    if (!n || (tokens[3].text != "on" && tokens[3].text != "off")) return refused(bad_tokens);
    if (!l->check_boxes) return refused("the list shows no check boxes");
    if (*n < 1 || *n > l->row_count()) return refused("no such row");
    set_check(*l, *n, tokens[3].text == "on");
    return ok();
}

std::string type_it(control& c, tokens_in tokens) {
    auto* t = as<text_box>(&c);
    if (t == nullptr) return refused(not_for_this_kind);
    if (tokens.size() != 3 || !tokens[2].quoted) return refused(bad_tokens);
    if (t->locked) return refused("the box is locked");
    if (t->max_length > 0 && character_count(tokens[2].text) > static_cast<std::size_t>(t->max_length))
        return refused("the box holds fewer characters");
    type_text(*t, tokens[2].text);
    return ok();
}

std::string focus_it(control& c, tokens_in tokens) {
    auto* t = as<text_box>(&c);
    if (t == nullptr || tokens.size() != 2) return refused(not_for_this_kind);
    t->set_focus();
    return ok();
}

std::string press_key_in_it(control& c, tokens_in tokens) {
    const auto code = number_at(tokens, 2);
    if (!code) return refused(bad_tokens);
    c.set_focus();
    if (auto* t = as<text_box>(&c)) press_key(*t, *code);
    return ok();
}

std::string key_up_in_it(control& c, tokens_in tokens) {
    auto* l = as<list_view>(&c);
    if (l == nullptr || tokens.size() != 2) return refused(not_for_this_kind);
    key_up(*l);
    return ok();
}

template <class Move>
std::string move_it(control& c, tokens_in tokens, const event slider::*listener, Move move) {
    const auto n = number_at(tokens, 2);
    auto* s = as<slider>(&c);
    if (s == nullptr) return refused(not_for_this_kind);
    if (!n) return refused(bad_tokens);
    if (!(s->*listener)) return refused(nothing_listens);
    if (*n < s->minimum || *n > s->maximum) return refused("outside the slider's range");
    move(*s, *n);
    return ok();
}

std::string hover_it(control& c, tokens_in tokens) {
    if (tokens.size() != 2) return refused(bad_tokens);
    if (auto* l = as<label>(&c)) hover(*l);
    return ok();
}

} // namespace

const std::map<std::string, operator_command>& operator_commands() {
    static const std::map<std::string, operator_command> table = {
        {"click", click_it},
        {"doubleclick", double_click_it},
        {"select", select_it},
        {"check", check_it},
        {"type", type_it},
        {"focus", focus_it},
        {"key", press_key_in_it},
        {"keyup", key_up_in_it},
        {"slide", [](control& c, tokens_in w) { return move_it(c, w, &slider::on_change, move_slider); }},
        {"drag", [](control& c, tokens_in w) { return move_it(c, w, &slider::on_scroll, drag_slider); }},
        {"hover", hover_it},
    };
    return table;
}

} // namespace desk::robot
