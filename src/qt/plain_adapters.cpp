#include "qt/plain_adapters.h"

#include "controls/operator_actions.h"
#include "qt/appearance.h"
#include "qt/decoration.h"
#include "qt/desk_style.h"
#include "qt/metrics.h"
#include "qt/reading_order.h"
#include "qt/text_label.h"

#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QFrame>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalBlocker>

namespace desk::qt {

namespace {

class frame_adapter final : public control_adapter {
public:
    frame_adapter(frame& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QGroupBox(parent), gate), model_(model), box_(static_cast<QGroupBox*>(widget())) {
        box_->setProperty(desk_style::kind_of_frame, static_cast<int>(model.role));
        if (model.role == frame_kind::overlay) new overlay_shadow(*box_);
    }

protected:
    void follow_kind() override {
        const QString caption = QString::fromStdString(model_.caption).replace("&", "&&");
        if (box_->title() != caption) box_->setTitle(caption);
        set_accessible(model_.caption);
    }

    bool handle_event(QEvent* e) override {
        // of several frames within another, the last shown is on top
        if (e->type() == QEvent::ShowToParent && model_.parent != nullptr) {
            box_->raise();
            model_.owner->raise(model_);
        }
        return false;
    }

private:
    frame& model_;
    QGroupBox* box_;
};

class label_adapter final : public control_adapter {
public:
    label_adapter(label& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new text_label(parent), gate)
        , model_(model)
        , text_(static_cast<text_label*>(widget())) {
        text_->set_in_middle(model.in_middle);
        text_->on_click = [this] { act([this] { click(model_); }); };
        text_->on_move = [this] { act([this] { hover(model_); }); };
        // a clickable label is also reachable by keyboard
        if (model.on_click) text_->setFocusPolicy(Qt::TabFocus);
        text_->setMouseTracking(static_cast<bool>(model.on_mouse_move));
    }

protected:
    void follow_scale() override {
        text_->setFont(font_of(model_.font, scale()));
        text_->set_line_pitch(model_.line_pitch * scale() / twips_per_pixel);
    }

    bool handle_event(QEvent* e) override {
        // the arrow keys cycle through the labels of the frame
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key != Qt::Key_Down && key != Qt::Key_Up) return false;
        act([&] { neighbour(model_, key == Qt::Key_Down).set_focus(); });
        return true;
    }

    void follow_kind() override {
        text_->set_text(shown_text(model_.caption.get()));
        text_->set_colors(model_.fore_color, model_.back_color);
        set_accessible(model_.caption);
    }

private:
    label& model_;
    text_label* text_;
};

class picture_adapter final : public control_adapter {
public:
    picture_adapter(picture& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QLabel(parent), gate), model_(model), label_(static_cast<QLabel*>(widget())) {
        label_->setScaledContents(true);
        set_accessible();
    }

protected:
    void follow_kind() override {
        // loaded when first visible; fills its place at every size
        const bool needs_fine = scale() * label_->devicePixelRatioF() > 1;
        if (!model_.visible || (is_loaded() && (is_fine_ || !needs_fine))) return;
        is_fine_ = needs_fine;
        load();
    }

    bool handle_event(QEvent* e) override {
        if (e->type() == QEvent::PaletteChange && is_loaded()) load();
        return false;
    }

private:
    bool is_loaded() const { return !label_->pixmap(Qt::ReturnByValue).isNull(); }

    void load() {
        QString file = ":/pictures/" + QString::fromStdString(model_.file);
        const bool dark = scheme_of(label_->palette()) == scheme::dark;
        const bool has_dark = QFile::exists(file + "_dark.png");
        if (dark && has_dark) file += "_dark";
        const QPixmap whole(file + (is_fine_ ? "@2x.png" : ".png"));
        label_->setPixmap(dark && !has_dark ? on_plate(whole) : whole);
    }

    /// A picture with a light background, on a rounded plate for the dark scheme.
    static QPixmap on_plate(const QPixmap& picture) {
        QPixmap ground = picture;
        ground.setDevicePixelRatio(1);
        QPixmap plate(ground.size());
        plate.fill(Qt::transparent);
        QPainter painter(&plate);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        const double radius = ground.width() / 6.0;
        painter.drawRoundedRect(plate.rect(), radius, radius);
        painter.end();
        plate.setDevicePixelRatio(picture.devicePixelRatio());
        return plate;
    }

    picture& model_;
    QLabel* label_;
    bool is_fine_ = false;
};

class line_adapter final : public control_adapter {
public:
    line_adapter(line& model, QWidget* parent, event_gate& gate) : control_adapter(model, new QFrame(parent), gate) {
        auto* const ruled = static_cast<QFrame*>(widget());
        const bool across = model.width.get() >= model.height.get();
        ruled->setFrameShape(across ? QFrame::HLine : QFrame::VLine);
        across ? ruled->setMinimumHeight(1) : ruled->setMinimumWidth(1);
    }

protected:
    void follow_kind() override {}
};

class combo_box_adapter final : public control_adapter {
public:
    combo_box_adapter(combo_box& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QComboBox(parent), gate)
        , model_(model)
        , combo_(static_cast<QComboBox*>(widget())) {
        combo_->setMaxVisibleItems(20);
        set_accessible();
        // `activated` is emitted for user choices only
        connect(combo_, &QComboBox::activated, this,
                [this](int index) { act([this, index] { choose_item(model_, index); }); });
    }

protected:
    void follow_kind() override {
        const QSignalBlocker quiet(combo_);
        const int count = model_.list_count();
        while (combo_->count() > count)
            combo_->removeItem(combo_->count() - 1);
        for (int i = 0; i < count; ++i) {
            const QString item = QString::fromStdString(model_.item(i));
            if (i >= combo_->count())
                combo_->addItem(item);
            else if (combo_->itemText(i) != item)
                combo_->setItemText(i, item);
        }
        combo_->setCurrentIndex(model_.list_index());
    }

    bool handle_event(QEvent* e) override {
        switch (e->type()) {
        case QEvent::FocusIn:
            take_focus(static_cast<QFocusEvent*>(e)->reason());
            return false;
        case QEvent::MouseButtonPress:
            focused_by_operator_ = true;
            return false;
        case QEvent::KeyPress:
            if (!chooses_while_closed(*static_cast<QKeyEvent*>(e))) return false;
            break;
        case QEvent::Wheel:
            // over the port list it would open one port after another
            break;
        default:
            return false;
        }
        e->ignore();
        return true;
    }

private:
    void take_focus(Qt::FocusReason reason) {
        switch (reason) {
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::MouseFocusReason:
        case Qt::ShortcutFocusReason:
            focused_by_operator_ = true;
            break;
        case Qt::ActiveWindowFocusReason:
        case Qt::PopupFocusReason:
            break; // it had the focus already
        default:
            focused_by_operator_ = false;
        }
    }

    /// Whether a key would choose from a closed list that acts at once, such as the port list. Only arrow keys are
    /// allowed to, one choice for each press, and only if the operator has focused the list.
    bool chooses_while_closed(const QKeyEvent& e) const {
        if (!model_.on_click || combo_->window()->isModal() || (e.modifiers() & Qt::AltModifier) != 0) return false;
        const int key = e.key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) return e.isAutoRepeat() || !focused_by_operator_;
        const bool opens_list = key == Qt::Key_Space || key == Qt::Key_F4;
        const bool is_letter = !e.text().isEmpty() && e.text().at(0).isPrint();
        return !opens_list && (is_letter || key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
                               key == Qt::Key_PageDown);
    }

    combo_box& model_;
    QComboBox* combo_;
    bool focused_by_operator_ = false;
};

class slider_adapter final : public control_adapter {
public:
    slider_adapter(slider& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QScrollBar(Qt::Horizontal, parent), gate)
        , model_(model)
        , bar_(static_cast<QScrollBar*>(widget())) {
        bar_->setProperty(desk_style::slider, true);
        bar_->setRange(model.minimum, model.maximum);
        bar_->setPageStep(model.large_step);
        bar_->setFocusPolicy(Qt::StrongFocus);
        // the keys follow the direction of the arrows on the bar
        bar_->setInvertedControls(false);
        bar_->setContextMenuPolicy(Qt::PreventContextMenu);
        // a drag scrolls; the value changes on release
        bar_->setTracking(false);
        set_accessible();
        connect(bar_, &QScrollBar::sliderMoved, this,
                [this](int value) { act([this, value] { drag_slider(model_, value); }); });
        connect(bar_, &QScrollBar::valueChanged, this,
                [this](int value) { act([this, value] { move_slider(model_, value); }); });
    }

protected:
    void follow_kind() override {
        if (bar_->sliderPosition() == model_.value()) return;
        const QSignalBlocker quiet(bar_);
        bar_->setValue(model_.value());
    }

    bool handle_event(QEvent* e) override {
        switch (e->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            // the middle button would jump to the pointer
            return static_cast<QMouseEvent*>(e)->button() != Qt::LeftButton;
        case QEvent::Wheel:
            if (bar_->hasFocus()) return false;
            e->ignore();
            return true;
        default:
            return false;
        }
    }

private:
    slider& model_;
    QScrollBar* bar_;
};

} // namespace

std::unique_ptr<control_adapter> make_frame_adapter(frame& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<frame_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_label_adapter(label& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<label_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_picture_adapter(picture& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<picture_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_line_adapter(line& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<line_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_combo_box_adapter(combo_box& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<combo_box_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_slider_adapter(slider& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<slider_adapter>(model, parent, gate);
}

} // namespace desk::qt
