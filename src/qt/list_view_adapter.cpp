#include "qt/list_view_adapter.h"

#include "controls/operator_actions.h"
#include "qt/appearance.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <functional>
#include <optional>
#include <utility>

namespace desk::qt {

namespace {

/// Hides the check boxes while the list does not show them; the rows keep their state.
class check_box_delegate final : public QStyledItemDelegate {
public:
    check_box_delegate(const list_view& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!model_.check_boxes) option->features &= ~QStyleOptionViewItem::HasCheckIndicator;
    }

    bool editorEvent(QEvent* e, QAbstractItemModel* items, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override {
        return model_.check_boxes && QStyledItemDelegate::editorEvent(e, items, option, index);
    }

private:
    const list_view& model_;
};

/// A list with one marked row, whichever modifiers are held. Only the left button works.
class marked_rows final : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;
    std::function<void()> on_press; ///< before the mark moves
    std::function<void()> on_release;

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* /*e*/) const override {
        if (!index.isValid()) return QItemSelectionModel::NoUpdate;
        return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
    }

    void mousePressEvent(QMouseEvent* e) override {
        if (e->button() != Qt::LeftButton) return;
        pressed_ = true;
        if (on_press) on_press();
        QTreeWidget::mousePressEvent(e);
    }
    void mouseMoveEvent(QMouseEvent* e) override {
        if (pressed_ || e->buttons() == Qt::NoButton) QTreeWidget::mouseMoveEvent(e);
    }
    void mouseReleaseEvent(QMouseEvent* e) override {
        if (e->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return;
        QTreeWidget::mouseReleaseEvent(e);
        // a synthesized release, from a window that opens, is no click
        if (on_release && e->source() != Qt::MouseEventSynthesizedByApplication) on_release();
    }
    void mouseDoubleClickEvent(QMouseEvent* e) override {
        if (e->button() != Qt::LeftButton) return;
        pressed_ = true;
        QTreeWidget::mouseDoubleClickEvent(e);
    }

private:
    bool pressed_ = false;
};

/// Keeps the first visible row in place while the scale changes.
class rows_at_scale {
public:
    explicit rows_at_scale(QTreeWidget& tree) : tree_(tree) {}

    /// Sets the font here: with the plan's font, rows would scroll away before their position is saved.
    void set_scale(double scale) {
        first_ = tree_.verticalScrollBar()->value();
        // the small font shows the longest names in full
        tree_.setFont(font_of(text_font::small, scale));
    }
    /// Call once the rows have their new size.
    void lay_out() {
        if (!first_) return;
        tree_.doItemsLayout();
        tree_.verticalScrollBar()->setValue(*first_);
        first_.reset();
    }

private:
    QTreeWidget& tree_;
    std::optional<int> first_;
};

class list_view_adapter final : public control_adapter {
public:
    list_view_adapter(list_view& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new marked_rows(parent), gate)
        , model_(model)
        , tree_(static_cast<marked_rows*>(widget())) {
        tree_->setRootIsDecorated(false);
        tree_->setUniformRowHeights(true);
        tree_->setAllColumnsShowFocus(true);
        tree_->setItemDelegate(new check_box_delegate(model, tree_));
        QStringList titles;
        for (const list_column& column : model.columns)
            titles << QString::fromStdString(column.title);
        tree_->setColumnCount(static_cast<int>(titles.size()));
        tree_->setHeaderLabels(titles);
        for (const list_column& column : model.columns)
            widths_.push_back(column.width);
        tree_->header()->setSectionsMovable(false);
        tree_->header()->setStretchLastSection(true);
        set_accessible();

        connect(tree_->header(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
            if (!following()) widths_.at(static_cast<std::size_t>(column)) = width * twips_per_pixel / scale();
        });
        connect(tree_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
            if (!following() && item != nullptr) act([&] { model_.select(row_of(item)); });
        });
        tree_->on_release = [this] {
            // the row that looks marked to the operator
            if (QTreeWidgetItem* const marked = tree_->currentItem(); marked != nullptr && model_.selected() != 0)
                act([this, marked] { choose_row(model_, row_of(marked)); });
        };
        connect(tree_, &QTreeWidget::itemDoubleClicked, this, [this] { act([this] { double_click(model_); }); });
        connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
            if (following()) return;
            act([&] { set_check(model_, row_of(item), item->checkState(0) == Qt::Checked); });
        });
    }

protected:
    void follow_scale() override {
        for (std::size_t i = 0; i < widths_.size(); ++i) {
            // the last column takes the rest; it would not shrink by itself
            const double width = i + 1 < widths_.size() ? widths_[i] : 0;
            tree_->setColumnWidth(static_cast<int>(i), qRound(width * scale() / twips_per_pixel));
        }
        rows_.set_scale(scale());
    }

    void follow_kind() override {
        rows_.lay_out();
        // an invisible list is filled when it appears
        if (!model_.visible) return;
        const QSignalBlocker quiet(tree_);
        while (tree_->topLevelItemCount() > model_.row_count())
            delete tree_->takeTopLevelItem(model_.row_count());
        for (int i = 1; i <= model_.row_count(); ++i)
            follow_row(i);
        QTreeWidgetItem* const current = model_.selected() == 0 ? nullptr : tree_->topLevelItem(model_.selected() - 1);
        if (tree_->currentItem() != current) tree_->setCurrentItem(current);
        if (selections_ != model_.selections()) {
            selections_ = model_.selections();
            if (current != nullptr) tree_->scrollToItem(current);
        }
        if (checks_shown_ != model_.check_boxes) {
            checks_shown_ = model_.check_boxes;
            tree_->viewport()->update();
            tree_->doItemsLayout();
        }
    }

    bool handle_event(QEvent* e) override {
        switch (e->type()) {
        case QEvent::FocusIn:
            was_pressed_here_ = false;
            break;
        case QEvent::KeyPress:
            was_pressed_here_ = true;
            break;
        case QEvent::KeyRelease:
            // a key pressed on a button that then moved the focus here is not meant for the list
            if (was_pressed_here_ && !static_cast<QKeyEvent*>(e)->isAutoRepeat()) act([this] { key_up(model_); });
            break;
        default:
            break;
        }
        return false;
    }

private:
    int row_of(QTreeWidgetItem* item) const { return tree_->indexOfTopLevelItem(item) + 1; }

    void follow_row(int number) {
        const list_row& row = model_.row(number);
        QTreeWidgetItem* item = tree_->topLevelItem(number - 1);
        if (item == nullptr) {
            item = new QTreeWidgetItem(tree_);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        }
        const auto set_text = [item](int column, const std::string& text) {
            const QString shown = QString::fromStdString(text);
            if (item->text(column) != shown) item->setText(column, shown);
        };
        set_text(0, row.text);
        for (std::size_t i = 0; i < row.sub.size(); ++i)
            set_text(static_cast<int>(i) + 1, row.sub[i]);
        const Qt::CheckState check = row.checked ? Qt::Checked : Qt::Unchecked;
        if (item->data(0, Qt::CheckStateRole).isNull() || item->checkState(0) != check) item->setCheckState(0, check);
    }

    list_view& model_;
    marked_rows* tree_;
    rows_at_scale rows_{*tree_};
    std::vector<double> widths_; // column widths in twips; the operator can change them
    bool checks_shown_ = false;
    bool was_pressed_here_ = false; // a key, since the list got the focus
    int selections_ = 0;            // the model's count when the row was scrolled into view
};

class tree_view_adapter final : public control_adapter {
public:
    tree_view_adapter(tree_view& model, QWidget* parent, event_gate& gate)
        : control_adapter(model, new marked_rows(parent), gate)
        , model_(model)
        , tree_(static_cast<marked_rows*>(widget())) {
        tree_->setHeaderHidden(true);
        tree_->setUniformRowHeights(true);
        set_accessible();
        // any change of the mark counts as a click
        connect(tree_, &QTreeWidget::itemSelectionChanged, this, [this] {
            if (!following() && !tree_->selectedItems().isEmpty()) click_on(tree_->selectedItems().constFirst());
        });
        tree_->on_press = [this] { before_press_ = tree_->currentItem(); };
        connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
            if (item == before_press_) click_on(item);
        });
        connect(tree_, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { expand(item, true); });
        connect(tree_, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) { expand(item, false); });
    }

protected:
    void follow_scale() override {
        // the longest titles fit at the deepest level, even in bold
        tree_->setIndentation(static_cast<int>(14 * scale()));
        rows_.set_scale(scale());
    }

    void follow_kind() override {
        rows_.lay_out();
        const QSignalBlocker quiet(tree_);
        if (!shows_these_nodes()) build();
        for (int n = 1; n <= model_.node_count(); ++n) {
            QTreeWidgetItem* const item = items_.at(static_cast<std::size_t>(n - 1));
            // the size comes from the tree
            QFont font;
            font.setBold(model_.node(n).bold);
            if (item->font(0).bold() != font.bold()) item->setFont(0, font);
            if (item->isExpanded() != model_.node(n).expanded) item->setExpanded(model_.node(n).expanded);
            // the node whose text is shown
            if (model_.node(n).bold && tree_->currentItem() != item) tree_->setCurrentItem(item);
        }
    }

private:
    int node_of(QTreeWidgetItem* item) const { return item->data(0, Qt::UserRole).toInt(); }

    void click_on(QTreeWidgetItem* item) {
        act([&] { click_node(model_, node_of(item)); });
    }

    void expand(QTreeWidgetItem* item, bool expanded) {
        act([&] { model_.set_expanded(node_of(item), expanded); });
        // a mark that would be hidden moves to the branch
        for (const QTreeWidgetItem* in = tree_->currentItem(); !expanded && in != nullptr; in = in->parent())
            if (in->parent() == item) tree_->setCurrentItem(item);
    }

    // nodes are only added, or all removed at once
    bool shows_these_nodes() const {
        return clearings_ == model_.clearings() && items_.size() == model_.nodes().size();
    }

    void build() {
        tree_->clear();
        items_.clear();
        before_press_ = nullptr;
        clearings_ = model_.clearings();
        for (const tree_node& n : model_.nodes()) {
            const int number = static_cast<int>(items_.size()) + 1;
            QTreeWidgetItem* const item = n.parent == 0
                                              ? new QTreeWidgetItem(tree_)
                                              : new QTreeWidgetItem(items_.at(static_cast<std::size_t>(n.parent - 1)));
            item->setText(0, QString::fromStdString(n.title));
            item->setData(0, Qt::UserRole, number);
            items_.push_back(item);
        }
    }

    tree_view& model_;
    marked_rows* tree_;
    rows_at_scale rows_{*tree_};
    std::vector<QTreeWidgetItem*> items_;
    int clearings_ = 0;                             // the model's count when the items were created
    const QTreeWidgetItem* before_press_ = nullptr; // the marked item
};

} // namespace

std::unique_ptr<control_adapter> make_list_view_adapter(list_view& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<list_view_adapter>(model, parent, gate);
}

std::unique_ptr<control_adapter> make_tree_view_adapter(tree_view& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<tree_view_adapter>(model, parent, gate);
}

} // namespace desk::qt
