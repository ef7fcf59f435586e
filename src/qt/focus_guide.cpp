#include "qt/focus_guide.h"

#include "controls/kinds.h"
#include "qt/reading_order.h"

#include <array>
#include <utility>

namespace desk::qt {

namespace {

struct step {
    const char* shown;
    const char* next;
    const char* closing_button;
};

constexpr std::array steps = {
    step{"frm_main", "cmd_timing", ""},
    step{"fra_edid", "cmd_read", ""},
    step{"fra_auto", "lstv_auto", ""},
    step{"fra_setup", "cmd_download", ""},
    step{"fra_edid_edit", "tree_edid", "cmd_edid_back"},
    step{"fra_pre_f", "lab_pre_f(0)", "cmd_pre_f"},
    step{"fra_compare", "cmd_ok", "cmd_ok"},
    step{"fra_about", "cmd_about_ok", "cmd_about_ok"},
    step{"frm_diag", "", "cmd_ok"},
};

} // namespace

focus_guide::focus_guide(window& w) : window_(w) {
    for (const step& s : steps) {
        const control* const shown = w.name == s.shown ? &w : w.find(s.shown);
        if (shown == nullptr) continue;
        stages_.push_back({shown, w.find(s.next), as<button>(w.find(s.closing_button)), nullptr, false});
    }
}

void focus_guide::drop_unusable_focus() {
    if (window_.focused != nullptr) last_ = window_.focused;
    window_.settle_focus();
}

void focus_guide::follow() {
    for (stage& s : stages_) {
        if (s.was_shown && !s.shown->shown()) close(s);
    }
    for (stage& s : stages_) {
        if (!s.was_shown && s.shown->shown()) open(s);
    }
    if (window_.focused != nullptr && !can_be_reached(*window_.focused)) window_.focused = nullptr;
    if (window_.focused != nullptr && window_.focused != interim_focus_) pending_focus_ = nullptr;
    if (pending_focus_ != nullptr && can_take_keys(*pending_focus_))
        std::exchange(pending_focus_, nullptr)->set_focus();
}

void focus_guide::open(stage& s) {
    s.was_shown = true;
    s.before = last_;
    pending_focus_ = s.next;
    interim_focus_ = last_;
}

void focus_guide::close(stage& s) {
    s.was_shown = false;
    pending_focus_ = s.before;
    interim_focus_ = nullptr;
}

button* focus_guide::closing_button(bool by_enter) const {
    const stage* top = nullptr;
    for (const stage& s : stages_) {
        if (!s.was_shown || s.closing_button == nullptr) continue;
        if (top == nullptr || window_.lies_over(*s.shown, *top->shown)) top = &s;
    }
    if (top == nullptr) return nullptr;
    const bool is_ok = top->closing_button->caption.get() == "OK";
    if (by_enter) return is_ok ? top->closing_button : nullptr;
    // the OK of a choice is an answer, which Escape does not give
    return is_ok && top->closing_button != top->next ? nullptr : top->closing_button;
}

} // namespace desk::qt
