#include "qt/list_view_face.h"

#include "controls/operator_actions.h"
#include "qt/look.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>

#include <functional>
#include <optional>

namespace desk::qt {

namespace {

/// Hides the check boxes while the list does not show them; their state stays with the rows.
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

/// Tells of every mouse button that is let go over its rows, since any of them can have moved the selection.
class row_list final : public QTreeWidget {
public:
    using QTreeWidget::QTreeWidget;
    std::function<void()> on_release;

protected:
    void mouseReleaseEvent(QMouseEvent* e) override {
        QTreeWidget::mouseReleaseEvent(e);
        if (on_release) on_release();
    }
};

/// The rows of a list or a tree while the scale changes: the first one in sight stays there.
class rows_at_scale {
public:
    explicit rows_at_scale(QTreeWidget& tree) : tree_(tree) {}

    /// The font is set here: with the plan's, rows would be lost from sight before anything is kept.
    void set_scale(double scale) {
        first_ = tree_.verticalScrollBar()->value();
        // in the smaller one the longest names are whole
        tree_.setFont(font_of(text_font::small, scale));
    }
    /// Once the rows have their new size.
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

class list_view_face final : public control_face {
public:
    list_view_face(list_view& model, QWidget* parent, event_gate& gate)
        : control_face(model, new row_list(parent), gate), model_(model), tree_(static_cast<row_list*>(widget())) {
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
            if (!following() && item != nullptr) this->gate().run([&] { model_.select(row_of(item)); });
        });
        tree_->on_release = [this] {
            if (model_.selected() != 0) this->gate().run([this] { choose_row(model_, model_.selected()); });
        };
        connect(tree_, &QTreeWidget::itemDoubleClicked, this,
                [this] { this->gate().run([this] { double_click(model_); }); });
        connect(tree_, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
            if (following()) return;
            this->gate().run([&] { set_check(model_, row_of(item), item->checkState(0) == Qt::Checked); });
        });
    }

protected:
    void follow_scale() override {
        for (std::size_t i = 0; i < widths_.size(); ++i) {
            // the last one takes what is left; it would not get narrower by itself
            const double width = i + 1 < widths_.size() ? widths_[i] : 0;
            tree_->setColumnWidth(static_cast<int>(i), qRound(width * scale() / twips_per_pixel));
        }
        rows_.set_scale(scale());
    }

    void follow_kind() override {
        rows_.lay_out();
        // a list that nobody sees is filled when it comes on show
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

    bool take_event(QEvent* e) override {
        if (e->type() == QEvent::KeyRelease && !static_cast<QKeyEvent*>(e)->isAutoRepeat())
            gate().run([this] { key_up(model_); });
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
    row_list* tree_;
    rows_at_scale rows_{*tree_};
    std::vector<double> widths_; // of the columns, in twips; the operator changes them
    bool checks_shown_ = false;
    int selections_ = 0; // as the model counted them when the row was scrolled to
};

class tree_view_face final : public control_face {
public:
    tree_view_face(tree_view& model, QWidget* parent, event_gate& gate)
        : control_face(model, new QTreeWidget(parent), gate)
        , model_(model)
        , tree_(static_cast<QTreeWidget*>(widget())) {
        tree_->setHeaderHidden(true);
        tree_->setUniformRowHeights(true);
        set_accessible();
        connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { click_on(item); });
        connect(tree_, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { expand(item, true); });
        connect(tree_, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) { expand(item, false); });
    }

protected:
    void follow_scale() override {
        // the longest titles have room where they lie deepest, in bold too
        tree_->setIndentation(static_cast<int>(14 * scale()));
        rows_.set_scale(scale());
    }

    void follow_kind() override {
        rows_.lay_out();
        const QSignalBlocker quiet(tree_);
        if (!shows_these_nodes()) build();
        for (int n = 1; n <= model_.node_count(); ++n) {
            QTreeWidgetItem* const item = items_.at(static_cast<std::size_t>(n - 1));
            // its size is the tree's
            QFont font;
            font.setBold(model_.node(n).bold);
            if (item->font(0).bold() != font.bold()) item->setFont(0, font);
            if (item->isExpanded() != model_.node(n).expanded) item->setExpanded(model_.node(n).expanded);
        }
    }

    bool take_event(QEvent* e) override {
        // moving along the nodes with the keyboard is a click on each
        QTreeWidgetItem* const current = tree_->currentItem();
        if (e->type() == QEvent::KeyRelease && current != nullptr && node_of(current) != clicked_) click_on(current);
        return false;
    }

private:
    int node_of(QTreeWidgetItem* item) const { return item->data(0, Qt::UserRole).toInt(); }

    void click_on(QTreeWidgetItem* item) {
        clicked_ = node_of(item);
        gate().run([&] { click_node(model_, node_of(item)); });
    }

    void expand(QTreeWidgetItem* item, bool expanded) {
        gate().run([&] { model_.set_expanded(node_of(item), expanded); });
    }

    // nodes are only added, and all taken away at once
    bool shows_these_nodes() const {
        return clearings_ == model_.clearings() && items_.size() == model_.nodes().size();
    }

    void build() {
        tree_->clear();
        items_.clear();
        clicked_ = 0;
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
    QTreeWidget* tree_;
    rows_at_scale rows_{*tree_};
    std::vector<QTreeWidgetItem*> items_;
    int clearings_ = 0; // as the model counted them when the items were made
    int clicked_ = 0;   // the node clicked last
};

} // namespace

std::unique_ptr<control_face> make_list_view_face(list_view& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<list_view_face>(model, parent, gate);
}

std::unique_ptr<control_face> make_tree_view_face(tree_view& model, QWidget* parent, event_gate& gate) {
    return std::make_unique<tree_view_face>(model, parent, gate);
}

} // namespace desk::qt
