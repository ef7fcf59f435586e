// Where a key leads to from every stop of the tab key: in every view, under every frame and in the small windows.

#include "every_view.h"
#include "holding_hand.h"
#include "model_watch.h"

#include "controls/controls.h"

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

/// The button that closes the frame on top, and takes the keys as one that is pressed does: Escape works it from
/// everywhere, Enter where it is an OK.
struct way_out {
    std::string by_escape;
    std::string by_enter;
};

way_out way_out_of(const std::string& view) {
    if (view == "list of files" || view == "list over result") return {"cmd_pre_f", ""};
    if (view == "result") return {"cmd_ok", "cmd_ok"};
    if (view == "translation") return {"cmd_edid_back", ""};
    if (view == "About") return {"cmd_about_ok", "cmd_about_ok"};
    return {};
}

/// Where a key leads to: the control that has the keys then, and the one whose event it raises, by their full names.
struct lead {
    std::string keys_at;
    std::string works;
};

/// The rules.
lead lead_of(const control& stop, Qt::Key key, const way_out& out, const std::string& next_in_group) {
    const std::string name = stop.full_name();
    const bool enter = key == Qt::Key_Return;
    const bool space = key == Qt::Key_Space;
    switch (stop.kind()) {
    case control_kind::button:
        // pressed by Enter and Space; arrows go nowhere
        if (enter || space) return {name, name};
        break;
    case control_kind::check_box:
        if (space) return {name, name};
        break;
    case control_kind::option_button:
        if (is_arrow(key)) return {next_in_group, next_in_group};
        if (space) return {name, name};
        break;
    case control_kind::label:
        if (key == Qt::Key_Up || key == Qt::Key_Down) return {next_in_group, ""};
        if (enter || space) return {name, name};
        break;
    case control_kind::slider:
        if (is_arrow(key)) return {name, name};
        break;
    case control_kind::tree_view:
        // to another node, or nowhere; the first one is shown already, and it lies open
        if (key == Qt::Key_Down || key == Qt::Key_Up) return {name, name};
        break;
    case control_kind::list_view:
        // it hears of every key that comes up
        if (key != Qt::Key_Escape && !(enter && !out.by_enter.empty())) return {name, name};
        break;
    default:
        break;
    }
    if (key == Qt::Key_Escape && !out.by_escape.empty()) return {out.by_escape, out.by_escape};
    if (enter && !out.by_enter.empty()) return {out.by_enter, out.by_enter};
    return {name, ""};
}

/// Raised beside what the key leads to: a list hears of every key, a line of text of every character.
bool hears_all_keys(const control& c) {
    const auto* const t = dynamic_cast<const text_box*>(&c);
    return c.kind() == control_kind::list_view || (t != nullptr && !t->multi_line);
}

class walk_table : public view_bench, public ::testing::WithParamInterface<view> {
protected:
    walk_table() { show(GetParam()); }

    static std::string focused() { return holding_hand::focused(); }

    control* model_of(const std::string& widget) {
        for (control* c : form().controls())
            if (widget_name(*c).toStdString() == widget) return c;
        return nullptr;
    }

    std::vector<control*> stops() {
        operator_hand().find("cbo_com").setFocus(Qt::TabFocusReason);
        std::vector<control*> all;
        do {
            all.push_back(model_of(focused()));
            holding_hand::tap(Qt::Key_Tab);
        } while (focused() != "cbo_com" && all.size() < 200);
        return all;
    }

    /// Of its kind, in its frame, those that can be used and stand there.
    std::string next_in_group(const control& c, Qt::Key key) {
        std::vector<std::string> group;
        for (const control* other : form().controls()) {
            if (other->kind() != c.kind() || other->parent != c.parent || !other->usable()) continue;
            const auto* const l = dynamic_cast<const label*>(other);
            if (l == nullptr || (l->on_click && !l->caption.get().empty())) group.push_back(other->full_name());
        }
        if (group.empty()) return c.full_name();
        const auto at = std::find(group.begin(), group.end(), c.full_name()) - group.begin();
        const auto count = static_cast<std::ptrdiff_t>(group.size());
        const bool on = key == Qt::Key_Down || key == Qt::Key_Right;
        return group.at(static_cast<std::size_t>((at + (on ? 1 : count - 1)) % count));
    }

    void focus(const control& c) {
        operator_hand().find(widget_name(c)).setFocus(Qt::TabFocusReason);
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
        const lead expected = lead_of(stop, key, way_out_of(view), next_in_group(stop, key));
        events.take();
        holding_hand::tap(key);
        const bool list_opens = QApplication::activePopupWidget() != nullptr;
        EXPECT_EQ(list_opens, stop.kind() == control_kind::combo_box && key == Qt::Key_Space);
        if (list_opens) close_lists();
        std::map<std::string, int> heard_of = events.take();
        if (hears_all_keys(stop) && expected.works != stop.full_name()) heard_of.erase(stop.full_name());
        std::map<std::string, int> works;
        if (!expected.works.empty()) works[expected.works] = 1;
        EXPECT_EQ(heard_of, works);
        const control* const at = form().find(expected.keys_at);
        EXPECT_EQ(focused(), widget_name(*at).toStdString());
        // back to where it was
        if (auto* const o = dynamic_cast<option_button*>(&stop)) o->choose();
    }

    void TearDown() override { EXPECT_EQ(generator->commands(), QStringList()); }
};

TEST_P(walk_table, leads_every_key_from_every_stop) {
    const std::vector<control*> all = stops();
    ASSERT_GT(all.size(), 12U);
    event_watch events(form());
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_NE(all[i], nullptr);
        focus(*all[i]);
        holding_hand::tap(Qt::Key_Tab);
        EXPECT_EQ(focused(), widget_name(*all[(i + 1) % all.size()]).toStdString()) << all[i]->full_name();
        holding_hand::tap(Qt::Key_Tab, Qt::ShiftModifier);
        EXPECT_EQ(focused(), widget_name(*all[i]).toStdString());
        for (const Qt::Key key : keys) {
            // an arrow key opens a port, which is a test of its own
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

} // namespace

} // namespace desk::gui
