// Every mouse button and the wheel at every control of every view: while it can be used, while it is disabled, under a
// frame, behind a box and in the middle of an exchange. What lies on top hears of the left button, and nobody else of
// anything.

#include "every_view.h"
#include "holding_hand.h"
#include "model_watch.h"

#include "controls/controls.h"
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

enum class deed { wheel, wheel_with_ctrl, left, right, middle, double_left };
constexpr deed deeds[] = {deed::wheel, deed::wheel_with_ctrl, deed::left, deed::right, deed::middle, deed::double_left};

bool is_left(deed d) { return d == deed::left || d == deed::double_left; }
bool is_wheel(deed d) { return d == deed::wheel || d == deed::wheel_with_ctrl; }

class hostile_clicks : public view_bench, public ::testing::WithParamInterface<view> {
protected:
    hostile_clicks() { show(GetParam()); }

    /// Those on show that have a face of their own.
    std::vector<control*> shown_controls() {
        std::vector<control*> all;
        for (control* c : form().controls())
            if (c->shown() && c->kind() != control_kind::line && c->kind() != control_kind::timer) all.push_back(c);
        EXPECT_GT(all.size(), 20U);
        return all;
    }

    struct spot {
        QPoint pixel; ///< in the window
        const control* on_top;
    };
    /// Where a hand points at a control: a wide check box takes clicks on its mark and its text alone.
    spot spot_of(const control& c) {
        QWidget& w = operator_hand().find(widget_name(c));
        const QPoint at(8, w.height() / 2);
        int left = 8 * 15;
        int top = c.height / 2;
        for (const control* around = &c; around != nullptr; around = around->parent) {
            left += around->left;
            top += around->top;
        }
        return {w.mapTo(&program->main_window(), at), on_top_at(form(), left, top)};
    }

    void do_at(deed d, QPoint at) {
        QWindow* const w = program->main_window().windowHandle();
        switch (d) {
        case deed::left:
            return QTest::mouseClick(w, Qt::LeftButton, {}, at);
        case deed::right:
            return QTest::mouseClick(w, Qt::RightButton, {}, at);
        case deed::middle:
            return QTest::mouseClick(w, Qt::MiddleButton, {}, at);
        case deed::double_left:
            return QTest::mouseDClick(w, Qt::LeftButton, {}, at);
        default:
            for (const int turn : {120, -120}) {
                QWheelEvent e(at, program->main_window().mapToGlobal(QPointF(at)), {}, {0, turn}, Qt::NoButton,
                              d == deed::wheel ? Qt::NoModifier : Qt::ControlModifier, Qt::NoScrollPhase, false);
                QSpontaneKeyEvent::setSpontaneous(&e);
                qApp->notify(w, &e);
            }
        }
    }

    /// Those of combo boxes and the menus of texts.
    void close_lists() {
        while (QWidget* const popup = QApplication::activePopupWidget())
            popup->close();
        if (!focused().empty() || QApplication::activeModalWidget() != nullptr) return;
        // a window system gives the keys back by itself
        program->main_window().activateWindow();
        EXPECT_TRUE(wait_until([] { return !focused().empty(); }, 1000));
    }

    /// What the left button raises: a button and a list count every click, others one a click at most.
    static int least_events(const control& c, deed d) {
        if (c.kind() == control_kind::button) return d == deed::double_left ? 2 : 1;
        const auto* const l = dynamic_cast<const list_view*>(&c);
        return l != nullptr && l->on_click && l->row_count() > 0 ? 1 : 0;
    }
    static int most_events(const control& c, deed d) {
        const int once = c.kind() == control_kind::list_view && d == deed::double_left ? 2 : 1;
        return d == deed::double_left || is_wheel(d) ? 2 * once : once;
    }

    static std::string focused() { return holding_hand::focused(); }

    static bool turns_with_wheel(const control& c, const std::string& focused) {
        return c.kind() == control_kind::slider && widget_name(c).toStdString() == focused;
    }

    /// Does all of it at one spot. Nothing changes and nobody hears of it but the control on top, where that can be
    /// used; `dead`: not that one either.
    void try_spot(const control& aim, bool dead) {
        const spot s = spot_of(aim);
        const control* const top = s.on_top;
        const bool live = !dead && top != nullptr && top->usable();
        const std::string top_name = top == nullptr ? "" : top->full_name();
        for (const deed d : deeds) {
            SCOPED_TRACE(aim.full_name() + " under the hand, on top " + top_name + ", deed " +
                         std::to_string(static_cast<int>(d)));
            const std::string focus_before = focused();
            do_at(d, s.pixel);
            close_lists();
            std::map<std::string, int> events = events_->take();
            sight_of_model now = see(form());
            std::set<std::string> changed = changes(seen_, now);
            seen_ = std::move(now);
            if (live && (is_left(d) || (is_wheel(d) && turns_with_wheel(*top, focus_before)))) {
                const int of_top = events[top_name];
                events.erase(top_name);
                EXPECT_GE(of_top, least_events(*top, d));
                EXPECT_LE(of_top, most_events(*top, d));
                changed.erase(top_name);
                if (top->kind() == control_kind::option_button) forget_group(*top, changed);
            }
            EXPECT_EQ(events, (std::map<std::string, int>()));
            EXPECT_EQ(changed, std::set<std::string>());
            const bool may_take_keys = live && !is_wheel(d) && top->kind() != control_kind::frame;
            const bool took_keys = may_take_keys && focused() == widget_name(*top).toStdString();
            EXPECT_TRUE(took_keys || focused() == focus_before) << focused() << " instead of " << focus_before;
        }
    }

    /// One that is chosen takes the mark from its neighbours.
    void forget_group(const control& option, std::set<std::string>& changed) {
        for (const control* c : form().controls())
            if (c->kind() == option.kind() && c->parent == option.parent) changed.erase(c->full_name());
    }

    /// At every control, with the hand; and as a program for the blind presses it, what can't be used. Events are
    /// counted, and do nothing.
    void try_all(const char* when) {
        SCOPED_TRACE(when);
        events_.emplace(form());
        seen_ = see(form());
        std::vector<control*> out_of_reach;
        for (control* c : shown_controls()) {
            try_spot(*c, false);
            if (!c->usable() || is_covered(*c)) out_of_reach.push_back(c);
        }
        press_by_program(out_of_reach);
        events_.reset();
    }

    void try_dead(const char* when, const std::vector<control*>& all) {
        SCOPED_TRACE(when);
        events_.emplace(form());
        seen_ = see(form());
        for (const control* c : all)
            try_spot(*c, true);
        press_by_program(all);
        events_.reset();
    }

    /// Nothing of it is in sight: not its middle, and none of its corners.
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
            if (auto* const b = qobject_cast<QAbstractButton*>(&operator_hand().find(widget_name(*c)))) b->click();
        EXPECT_EQ(events_->take(), (std::map<std::string, int>()));
        EXPECT_EQ(changes(seen_, see(form())), std::set<std::string>());
        EXPECT_EQ(focused(), focus_before);
    }

    void TearDown() override { EXPECT_EQ(generator->commands(), QStringList()); }

    std::optional<event_watch> events_;
    sight_of_model seen_;
};

TEST_P(hostile_clicks, work_what_lies_on_top_and_nothing_else) {
    try_all("at rest");

    // the question that About asks of the generator
    const hand h = operator_hand();
    generator->tell("delay 200");
    bool tried = false;
    h.when(heard("VER001"), [&] {
        generator->commands();
        EXPECT_FALSE(desk().about.cmd_about.enabled);
        try_all("during an exchange");
        EXPECT_EQ(generator->commands(), QStringList());
        tried = true;
    });
    h.click("cmd_about");
    EXPECT_TRUE(tried);

    ASSERT_TRUE(h.is_shown("fra_about"));
    generator->commands();
    try_all("under About");
}

TEST_P(hostile_clicks, work_nothing_behind_a_box_and_nothing_disabled) {
    const hand h = operator_hand();
    h.click("cmd_disconn");
    bool stays = false;
    h.when([] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; },
           [&] {
               QWidget& box = *QApplication::activeModalWidget();
               ASSERT_TRUE(wait_until([&] { return QGuiApplication::focusWindow() == box.windowHandle(); }, 5000));
               try_dead("behind a box", shown_controls());
               stays = box.isVisible();
               box.close();
           });
    h.click("cmd_refresh");
    EXPECT_TRUE(stays);
    h.click("cmd_conn");

    std::vector<control*> disabled;
    for (control* c : shown_controls())
        if (c->kind() != control_kind::frame && c != &desk().about.cmd_about) disabled.push_back(c);
    // it keeps the keys, so that one that takes them is seen
    program->main_window().activateWindow();
    ASSERT_TRUE(wait_until([] { return !focused().empty(); }, 5000));
    h.find("cmd_about").setFocus();
    program->gate().run([&] {
        for (control* c : disabled)
            c->enabled = false;
    });
    ASSERT_EQ(focused(), "cmd_about");
    generator->commands();
    try_dead("disabled", disabled);
}

INSTANTIATE_TEST_SUITE_P(views, hostile_clicks, ::testing::ValuesIn(every_view()), name_of_view);

} // namespace

} // namespace desk::gui
