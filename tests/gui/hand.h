#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace desk::gui {

/// The operator's hand on a real window: it points and clicks through the window system's own path, so that what is
/// hidden, disabled, covered or behind a modal window can't be reached.
class hand {
public:
    explicit hand(QWidget& w) : window_(w) {}

    /// The widget of a control by its object name ("cmd_out_2"). Throws std::runtime_error where there is none.
    QWidget& find(const QString& name) const;
    template <class Widget>
    Widget& find(const QString& name) const {
        return dynamic_cast<Widget&>(find(name));
    }

    /// A click on a button, check box, option button or label.
    void click(const QString& name) const;
    /// A click on row `row` (from 1) of a list, which is scrolled to it first.
    void click_row(const QString& list, int row) const;
    void double_click_row(const QString& list, int row) const;
    /// Presses the mouse on one row and lets it go on another.
    void drag_rows(const QString& list, int from, int to) const;
    /// One notch of the wheel, downwards.
    void turn_wheel(const QString& name) const;
    /// A click on the check box of a row.
    void click_check(const QString& list, int row) const;
    /// A click on the node of a tree that these titles lead to, from a root on; closed ones are opened on the way.
    void click_node(const QString& tree, const QStringList& titles) const;
    /// Chooses an entry of a combo box with the keyboard.
    void choose(const QString& combo, int index) const;
    void type(const QString& box, const QString& text) const;
    void press_key(const QString& name, Qt::Key key) const;

    bool is_shown(const QString& name) const { return find(name).isVisible(); }
    QString text(const QString& name) const;

    void save_picture(const QString& path) const;

    /// Does `work` once, when the desk lets events run and `condition` holds: for what happens in the middle of an
    /// exchange.
    void when(std::function<bool()> condition, std::function<void()> work) const;

private:
    void click_at(const QWidget& w, QPoint at) const;
    QPoint point_in_row(const QString& list, int row, bool on_check_box) const;

    QWidget& window_;
};

/// Lets events run until `done`, at most `ms` milliseconds; false: it did not come.
bool wait_until(const std::function<bool()>& done, int ms);

} // namespace desk::gui
