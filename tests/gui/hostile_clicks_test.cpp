// Clicks and the wheel on every control of every view, whether enabled, disabled, covered, behind a box or during an
// exchange. Only the topmost control reacts, and only to the left button.

#include "every_view.h"
#include "model_watch.h"
#include "raw_input.h"

#include "controls/kinds.h"
#include "controls/list_view.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk::gui {

namespace {

enum class mouse_action { wheel, wheel_with_ctrl, left, right, middle, double_left };
constexpr mouse_action deeds[] = {mouse_action::wheel, mouse_action::wheel_with_ctrl, mouse_action::left,
                                  mouse_action::right, mouse_action::middle,          mouse_action::double_left};

bool is_left(mouse_action d) { return d == mouse_action::left || d == mouse_action::double_left; }
bool is_wheel(mouse_action d) { return d == mouse_action::wheel || d == mouse_action::wheel_with_ctrl; }

class hostile_clicks : public view_bench, public ::testing::WithParamInterface<view> {
protected:
    hostile_clicks() { show(GetParam()); }

    /// The visible controls that can be drawn.
    std::vector<control*> shown_controls() {
        std::vector<control*> all;
        for (control* c : form().controls())
            if (c->shown() && !is<line, timer>(*c)) all.push_back(c);
        EXPECT_GT(all.size(), 20U);
        return all;
    }

    struct spot {
        QPoint pixel; ///< in the window
        const control* on_top;
    };
    /// Where to click a control: a wide check box reacts only on its mark and text.
    spot spot_of(const control& c) {
        QWidget& w = driver().find(widget_name(c));
        const QPoint at(8, w.height() / 2);
        int left = 8 * 15;
        int top = c.height / 2;
        for (const control* around = &c; around != nullptr; around = around->parent) {
            left += around->left;
            top += around->top;
        }
        return {w.mapTo(&program->main_window(), at), on_top_at(form(), left, top)};
    }

    void do_at(mouse_action d, QPoint at) {
        QWindow* const w = program->main_window().windowHandle();
        switch (d) {
        case mouse_action::left:
            return QTest::mouseClick(w, Qt::LeftButton, {}, at);
        case mouse_action::right:
            return QTest::mouseClick(w, Qt::RightButton, {}, at);
        case mouse_action::middle:
            return QTest::mouseClick(w, Qt::MiddleButton, {}, at);
        case mouse_action::double_left:
            return QTest::mouseDClick(w, Qt::LeftButton, {}, at);
        default:
            for (const int turn : {120, -120}) {
                QWheelEvent e(at, program->main_window().mapToGlobal(QPointF(at)), {}, {0, turn}, Qt::NoButton,
                              d == mouse_action::wheel ? Qt::NoModifier : Qt::ControlModifier, Qt::NoScrollPhase,
                              false);
                QSpontaneKeyEvent::setSpontaneous(&e);
                qApp->notify(w, &e);
            }
        }
    }

    void close_lists() {
        while (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        if (!focused().empty() || QApplication::activeModalWidget() != nullptr) return;
        // a window system would restore the focus by itself
        program->main_window().activateWindow();
        EXPECT_TRUE(wait_until([] { return !focused().empty(); }, 1000));
    }

    /// Minimum number of events for the left button: a button counts both clicks of a double click, a list at least
    /// one; other controls may raise none.
    static int least_events(const control& c, mouse_action d) {
        if (is<button>(c)) return d == mouse_action::double_left ? 2 : 1;
        const auto* const l = as<list_view>(&c);
        return l != nullptr && l->on_click && l->row_count() > 0 ? 1 : 0;
    }
    static int most_events(const control& c, mouse_action d) {
        const int once = is<list_view>(c) && d == mouse_action::double_left ? 2 : 1;
        return d == mouse_action::double_left || is_wheel(d) ? 2 * once : once;
    }

    static std::string focused() { return raw_input::focused(); }

    static bool turns_with_wheel(const control& c, const std::string& focused) {
        return is<slider>(c) && widget_name(c).toStdString() == focused;
    }

    /// Tries every action at one spot. Only the topmost control may react and change, if it is enabled; with `dead`,
    /// none may.
    void try_spot(const control& aim, bool dead) {
        const spot s = spot_of(aim);
        const control* const top = s.on_top;
        const bool live = !dead && top != nullptr && top->usable();
        const std::string top_name = top == nullptr ? "" : top->full_name();
        for (const mouse_action d : deeds) {
            SCOPED_TRACE(aim.full_name() + " under the mouse, on top " + top_name + ", action " +
                         std::to_string(static_cast<int>(d)));
            const std::string focus_before = focused();
            do_at(d, s.pixel);
            close_lists();
            std::map<std::string, int> events = events_->take();
            model_snapshot now = snapshot_of(form());
            std::set<std::string> changed = changes(seen_, now);
            seen_ = std::move(now);
            if (live && (is_left(d) || (is_wheel(d) && turns_with_wheel(*top, focus_before)))) {
                const int of_top = events[top_name];
                events.erase(top_name);
                EXPECT_GE(of_top, least_events(*top, d));
                EXPECT_LE(of_top, most_events(*top, d));
                changed.erase(top_name);
                if (is<option_button>(*top)) forget_group(*top, changed);
            }
            EXPECT_EQ(events, (std::map<std::string, int>()));
            EXPECT_EQ(changed, std::set<std::string>());
            const bool may_take_keys = live && !is_wheel(d) && !is<frame>(*top);
            const bool took_keys = may_take_keys && focused() == widget_name(*top).toStdString();
            EXPECT_TRUE(took_keys || focused() == focus_before) << focused() << " instead of " << focus_before;
        }
    }

    /// Choosing an option unselects its neighbours.
    void forget_group(const control& option, std::set<std::string>& changed) {
        for (const control* c : form().controls())
            if (same_kind(*c, option) && c->parent == option.parent) changed.erase(c->full_name());
    }

    /// Tries every control by mouse, and every unusable control through the accessibility interface. Events are
    /// counted but have no effect.
    void try_all(const char* when) {
        SCOPED_TRACE(when);
        events_.emplace(form());
        seen_ = snapshot_of(form());
        std::vector<control*> out_of_reach;
        for (control* c : shown_controls()) {
            try_spot(*c, false);
            if (!c->usable() || is_covered(*c)) out_of_reach.push_back(c);
        }
        press_by_program(out_of_reach);
        events_.reset();
    }

    void try_disabled(const char* when, const std::vector<control*>& all) {
        SCOPED_TRACE(when);
        events_.emplace(form());
        seen_ = snapshot_of(form());
        for (const control* c : all)
            try_spot(*c, true);
        press_by_program(all);
        events_.reset();
    }

    /// Whether neither its centre nor any of its corners is visible.
    bool is_covered(const control& c) {
        int left = 0;
        int top = 0;
        for (const control* around = &c; around != nullptr; around = around->parent) {
            left += around->left;
            top += around->top;
        }
        for (const auto& [x, y] : std::vector<std::pair<int, int>>{
                 {0, 0}, {c.width - 1, 0}, {0, c.height - 1}, {c.width - 1, c.height - 1}, {c.width / 2, c.height / 2}})
            if (on_top_at(form(), left + x, top + y) == &c) return false;
        return true;
    }

    void press_by_program(const std::vector<control*>& all) {
        const std::string focus_before = focused();
        for (const control* c : all)
            if (auto* const b = qobject_cast<QAbstractButton*>(&driver().find(widget_name(*c)))) b->click();
        EXPECT_EQ(events_->take(), (std::map<std::string, int>()));
        EXPECT_EQ(changes(seen_, snapshot_of(form())), std::set<std::string>());
        EXPECT_EQ(focused(), focus_before);
    }

    void TearDown() override { EXPECT_EQ(generator->commands(), QStringList()); }

    std::optional<event_watch> events_;
    model_snapshot seen_;
};

TEST_P(hostile_clicks, reach_only_the_topmost_control) {
    try_all("at rest");

    // the command that About sends
    const ui_driver ui = driver();
    generator->command("delay 200");
    bool tried = false;
    ui.when(heard("VER001"), [&] {
        generator->commands();
        EXPECT_FALSE(desk().about.cmd_about.enabled);
        try_all("during an exchange");
        EXPECT_EQ(generator->commands(), QStringList());
        tried = true;
    });
    ui.click("cmd_about");
    EXPECT_TRUE(tried);

    ASSERT_TRUE(ui.is_shown("fra_about"));
    generator->commands();
    try_all("under About");
}

TEST_P(hostile_clicks, reach_nothing_behind_a_box_and_nothing_disabled) {
    const ui_driver ui = driver();
    ui.click("cmd_disconn");
    bool stays = false;
    ui.when([] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; },
            [&] {
                QWidget& box = *QApplication::activeModalWidget();
                ASSERT_TRUE(wait_until([&] { return QGuiApplication::focusWindow() == box.windowHandle(); }, 5000));
                try_disabled("behind a box", shown_controls());
                stays = box.isVisible();
                box.close();
            });
    ui.click("cmd_refresh");
    EXPECT_TRUE(stays);
    ui.click("cmd_conn");

    std::vector<control*> disabled;
    for (control* c : shown_controls())
        if (!is<frame>(*c) && c != &desk().about.cmd_about) disabled.push_back(c);
    // it takes the focus, so that a control that grabs it is noticed
    program->main_window().activateWindow();
    ASSERT_TRUE(wait_until([] { return !focused().empty(); }, 5000));
    ui.find("cmd_about").setFocus();
    program->gate().run([&] {
        for (control* c : disabled)
            c->enabled = false;
    });
    ASSERT_EQ(focused(), "cmd_about");
    generator->commands();
    try_disabled("disabled", disabled);
}

INSTANTIATE_TEST_SUITE_P(views, hostile_clicks, ::testing::ValuesIn(every_view()), name_of_view);

} // namespace

} // namespace desk::gui
