// What each key does at every tab stop: in every view, under every frame and in the small windows.

#include "every_view.h"
#include "model_watch.h"
#include "raw_input.h"

#include "controls/kinds.h"

#include <QApplication>
#include <QComboBox>
#include <QTest>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace desk::gui {

namespace {

constexpr Qt::Key keys[] = {Qt::Key_Up,     Qt::Key_Down,  Qt::Key_Left,  Qt::Key_Right,
                            Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape};

bool is_arrow(Qt::Key key) { return key >= Qt::Key_Left && key <= Qt::Key_Down; }

/// The button that closes the topmost frame and takes the focus, as a pressed button does: by Escape from everywhere,
/// and by Enter if it is an OK.
struct closing_button {
    std::string by_escape;
    std::string by_enter;
};

closing_button closing_button_of(const std::string& view) {
    if (view == "list of files" || view == "list over result") return {"cmd_pre_f", ""};
    if (view == "result") return {"cmd_ok", "cmd_ok"};
    if (view == "translation") return {"cmd_edid_back", ""};
    if (view == "About") return {"cmd_about_ok", "cmd_about_ok"};
    return {};
}

/// The result of a key: the control then focused, and the one whose event it raises, by their full names.
struct lead {
    std::string focused;
    std::string raises;
};

lead lead_of(const control& stop, Qt::Key key, const closing_button& out, const std::string& next_in_group) {
    const std::string name = stop.full_name();
    const bool enter = key == Qt::Key_Return;
    const bool space = key == Qt::Key_Space;
    const bool up_or_down = key == Qt::Key_Up || key == Qt::Key_Down;
    // Enter and Space press a button; arrows go nowhere
    if (is<button, label>(stop) && (enter || space)) return {name, name};
    if (is<check_box, option_button>(stop) && space) return {name, name};
    if (is<option_button>(stop) && is_arrow(key)) return {next_in_group, next_in_group};
    if (is<label>(stop) && up_or_down) return {next_in_group, ""};
    if (is<slider>(stop) && is_arrow(key)) return {name, name};
    // from the first node, which is expanded: nowhere, to its first child, back, and there again
    if (is<tree_view>(stop) && is_arrow(key)) return {name, key == Qt::Key_Up ? "" : name};
    if (key == Qt::Key_Escape && !out.by_escape.empty()) return {out.by_escape, out.by_escape};
    if (enter && !out.by_enter.empty()) return {out.by_enter, out.by_enter};
    return {name, ""};
}

/// Raised besides the result: a list gets every key, a text line every character.
bool hears_all_keys(const control& c) {
    const auto* const t = as<text_box>(&c);
    return is<list_view>(c) || (t != nullptr && !t->multi_line);
}

class walk_table : public view_bench, public ::testing::WithParamInterface<view> {
protected:
    walk_table() { show(GetParam()); }

    static std::string focused() { return raw_input::focused(); }

    control* model_of(const std::string& widget) {
        for (control* c : form().controls())
            if (widget_name(*c).toStdString() == widget) return c;
        return nullptr;
    }

    std::vector<control*> stops() {
        driver().find("cbo_com").setFocus(Qt::TabFocusReason);
        std::vector<control*> all;
        do {
            all.push_back(model_of(focused()));
            raw_input::tap(Qt::Key_Tab);
        } while (focused() != "cbo_com" && all.size() < 200);
        return all;
    }

    /// The next usable control of the same kind in the same frame.
    std::string next_in_group(const control& c, Qt::Key key) {
        std::vector<std::string> group;
        for (const control* other : form().controls()) {
            if (!same_kind(*other, c) || other->parent != c.parent || !other->usable()) continue;
            const auto* const l = as<label>(other);
            if (l == nullptr || (l->on_click && !l->caption.get().empty())) group.push_back(other->full_name());
        }
        if (group.empty()) return c.full_name();
        const auto at = std::find(group.begin(), group.end(), c.full_name()) - group.begin();
        const auto count = static_cast<std::ptrdiff_t>(group.size());
        const bool on = key == Qt::Key_Down || key == Qt::Key_Right;
        return group.at(static_cast<std::size_t>((at + (on ? 1 : count - 1)) % count));
    }

    void focus(const control& c) {
        driver().find(widget_name(c)).setFocus(Qt::TabFocusReason);
        ASSERT_EQ(focused(), widget_name(c).toStdString());
    }

    void close_lists() {
        while (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        program->main_window().activateWindow();
        EXPECT_TRUE(wait_until([] { return !focused().empty(); }, 1000));
    }

    void try_key(control& stop, Qt::Key key, const std::string& view, event_watch& events) {
        SCOPED_TRACE(stop.full_name() + ", key " + QKeySequence(key).toString().toStdString());
        focus(stop);
        const lead expected = lead_of(stop, key, closing_button_of(view), next_in_group(stop, key));
        events.take();
        raw_input::tap(key);
        const bool list_opens = QApplication::activePopupWidget() != nullptr;
        EXPECT_EQ(list_opens, is<combo_box>(stop) && key == Qt::Key_Space);
        if (list_opens) close_lists();
        std::map<std::string, int> heard_of = events.take();
        if (hears_all_keys(stop) && expected.raises != stop.full_name()) heard_of.erase(stop.full_name());
        std::map<std::string, int> raises;
        if (!expected.raises.empty()) raises[expected.raises] = 1;
        EXPECT_EQ(heard_of, raises);
        const control* const at = form().find(expected.focused);
        EXPECT_EQ(focused(), widget_name(*at).toStdString());
        // back to the start
        if (auto* const o = as<option_button>(&stop)) o->choose();
    }

    void TearDown() override { EXPECT_EQ(generator->commands(), QStringList()); }
};

TEST_P(walk_table, every_key_at_every_stop) {
    const std::vector<control*> all = stops();
    ASSERT_GT(all.size(), 12U);
    event_watch events(form());
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_NE(all[i], nullptr);
        focus(*all[i]);
        raw_input::tap(Qt::Key_Tab);
        EXPECT_EQ(focused(), widget_name(*all[(i + 1) % all.size()]).toStdString()) << all[i]->full_name();
        raw_input::tap(Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), widget_name(*all[i]).toStdString());
        for (const Qt::Key key : keys) {
            // here an arrow key opens a port, which has its own test
            if (all[i]->full_name() == "cbo_com" && is_arrow(key)) continue;
            try_key(*all[i], key, GetParam().name, events);
        }
    }
}

std::vector<view> every_view_and_about() {
    std::vector<view> all = every_view();
    all.push_back({"About", {"cmd_setup", "cmd_about"}});
    return all;
}

INSTANTIATE_TEST_SUITE_P(views, walk_table, ::testing::ValuesIn(every_view_and_about()), name_of_view);

class panel_walk : public view_bench {};

TEST_F(panel_walk, sends_what_the_pressed_button_means) {
    show({"panel", {"cmd_setup"}});
    const std::vector<std::pair<const char*, const char*>> presses = {
        {"cmd_out_0", "OUT001"},        {"cmd_out_1", "OUT002"},        {"cmd_out_2", "OUT003"},
        {"cmd_out_3", "OUT004"},        {"cmd_hdcp_0", "HDC000"},       {"cmd_hdcp_1", "HDC001"},
        {"cmd_asc_0", "ASC001 PCM999"}, {"cmd_asc_1", "ASC002 PCM999"}, {"cmd_asc_2", "ASC003 PCM999"},
        {"cmd_lpcm_0", "PCM001"},       {"cmd_lpcm_1", "PCM002"},       {"cmd_lpcm_2", "PCM003"},
        {"cmd_csc_0", "CSC001"},        {"cmd_csc_1", "CSC002"},        {"cmd_csc_2", "CSC003"},
        {"cmd_deep_0", "DEE001"},       {"cmd_deep_1", "DEE002"},       {"cmd_deep_2", "DEE003"},
        {"cmd_auto_go_0", "ATO000"},    {"cmd_auto_go_1", "ATO001"},    {"cmd_fav_0", "FAV000"},
        {"cmd_fav_1", "FAV001"},        {"cmd_about", "VER001"}};
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
        for (const auto& [name, commands] : presses) {
            driver().find(name).setFocus(Qt::TabFocusReason);
            raw_input::tap(key);
            EXPECT_EQ(generator->commands().join(' ').toStdString(), commands) << name;
            const bool opens_frame = std::string(name) == "cmd_about";
            EXPECT_EQ(raw_input::focused(), opens_frame ? "cmd_about_ok" : name);
        }
        raw_input::tap(Qt::Key_Escape);
        EXPECT_EQ(raw_input::focused(), "cmd_about");
    }
}

struct small_window {
    const char* name;
    const char* opened_by;
    std::vector<std::string> stops;
    const char* closed_by; ///< by Enter on it; also by Escape unless it is an answer
    bool escape_closes;
    std::map<std::pair<std::string, Qt::Key>, std::string> elsewhere; ///< keys that move the focus
};

void PrintTo(const small_window& s, std::ostream* out) { *out << s.name; }

class small_window_walk : public view_bench, public ::testing::WithParamInterface<small_window> {};

TEST_P(small_window_walk, every_key_at_every_stop) {
    const small_window& s = GetParam();
    show({"", {"cmd_edid", "cmd_read", "cmd_pre_f", "lab_pre_f_0"}});
    if (std::string(s.opened_by) == "cmd_edid_report") driver().click("cmd_read_translate");
    generator->commands();
    for (const bool by_escape : {false, true}) {
        bool walked = false;
        in_next_window(s.name, [&](const ui_driver& ui) {
            const QWidget& w = ui.find(s.name);
            ASSERT_TRUE(wait_until(
                [&] { return QApplication::focusWidget() != nullptr && QApplication::focusWidget()->window() == &w; },
                5000));
            const auto expect_at = [&](const std::string& stop, const std::string& key, const std::string& to) {
                EXPECT_EQ(raw_input::focused(), to) << stop << ", key " << key;
                EXPECT_TRUE(w.isVisible()) << stop << ", key " << key;
            };
            const auto focus = [&](const std::string& stop) {
                ui.find(QString::fromStdString(stop)).setFocus(Qt::TabFocusReason);
            };
            for (std::size_t i = 0; i < s.stops.size(); ++i) {
                const std::string& stop = s.stops[i];
                const std::string& next = s.stops[(i + 1) % s.stops.size()];
                focus(stop);
                raw_input::tap(Qt::Key_Tab);
                expect_at(stop, "Tab", next);
                raw_input::tap(Qt::Key_Tab, Qt::ShiftModifier);
                expect_at(next, "Shift+Tab", stop);
                for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Escape}) {
                    if (key == Qt::Key_Escape && s.escape_closes) continue;
                    focus(stop);
                    raw_input::tap(key);
                    const auto led = s.elsewhere.find({stop, key});
                    expect_at(stop, QKeySequence(key).toString().toStdString(),
                              led == s.elsewhere.end() ? stop : led->second);
                    // the selected one of a group is the stop
                    if (led != s.elsewhere.end()) raw_input::tap(key);
                }
                // Enter works for buttons only
                if (stop.starts_with("cmd_")) continue;
                focus(stop);
                raw_input::tap(Qt::Key_Return);
                expect_at(stop, "Enter", stop);
            }
            focus(by_escape ? s.stops.front() : s.closed_by);
            raw_input::tap(by_escape && s.escape_closes ? Qt::Key_Escape : Qt::Key_Return);
            if (by_escape && !s.escape_closes) {
                EXPECT_TRUE(w.isVisible());
                focus(s.closed_by);
                raw_input::tap(Qt::Key_Space);
            }
            EXPECT_FALSE(w.isVisible());
            if (w.isVisible()) ui.click(s.closed_by);
            walked = true;
        });
        driver().click(s.opened_by);
        EXPECT_TRUE(walked);
    }
    EXPECT_EQ(generator->commands(), QStringList());
}

const std::vector<small_window> small_windows = {
    {"frm_diag",
     "cmd_sum_read",
     {"cbo_eeprom", "opt_unused_0", "chk_4digits", "cmd_checksum", "cmd_ok"},
     "cmd_ok",
     true,
     {{{"opt_unused_0", Qt::Key_Up}, "opt_unused_1"},
      {{"opt_unused_0", Qt::Key_Down}, "opt_unused_1"},
      {{"opt_unused_0", Qt::Key_Left}, "opt_unused_1"},
      {{"opt_unused_0", Qt::Key_Right}, "opt_unused_1"}}},
    {"frm_diag",
     "cmd_w_auto",
     {"txt_sn", "cmd_add", "cmd_sub", "chk_write", "chk_verify", "chk_auto_sn", "cmd_run", "txt_auto_msg", "cmd_ok"},
     "cmd_ok",
     true,
     {}},
    {"frm_report", "cmd_edid_report", {"txt_report", "cmd_save", "cmd_exit"}, "cmd_exit", true, {}},
};

INSTANTIATE_TEST_SUITE_P(windows, small_window_walk, ::testing::ValuesIn(small_windows),
                         [](const ::testing::TestParamInfo<small_window>& info) {
                             return std::string(info.param.opened_by);
                         });

} // namespace

} // namespace desk::gui
