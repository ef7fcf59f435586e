#include "dialog_driver.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace desk::gui {

namespace {

/// Waits up to `ms` milliseconds for a modal window of this kind and calls `work` with it.
template <class Window>
void when_it_waits_in(std::function<bool(Window&)> work, int ms) {
    QTimer::singleShot(10, qApp, [work = std::move(work), ms] {
        auto* const window = qobject_cast<Window*>(QApplication::activeModalWidget());
        const bool found = window != nullptr && work(*window);
        if (!found && ms > 0) when_it_waits_in<Window>(work, ms - 10);
    });
}

} // namespace

void answer_next_box(std::vector<seen_box>& seen, int button, int ms) {
    const auto answer = [&seen, button](QMessageBox& box) {
        seen.push_back({box.text(), box.windowTitle()});
        QTest::mouseClick(box.button(static_cast<QMessageBox::StandardButton>(button)), Qt::LeftButton);
        return true;
    };
    when_it_waits_in<QMessageBox>(answer, ms);
}

void answer_next_file_dialog(std::vector<seen_dialog>& seen, const QString& path, int filter, int ms) {
    const auto answer = [&seen, path, filter](QFileDialog& dialog) {
        auto& name = *dialog.findChild<QLineEdit*>("fileNameEdit");
        seen.push_back({dialog.windowTitle(), dialog.directory().absolutePath(), name.text(), dialog.nameFilters(),
                        dialog.parentWidget()->objectName()});
        if (path.isEmpty()) {
            dialog.reject();
            return true;
        }
        dialog.selectNameFilter(dialog.nameFilters().at(filter - 1));
        name.setText(path);
        QTest::keyClick(&name, Qt::Key_Enter);
        return true;
    };
    when_it_waits_in<QFileDialog>(answer, ms);
}

void in_next_window(const QString& name, std::function<void(const ui_driver&)> work, int ms) {
    const auto go_on = [name, work = std::move(work)](QWidget& window) {
        if (window.objectName() != name) return false;
        work(ui_driver(window));
        return true;
    };
    when_it_waits_in<QWidget>(go_on, ms);
}

} // namespace desk::gui
