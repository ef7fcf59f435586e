#include "qt/button_faces.h"

#include "controls/operator_actions.h"
#include "qt/look.h"
#include "qt/reading_order.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>

namespace desk::qt {

namespace {

/// A caption with its mnemonic letter marked; an ampersand of its own stands as it is.
QString marked_caption(const std::string& caption, char mnemonic) {
    QString text = QString::fromStdString(caption).replace("&", "&&");
    const auto at = mnemonic == 0 ? -1 : text.indexOf(QChar::fromLatin1(mnemonic));
    return at < 0 ? text : text.insert(at, '&');
}

/// A lit button says so without its colour too: a bar at its left edge marks the current view, a disc what is on, two
/// bars what is at work or cut off.
class lamp_button final : public QPushButton {
public:
    using QPushButton::QPushButton;

    void light(color c) {
        if (lamp_ == c) return;
        lamp_ = c;
        QPalette lit;
        lit.setColor(QPalette::Button, color_of(c));
        // grey on the red of a button at work could not be read
        if (c != color_button_face) lit.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::black);
        setPalette(lit);
    }

protected:
    void paintEvent(QPaintEvent* e) override {
        QPushButton::paintEvent(e);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        const int middle = height() / 2;
        if (lamp_ == color_current_view) {
            painter.drawRect(2, 2, 4, height() - 4);
        } else if (lamp_ == color_green) {
            painter.drawEllipse(QPoint(7, middle), 4, 4);
        } else if (lamp_ == color_red) {
            painter.drawRect(3, middle - 5, 2, 10);
            painter.drawRect(7, middle - 5, 2, 10);
        }
    }

private:
    color lamp_ = color_button_face;
};

/// The same in words.
QString words_of(color lamp) {
    if (lamp == color_current_view) return "current view";
    if (lamp == color_green) return "green";
    if (lamp == color_red) return "red";
    return {};
}

/// The toolkit would go to another control with them.
bool is_arrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

class button_face final : public control_face {
public:
    button_face(button& model, QWidget* parent, event_gate& gate)
        : control_face(model, new lamp_button(parent), gate)
        , model_(model)
        , push_(static_cast<lamp_button*>(widget())) {
        push_->setAutoDefault(false);
        connect(push_, &QPushButton::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        const QString caption = marked_caption(model_.caption, model_.mnemonic);
        if (push_->text() != caption) push_->setText(caption);
        set_accessible(model_.caption, words_of(model_.back_color));
        push_->light(model_.back_color);
    }

    bool take_event(QEvent* e) override {
        // the toolkit's own click by a letter comes later, when the button may be dead or covered
        if (e->type() == QEvent::Shortcut) {
            act([this] { click(model_); });
            return true;
        }
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        // Enter presses the button with the focus, as Space does
        if (key == Qt::Key_Return || key == Qt::Key_Enter) push_->click();
        return key == Qt::Key_Return || key == Qt::Key_Enter || is_arrow(key);
    }

private:
    button& model_;
    lamp_button* push_;
};

class check_box_face final : public control_face {
public:
    check_box_face(check_box& model, QWidget* parent, event_gate& gate)
        : control_face(model, new QCheckBox(parent), gate), model_(model), check_(static_cast<QCheckBox*>(widget())) {
        connect(check_, &QCheckBox::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        check_->setText(marked_caption(model_.caption, 0));
        set_accessible(model_.caption);
        check_->setChecked(model_.value != 0);
    }

    bool take_event(QEvent* e) override {
        return e->type() == QEvent::KeyPress && is_arrow(static_cast<QKeyEvent*>(e)->key());
    }

private:
    check_box& model_;
    QCheckBox* check_;
};

class option_button_face final : public control_face {
public:
    option_button_face(option_button& model, QWidget* parent, event_gate& gate)
        : control_face(model, new QRadioButton(parent), gate)
        , model_(model)
        , radio_(static_cast<QRadioButton*>(widget())) {
        connect(radio_, &QRadioButton::clicked, this, [this] { act([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        radio_->setText(marked_caption(model_.caption, 0));
        set_accessible(model_.caption);
        // which one is selected is the model's business, which may have none
        radio_->setAutoExclusive(false);
        radio_->setChecked(model_.value);
        radio_->setAutoExclusive(true);
    }

    bool take_event(QEvent* e) override {
        // the arrow keys go round the group, and select as they go
        if (e->type() != QEvent::KeyPress) return false;
        const auto& pressed = *static_cast<QKeyEvent*>(e);
        if (!is_arrow(pressed.key())) return false;
        const bool on = pressed.key() == Qt::Key_Down || pressed.key() == Qt::Key_Right;
        if (!pressed.isAutoRepeat()) act([&] { click(dynamic_cast<option_button&>(neighbour(model_, on))); });
        return true;
    }

private:
    option_button& model_;
    QRadioButton* radio_;
};

} // namespace

std::unique_ptr<control_face> make_button_face(button& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<button_face>(model, parent, gate);
}

std::unique_ptr<control_face> make_check_box_face(check_box& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<check_box_face>(model, parent, gate);
}

std::unique_ptr<control_face> make_option_button_face(option_button& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<option_button_face>(model, parent, gate);
}

} // namespace desk::qt
