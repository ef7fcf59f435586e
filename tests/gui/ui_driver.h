#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace desk::gui {

/// Simulates the operator on a real window: points and clicks through the window system's own path, so anything
/// hidden, disabled, covered or blocked by a modal window is out of reach.
class ui_driver {
public:
    explicit ui_driver(QWidget& w) : window_(w) {}

    /// Finds a widget by its object name ("cmd_out_2"). Throws std::runtime_error if there is none.
    QWidget& find(const QString& name) const;
    template <class Widget>
    Widget& find(const QString& name) const {
        return dynamic_cast<Widget&>(find(name));
    }

    /// Clicks a button, check box, option button or label.
    void click(const QString& name) const;
    /// Scrolls to row `row` (from 1) of a list and clicks it.
    void click_row(const QString& list, int row) const;
    void double_click_row(const QString& list, int row) const;
    /// Presses the mouse on one row and releases it on another.
    void drag_rows(const QString& list, int from, int to) const;
    void turn_wheel(const QString& name) const;
    void click_check(const QString& list, int row) const;
    /// Clicks the tree node at the end of this path of titles, and expands nodes on the way.
    void click_node(const QString& tree, const QStringList& titles) const;
    /// Chooses an entry of a combo box by keyboard.
    void choose(const QString& combo, int index) const;
    void type(const QString& box, const QString& text) const;
    void press_key(const QString& name, Qt::Key key) const;

    bool is_shown(const QString& name) const { return find(name).isVisible(); }
    QString text(const QString& name) const;

    void save_picture(const QString& path) const;

    /// Calls `work` once, as soon as events run and `condition` holds: for actions during an exchange.
    void when(std::function<bool()> condition, std::function<void()> work) const;

private:
    void click_at(const QWidget& w, QPoint at) const;
    QPoint point_in_row(const QString& list, int row, bool on_check_box) const;

    QWidget& window_;
};

/// Runs events until `done`, for at most `ms` milliseconds; false: timed out.
bool wait_until(const std::function<bool()>& done, int ms);

} // namespace desk::gui
