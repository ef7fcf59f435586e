#include "qt/button_adapters.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "qt/access_keys.h"
#include "qt/appearance.h"
#include "qt/metrics.h"
#include "qt/reading_order.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>

#include <algorithm>

namespace desk::qt {

namespace {

/// Underlines the letter of the access key; ampersands in the caption are shown as they are.
void set_caption(QAbstractButton& widget, const control& model, const std::string& caption) {
    const auto shown = [](const std::string& part) { return QString::fromStdString(part).replace("&", "&&"); };
    const int letter = underlined_letter(model, caption);
    const auto at = static_cast<std::size_t>(std::max(0, letter));
    const QString text = shown(caption.substr(0, at)) + (letter < 0 ? "" : "&") + shown(caption.substr(at));
    if (widget.text() == text) return;
    widget.setText(text);
    // the window handles the key itself
    widget.setShortcut({});
}

/// A lit button is marked by shape as well as by colour: a bar at the left edge for the current view, a disc for on,
/// two bars for busy or cut off.
class lamp_button final : public QPushButton {
public:
    using QPushButton::QPushButton;

    void light(color c) {
        if (lamp_ == c) return;
        lamp_ = c;
        QPalette lit;
        if (c != color_button_face) {
            lit.setColor(QPalette::Button, background_of(c, colors_of(lit)));
            // also while busy and disabled
            lit.setColor(QPalette::ButtonText, on_lamp());
        }
        setPalette(lit);
    }
    /// Aligns the captions of a column at the left.
    void set_in_column(bool in_column) { in_column_ = in_column; }

protected:
    void paintEvent(QPaintEvent* /*e*/) override {
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        painter.drawControl(QStyle::CE_PushButtonBevel, option);
        draw_mark(painter);
        QRect place = rect();
        if (in_column_) place.setLeft(scaled(metric::column_caption_left, this));
        if (height() >= metric::tall_button * plan_scale(this)) {
            QFont large = font();
            large.setPixelSize(scaled(metric::title_text, this));
            large.setBold(true);
            painter.setFont(large);
        }
        const int side = in_column_ ? Qt::AlignLeft : Qt::AlignHCenter;
        painter.drawItemText(place, side | Qt::AlignVCenter | Qt::TextShowMnemonic, option.palette, isEnabled(), text(),
                             QPalette::ButtonText);
    }

private:
    void draw_mark(QPainter& painter) const {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(plan_scale(this), plan_scale(this));
        const double below = height() / plan_scale(this);
        const double middle = below / 2;
        painter.setPen(Qt::NoPen);
        painter.setBrush(on_lamp());
        if (lamp_ == color_current_view) {
            painter.drawRoundedRect(QRectF(3, 4, 4, below - 8), 2, 2);
        } else if (lamp_ == color_green) {
            painter.drawEllipse(QPointF(8, middle), 3.5, 3.5);
        } else if (lamp_ == color_red) {
            painter.drawRect(QRectF(5, middle - 5, 2, 10));
            painter.drawRect(QRectF(9, middle - 5, 2, 10));
        }
        painter.restore();
    }

    color lamp_ = color_button_face;
    bool in_column_ = false;
};

/// The lamp's state for screen readers.
QString words_of(color lamp) {
    if (lamp == color_current_view) return "current view";
    if (lamp == color_green) return "green";
    if (lamp == color_red) return "red";
    return {};
}

/// Qt would move the focus with them.
bool is_arrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

class button_adapter final : public control_adapter {
public:
    button_adapter(button& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new lamp_button(parent), gate)
        , model_(model)
        , push_(static_cast<lamp_button*>(widget())) {
        push_->setAutoDefault(false);
        push_->set_in_column(model.in_column);
        connect(push_, &QPushButton::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*push_, model_, model_.caption);
        set_accessible(model_.caption, words_of(model_.back_color));
        push_->light(model_.back_color);
    }

    bool handle_event(QEvent* e) override {
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) push_->click();
        return key == Qt::Key_Return || key == Qt::Key_Enter || is_arrow(key);
    }

private:
    button& model_;
    lamp_button* push_;
};

class check_box_adapter final : public control_adapter {
public:
    check_box_adapter(check_box& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QCheckBox(parent), gate)
        , model_(model)
        , check_(static_cast<QCheckBox*>(widget())) {
        connect(check_, &QCheckBox::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*check_, model_, model_.caption);
        set_accessible(model_.caption);
        check_->setChecked(model_.value != 0);
    }

    bool handle_event(QEvent* e) override {
        return e->type() == QEvent::KeyPress && is_arrow(static_cast<QKeyEvent*>(e)->key());
    }

private:
    check_box& model_;
    QCheckBox* check_;
};

class option_button_adapter final : public control_adapter {
public:
    option_button_adapter(option_button& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QRadioButton(parent), gate)
        , model_(model)
        , radio_(static_cast<QRadioButton*>(widget())) {
        connect(radio_, &QRadioButton::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*radio_, model_, model_.caption);
        set_accessible(model_.caption);
        // the model decides which one is selected, and may have none
        radio_->setAutoExclusive(false);
        radio_->setChecked(model_.value);
        radio_->setAutoExclusive(true);
    }

    bool handle_event(QEvent* e) override {
        // the arrow keys wrap within the group and select
        if (e->type() != QEvent::KeyPress) return false;
        const auto& pressed = *static_cast<QKeyEvent*>(e);
        if (!is_arrow(pressed.key())) return false;
        const bool on = pressed.key() == Qt::Key_Down || pressed.key() == Qt::Key_Right;
        if (!pressed.isAutoRepeat()) act([&] { click(*as<option_button>(&neighbour(model_, on))); });
        return true;
    }

private:
    option_button& model_;
    QRadioButton* radio_;
};

} // namespace

std::unique_ptr<control_adapter> make_button_adapter(button& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<button_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_check_box_adapter(check_box& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<check_box_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_option_button_adapter(option_button& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<option_button_adapter>(model, parent, gate);
}

} // namespace desk::qt
