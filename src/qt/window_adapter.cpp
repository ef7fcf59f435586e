#include "qt/window_adapter.h"

#include "controls/controls.h"
#include "controls/operator_actions.h"
#include "qt/button_adapters.h"
#include "qt/list_view_adapter.h"
#include "qt/look.h"
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

/// One that is still found on the screen.
constexpr QSize smallest_window(120, 80);

} // namespace

std::unique_ptr<control_adapter> make_adapter(control& model, QWidget* parent, event_gate& gate) {
    switch (model.kind()) {
    case control_kind::frame:
        return make_frame_adapter(dynamic_cast<frame&>(model), parent, gate);
    case control_kind::button:
        return make_button_adapter(dynamic_cast<button&>(model), parent, gate);
    case control_kind::label:
        return make_label_adapter(dynamic_cast<label&>(model), parent, gate);
    case control_kind::text_box:
        return make_text_box_adapter(dynamic_cast<text_box&>(model), parent, gate);
    case control_kind::combo_box:
        return make_combo_box_adapter(dynamic_cast<combo_box&>(model), parent, gate);
    case control_kind::check_box:
        return make_check_box_adapter(dynamic_cast<check_box&>(model), parent, gate);
    case control_kind::option_button:
        return make_option_button_adapter(dynamic_cast<option_button&>(model), parent, gate);
    case control_kind::slider:
        return make_slider_adapter(dynamic_cast<slider&>(model), parent, gate);
    case control_kind::picture:
        return make_picture_adapter(dynamic_cast<picture&>(model), parent, gate);
    case control_kind::line:
        return make_line_adapter(dynamic_cast<line&>(model), parent, gate);
    case control_kind::list_view:
        return make_list_view_adapter(dynamic_cast<list_view&>(model), parent, gate);
    case control_kind::tree_view:
        return make_tree_view_adapter(dynamic_cast<tree_view&>(model), parent, gate);
    case control_kind::window:
    case control_kind::timer:
        break;
    }
    return nullptr;
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
    // all of them: this changes no model, and every model is as its adapter last saw it
    for (const auto& [model, adapter] : adapters_)
        adapter->follow();
}

void window_adapter::share_extra_room(QSize extra) {
    extra_room_ = extra;
    for (const auto& [model, adapter] : adapters_) {
        if (model == model_.takes_extra_room)
            adapter->set_extra_room({0, 0, extra.width(), extra.height()});
        else if (model->parent == nullptr)
            // they stay at the right lower corner
            adapter->set_extra_room({-extra.width(), -extra.height(), extra.width(), extra.height()});
    }
}

void window_adapter::build(control& c) {
    if (auto* const t = dynamic_cast<timer*>(&c)) {
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
    guide_.let_go();
    follow_focus();
    if (isVisible() != model_.visible) setVisible(model_.visible);
    for (control* c : model_.take_changed()) {
        if (const auto adapter = adapters_.find(c); adapter != adapters_.end())
            adapter->second->follow();
        else if (const auto ticks = timers_.find(c); ticks != timers_.end())
            follow_timer(dynamic_cast<const timer&>(*c), *ticks->second);
    }
    guide_.follow();
    follow_focus();
    follow_window();
}

void window_adapter::focus_first() {
    // through the model, since the window may not have the keys yet
    const std::vector<control*> stops = tab_stops(model_);
    if (!stops.empty()) gate_.run([&] { stops.front()->set_focus(); });
}

void window_adapter::follow_window() {
    const QString caption = QString::fromStdString(model_.caption);
    if (windowTitle() != caption) setWindowTitle(caption);
}

void window_adapter::follow_focus() {
    if (model_.focused == nullptr) {
        // else the toolkit would hand it to the next control, and its keys would work that one
        if (focusWidget() != nullptr) setFocus();
        return;
    }
    const auto focused = adapters_.find(model_.focused);
    if (focused != adapters_.end() && focused->second->widget()->isEnabled() &&
        focusWidget() != focused->second->widget())
        focused->second->widget()->setFocus();
    if (in_sight_ == model_.focused) return;
    in_sight_ = model_.focused;
    if (focused != adapters_.end()) area_.bring_into_sight(*focused->second->widget());
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
        // the model decides whether it goes
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
    // one that is minimised is not closed
    if (!e->spontaneous()) emit hidden();
}

void window_adapter::resizeEvent(QResizeEvent* /*e*/) {
    area_.setGeometry(rect());
    if (!isMinimized()) fit_plan();
}

bool window_adapter::event(QEvent* e) {
    const bool taken = QWidget::event(e);
    if (e->type() == QEvent::ScreenChangeInternal) {
        // texts are legible, and pictures fine enough, at another size
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
    walked_.assign(stops.begin(), std::find(stops.begin(), stops.end(), to) + 1);
    adapters_.at(to)->widget()->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

control* window_adapter::last_stop(const std::vector<control*>& stops) const {
    if (model_.focused != nullptr) return stop_of(stops, model_.focused);
    // the one with the focus has gone or is at work: its place in the window is kept
    const auto before = std::find_if(walked_.rbegin(), walked_.rend(), [&](const control* c) {
        return std::find(stops.begin(), stops.end(), c) != stops.end();
    });
    return before == walked_.rend() ? nullptr : *before;
}

bool window_adapter::closes_frame(int key) {
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter && key != Qt::Key_Escape) return false;
    button* const b = guide_.way_out(enter);
    if (b == nullptr || !can_be_reached(*b)) return false;
    adapters_.at(b)->act([b] { click(*b); });
    return true;
}

void window_adapter::keyPressEvent(QKeyEvent* e) {
    if (closes_frame(e->key())) return;
    // as its title bar closes it
    if (e->key() == Qt::Key_Escape && isModal() && model_.on_close) gate_.run(model_.on_close);
    // a key without a character is no KeyPress
    if (!e->text().isEmpty() && model_.on_key_press) gate_.run([&] { model_.on_key_press(e->text().at(0).unicode()); });
    QWidget::keyPressEvent(e);
}

} // namespace desk::qt
