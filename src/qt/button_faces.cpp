#include "qt/button_faces.h"

#include "controls/operator_actions.h"
#include "controls/window.h"
#include "qt/access_keys.h"
#include "qt/look.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <vector>

namespace desk::qt {

namespace {

/// Shows a caption with the letter of its access key underlined; an ampersand of its own stands as it is.
void set_caption(QAbstractButton& widget, const control& model, const std::string& caption) {
    const auto shown = [](const std::string& part) { return QString::fromStdString(part).replace("&", "&&"); };
    const int letter = underlined_letter(model, caption);
    const auto at = static_cast<std::size_t>(std::max(0, letter));
    const QString text = shown(caption.substr(0, at)) + (letter < 0 ? "" : "&") + shown(caption.substr(at));
    if (widget.text() == text) return;
    widget.setText(text);
    // the window works it by its key
    widget.setShortcut({});
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

class button_face final : public control_face {
public:
    button_face(button& model, QWidget* parent, event_gate& gate)
        : control_face(model, new lamp_button(parent), gate)
        , model_(model)
        , push_(static_cast<lamp_button*>(widget())) {
        push_->setAutoDefault(false);
        connect(push_, &QPushButton::clicked, this, [this] { this->gate().run([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*push_, model_, model_.caption);
        set_accessible(model_.caption, words_of(model_.back_color));
        push_->light(model_.back_color);
    }

    bool take_event(QEvent* e) override {
        // Enter presses the button with the focus, as the blank does
        if (e->type() != QEvent::KeyPress) return false;
        const auto& pressed = *static_cast<QKeyEvent*>(e);
        if (pressed.key() != Qt::Key_Return && pressed.key() != Qt::Key_Enter) return false;
        if (!pressed.isAutoRepeat()) push_->click();
        return true;
    }

private:
    button& model_;
    lamp_button* push_;
};

class check_box_face final : public control_face {
public:
    check_box_face(check_box& model, QWidget* parent, event_gate& gate)
        : control_face(model, new QCheckBox(parent), gate), model_(model), check_(static_cast<QCheckBox*>(widget())) {
        connect(check_, &QCheckBox::clicked, this, [this] { this->gate().run([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*check_, model_, model_.caption);
        set_accessible(model_.caption);
        check_->setChecked(model_.value != 0);
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
        connect(radio_, &QRadioButton::clicked, this, [this] { this->gate().run([this] { click(model_); }); });
    }

protected:
    void follow_kind() override {
        set_caption(*radio_, model_, model_.caption);
        set_accessible(model_.caption);
        // which one is selected is the model's business, which may have none
        radio_->setAutoExclusive(false);
        radio_->setChecked(model_.value);
        radio_->setAutoExclusive(true);
    }

    bool take_event(QEvent* e) override {
        // the arrow keys go round the group, and select as they go
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        const bool on = key == Qt::Key_Down || key == Qt::Key_Right;
        const bool back = key == Qt::Key_Up || key == Qt::Key_Left;
        if (!on && !back) return false;
        gate().run([&] { click(neighbour(on)); });
        return true;
    }

private:
    /// The next option button of the group that can be used, or the one before.
    option_button& neighbour(bool next) const {
        std::vector<option_button*> group;
        for (control* c : model_.owner->controls()) {
            auto* const o = dynamic_cast<option_button*>(c);
            if (o != nullptr && o->parent == model_.parent && o->usable()) group.push_back(o);
        }
        if (!next) std::reverse(group.begin(), group.end());
        const auto me = std::find(group.begin(), group.end(), &model_);
        return me == group.end() || me + 1 == group.end() ? *group.front() : **(me + 1);
    }

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
