#include "qt/window_adapter.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "qt/appearance.h"
#include "qt/button_adapters.h"
#include "qt/list_view_adapter.h"
#include "qt/plain_adapters.h"
#include "qt/plan_fit.h"
#include "qt/plan_scale.h"
#include "qt/reading_order.h"
#include "qt/text_box_adapter.h"

#include <QCloseEvent>
#include <QKeyEvent>

#include <algorithm>

namespace desk::qt {

namespace {

/// Small, but still easy to find on the screen.
constexpr QSize smallest_window(120, 80);

} // namespace

std::unique_ptr<control_adapter> make_adapter(control& model, QWidget* parent, event_gate& gate) {
    return visit(model, overloaded{
                            [&](frame& c) { return make_frame_adapter(c, parent, gate); },
                            [&](button& c) { return make_button_adapter(c, parent, gate); },
                            [&](label& c) { return make_label_adapter(c, parent, gate); },
                            [&](text_box& c) { return make_text_box_adapter(c, parent, gate); },
                            [&](combo_box& c) { return make_combo_box_adapter(c, parent, gate); },
                            [&](check_box& c) { return make_check_box_adapter(c, parent, gate); },
                            [&](option_button& c) { return make_option_button_adapter(c, parent, gate); },
                            [&](slider& c) { return make_slider_adapter(c, parent, gate); },
                            [&](picture& c) { return make_picture_adapter(c, parent, gate); },
                            [&](line& c) { return make_line_adapter(c, parent, gate); },
                            [&](list_view& c) { return make_list_view_adapter(c, parent, gate); },
                            [&](tree_view& c) { return make_tree_view_adapter(c, parent, gate); },
                            [](desk::window&) { return std::unique_ptr<control_adapter>(); },
                            [](timer&) { return std::unique_ptr<control_adapter>(); },
                        });
}

window_adapter::window_adapter(desk::window& model, event_gate& gate)
    : model_(model)
    , gate_(gate)
    , plan_(model.width, model.height)
    , place_(*this, plan_, nullptr)
    , area_(*new plan_area(this))
    , guide_(model) {
    build_all();
}

window_adapter::window_adapter(desk::window& model, event_gate& gate, QWidget* parent)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          (model.on_close ? Qt::WindowCloseButtonHint : Qt::WindowFlags()) |
                          (model.takes_extra_room != nullptr ? Qt::WindowMaximizeButtonHint : Qt::WindowFlags()))
    , model_(model)
    , gate_(gate)
    , plan_(model.width, model.height)
    , place_(*this, plan_, parent)
    , area_(*new plan_area(this))
    , guide_(model) {
    setWindowModality(Qt::ApplicationModal);
    build_all();
}

void window_adapter::build_all() {
    setObjectName(QString::fromStdString(model_.name));
    setMinimumSize(smallest_window);
    fit_plan();
    for (control* c : model_.controls())
        build(*c);
    keys_ = std::make_unique<access_keys>(*this, model_, gate_);
    follow();
}

void window_adapter::fit_plan() {
    double scale = fitting_scale(plan_, size(), devicePixelRatioF());
    if (model_.takes_extra_room != nullptr) scale = std::min(scale, place_.usual_scale());
    const QSize pixels = plan_pixels(plan_, scale);
    const bool fits = pixels.width() <= width() && pixels.height() <= height();
    const QSize extra = fits && model_.takes_extra_room != nullptr ? size() - pixels : QSize(0, 0);
    if (plan_scale(this) == scale && extra_room_ == extra) return;
    area_.setUpdatesEnabled(false);
    area_.plan().resize(pixels + extra);
    share_extra_room(extra);
    set_scale(scale);
    area_.setUpdatesEnabled(true);
}

void window_adapter::set_scale(double scale) {
    set_plan_scale(*this, scale);
    area_.plan().setFont(font_of(text_font::sans, scale));
    // all of them: this changes no model, and every adapter is up to date
    for (const auto& [model, adapter] : adapters_)
        adapter->follow();
}

void window_adapter::share_extra_room(QSize extra) {
    extra_room_ = extra;
    for (const auto& [model, adapter] : adapters_) {
        if (model == model_.takes_extra_room)
            adapter->set_extra_room({0, 0, extra.width(), extra.height()});
        else if (model->parent == nullptr)
            // they stay at the lower right corner
            adapter->set_extra_room({-extra.width(), -extra.height(), extra.width(), extra.height()});
    }
}

void window_adapter::build(control& c) {
    if (auto* const t = as<timer>(&c)) {
        auto ticks = std::make_unique<QTimer>();
        ticks->setTimerType(Qt::PreciseTimer);
        ticks->setInterval(t->interval);
        connect(ticks.get(), &QTimer::timeout, this, [this, t] { gate_.run(t->on_timer); });
        timers_.emplace(&c, std::move(ticks));
        return;
    }
    const auto around = adapters_.find(c.parent);
    auto adapter = make_adapter(c, around == adapters_.end() ? &area_.plan() : around->second->widget(), gate_);
    adapter->follow();
    adapters_.emplace(&c, std::move(adapter));
}

void window_adapter::follow() {
    guide_.drop_unusable_focus();
    follow_focus();
    if (isVisible() != model_.visible) setVisible(model_.visible);
    for (control* c : model_.take_changed()) {
        if (const auto adapter = adapters_.find(c); adapter != adapters_.end())
            adapter->second->follow();
        else if (const auto ticks = timers_.find(c); ticks != timers_.end())
            follow_timer(*as<timer>(c), *ticks->second);
    }
    guide_.follow();
    follow_focus();
    follow_window();
}

void window_adapter::focus_first() {
    // through the model, since the window might not have the focus yet
    const std::vector<control*> stops = tab_stops(model_);
    if (!stops.empty()) gate_.run([&] { stops.front()->set_focus(); });
}

void window_adapter::follow_window() {
    const QString caption = QString::fromStdString(model_.caption);
    if (windowTitle() != caption) setWindowTitle(caption);
}

void window_adapter::follow_focus() {
    if (model_.focused == nullptr) {
        // else Qt would focus the next control, and its keys would work that one
        if (focusWidget() != nullptr) setFocus();
        return;
    }
    const auto focused = adapters_.find(model_.focused);
    if (focused != adapters_.end() && focused->second->widget()->isEnabled() &&
        focusWidget() != focused->second->widget())
        focused->second->widget()->setFocus();
    if (in_sight_ == model_.focused) return;
    in_sight_ = model_.focused;
    if (focused != adapters_.end()) area_.ensure_visible(*focused->second->widget());
}

void window_adapter::follow_timer(const timer& model, QTimer& ticks) const {
    if (model.enabled == ticks.isActive()) return;
    if (!model.enabled) {
        ticks.stop();
        return;
    }
    if (gate_.timer_starts) gate_.timer_starts();
    ticks.start();
}

void window_adapter::closeEvent(QCloseEvent* e) {
    if (isModal()) {
        // the model decides whether it closes
        e->ignore();
        if (model_.on_close) gate_.run(model_.on_close);
        return;
    }
    e->accept();
    gate_.run([this] {
        model_.on_unload();
        gate_.finish();
    });
}

void window_adapter::hideEvent(QHideEvent* e) {
    QWidget::hideEvent(e);
    // minimising is not closing
    if (!e->spontaneous()) emit hidden();
}

void window_adapter::resizeEvent(QResizeEvent* /*e*/) {
    area_.setGeometry(rect());
    if (!isMinimized()) fit_plan();
}

bool window_adapter::event(QEvent* e) {
    const bool taken = QWidget::event(e);
    if (e->type() == QEvent::ScreenChangeInternal) {
        // text stays legible and pictures sharp at another size
        extra_room_ = {};
        fit_plan();
    }
    return taken;
}

bool window_adapter::focusNextPrevChild(bool next) {
    const std::vector<control*> stops = tab_stops(model_);
    if (stops.empty()) return false;
    const auto now = std::find(stops.begin(), stops.end(), last_stop(stops));
    control* to = next ? stops.front() : stops.back();
    if (now != stops.end() && next && now + 1 != stops.end()) to = *(now + 1);
    if (now != stops.end() && !next && now != stops.begin()) to = *(now - 1);
    visited_stops_.assign(stops.begin(), std::find(stops.begin(), stops.end(), to) + 1);
    adapters_.at(to)->widget()->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

control* window_adapter::last_stop(const std::vector<control*>& stops) const {
    if (model_.focused != nullptr) return stop_of(stops, model_.focused);
    // the focused control has gone or is busy: its place in the tab order is kept
    const auto before = std::find_if(visited_stops_.rbegin(), visited_stops_.rend(), [&](const control* c) {
        return std::find(stops.begin(), stops.end(), c) != stops.end();
    });
    return before == visited_stops_.rend() ? nullptr : *before;
}

bool window_adapter::closes_frame(int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter && key != Qt::Key_Escape) return false;
    button* const b = guide_.closing_button(enter);
    if (b == nullptr || !can_be_reached(*b)) return false;
    adapters_.at(b)->act([b] { click(*b); });
    return true;
}

void window_adapter::keyPressEvent(QKeyEvent* e) {
    if (closes_frame(e->key())) return;
    // the same as the title bar's close button
    if (e->key() == Qt::Key_Escape && isModal() && model_.on_close) gate_.run(model_.on_close);
    // a key without a character is no KeyPress
    if (!e->text().isEmpty() && model_.on_key_press) gate_.run([&] { model_.on_key_press(e->text().at(0).unicode()); });
    QWidget::keyPressEvent(e);
}

} // namespace desk::qt
