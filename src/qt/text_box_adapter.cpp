#include "qt/text_box_adapter.h"

#include "controls/operator_actions.h"
#include "qt/appearance.h"
#include "qt/metrics.h"
#include "qt/text_page.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPointF>
#include <QScrollBar>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QWheelEvent>

#include <optional>
#include <type_traits>

namespace desk::qt {

namespace {

/// The character code for KeyPress; none for a key without a character.
std::optional<int> character_code(const QKeyEvent& e) {
    if (e.key() == Qt::Key_Return || e.key() == Qt::Key_Enter) return 13;
    return e.text().isEmpty() ? std::nullopt : std::optional(static_cast<int>(e.text().at(0).unicode()));
}

class line_box_adapter final : public control_adapter {
public:
    line_box_adapter(text_box& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new QLineEdit(parent), gate), model_(model), edit_(static_cast<QLineEdit*>(widget())) {
        edit_->setDragEnabled(false);
        edit_->setAcceptDrops(false);
        if (model.max_length > 0) edit_->setMaxLength(model.max_length);
        set_accessible();
        connect(edit_, &QLineEdit::textEdited, this,
                [this](const QString& text) { act([&] { model_.text = text.toStdString(); }); });
    }

protected:
    void follow_scale() override { edit_->setFont(font_of(model_.font, scale())); }

    void follow_kind() override {
        const QString text = shown_text(model_.text.get());
        if (edit_->text() != text) edit_->setText(text);
        if (edit_->isReadOnly() != model_.locked) edit_->setReadOnly(model_.locked);
        if (selections_ == model_.selections()) return;
        selections_ = model_.selections();
        edit_->setSelection(model_.sel_start(), model_.sel_length());
    }

    bool handle_event(QEvent* e) override {
        switch (e->type()) {
        case QEvent::FocusIn:
            focused_by_mouse_ = static_cast<QFocusEvent*>(e)->reason() == Qt::MouseFocusReason;
            break;
        case QEvent::MouseButtonRelease:
            // the click that set the focus has placed the cursor and cleared the selection made by GotFocus
            if (focused_by_mouse_ && !edit_->hasSelectedText() && model_.sel_length() > 0)
                edit_->setSelection(model_.sel_start(), model_.sel_length());
            focused_by_mouse_ = false;
            break;
        case QEvent::KeyPress:
            if (const auto code = character_code(*static_cast<QKeyEvent*>(e))) {
                act([&] { press_key(model_, *code); });
                // the box has handled it: the window does not see it
                return *code == 13;
            }
            break;
        default:
            break;
        }
        return false;
    }

private:
    text_box& model_;
    QLineEdit* edit_;
    int selections_ = 0;
    bool focused_by_mouse_ = false;
};

/// A text with fixed letter size: by default Ctrl and the wheel would zoom it.
template <class Edit>
class page_box final : public Edit {
public:
    using Edit::Edit;

protected:
    void wheelEvent(QWheelEvent* e) override {
        if ((e->modifiers() & Qt::ControlModifier) != 0)
            e->accept();
        else
            Edit::wheelEvent(e);
    }
};

/// A multi-line box. The plain kind takes a text of any length quickly; the grid kind keeps its lines at cell height,
/// which the plain one can't.
template <class Edit>
class page_box_adapter final : public control_adapter {
public:
    page_box_adapter(text_box& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new page_box<Edit>(parent), gate), model_(model), edit_(static_cast<Edit*>(widget())) {
        edit_->setUndoRedoEnabled(false);
        edit_->setAcceptDrops(false);
        edit_->setTabChangesFocus(true);
        if (model.font == text_font::fixed) edit_->setLineWrapMode(Edit::NoWrap);
        if constexpr (std::is_same_v<Edit, QTextEdit>) {
            edit_->setAcceptRichText(false);
            edit_->document()->setDocumentMargin(0);
        }
        set_accessible();
        connect(edit_, &Edit::textChanged, this, [this] {
            if (following()) return;
            shown_ = edit_->toPlainText();
            act([this] { model_.text = QString(shown_).replace("\n", "\r\n").toStdString(); });
        });
    }

protected:
    void follow_scale() override {
        in_sight_ = QPointF(edit_->horizontalScrollBar()->value() / drawn_at_,
                            edit_->verticalScrollBar()->value() / line_height());
        drawn_at_ = scale();
        edit_->setFont(font_of(model_.font, scale()));
        if constexpr (std::is_same_v<Edit, QTextEdit>) {
            lines_.setLineHeight(cell_height * scale(), QTextBlockFormat::FixedHeight);
            lines_.setLeftMargin(metric::page_inset * scale());
            QTextCursor all(edit_->document());
            all.select(QTextCursor::Document);
            all.mergeBlockFormat(lines_);
        }
    }

    void follow_kind() override {
        keep_in_sight();
        if (edit_->isReadOnly() != model_.locked) edit_->setReadOnly(model_.locked);
        const QString text = shown_text(model_.text.get());
        if (shown_ == text) return;
        QTextCursor cursor(edit_->document());
        // most texts grow at the end
        if (!shown_.isEmpty() && text.startsWith(shown_)) {
            cursor.movePosition(QTextCursor::End);
            cursor.insertText(text.mid(shown_.size()));
        } else {
            cursor.select(QTextCursor::Document);
            cursor.setBlockFormat(lines_);
            cursor.insertText(text);
            // a different text starts at the top
            edit_->verticalScrollBar()->setValue(0);
        }
        shown_ = text;
    }

private:
    /// In units of the scroll bar: a plain box counts lines.
    double line_height() const { return lines_.hasProperty(QTextFormat::LineHeight) ? lines_.lineHeight() : 1; }

    /// Call after a change of scale.
    void keep_in_sight() {
        if (!in_sight_) return;
        edit_->horizontalScrollBar()->setValue(qRound(in_sight_->x() * scale()));
        edit_->verticalScrollBar()->setValue(qRound(in_sight_->y() * line_height()));
        in_sight_.reset();
    }

    text_box& model_;
    Edit* edit_;
    double drawn_at_ = 1;
    std::optional<QPointF> in_sight_; // first visible column and line, while the scale changes
    QTextBlockFormat lines_;
    QString shown_; // our own copy: the document ends differently
};

/// A read-only multi-line box for a text of any length.
class text_page_adapter final : public control_adapter {
public:
    text_page_adapter(text_box& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new text_page(model, parent), gate), page_(static_cast<text_page*>(widget())) {
        set_accessible();
    }

protected:
    void follow_scale() override { page_->set_scale(scale()); }
    void follow_kind() override { page_->catch_up(); }

private:
    text_page* page_;
};

} // namespace

std::unique_ptr<control_adapter> make_text_box_adapter(text_box& model, QWidget* parent, event_gate& gate) {
    if (model.any_length) return std::make_unique<text_page_adapter>(model, parent, gate);
    if (model.on_grid) return std::make_unique<page_box_adapter<QTextEdit>>(model, parent, gate);
    if (model.multi_line) return std::make_unique<page_box_adapter<QPlainTextEdit>>(model, parent, gate);
    return std::make_unique<line_box_adapter>(model, parent, gate);
}

} // namespace desk::qt
