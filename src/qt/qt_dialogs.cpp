#include "qt/qt_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QMessageBox>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QStringList>
#include <QTreeView>

namespace desk::qt {

namespace {

QString text_of(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QMessageBox::Icon icon_of(box_icon icon) {
    switch (icon) {
    case box_icon::none:
        return QMessageBox::NoIcon;
    case box_icon::critical:
        return QMessageBox::Critical;
    case box_icon::question:
        return QMessageBox::Question;
    case box_icon::exclamation:
        return QMessageBox::Warning;
    case box_icon::information:
        return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttons_of(box_buttons buttons) {
    switch (buttons) {
    case box_buttons::ok:
        return QMessageBox::Ok;
    case box_buttons::yes_no:
        return QMessageBox::Yes | QMessageBox::No;
    case box_buttons::yes_no_cancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

/// The desk asks before something is lost, so Enter and Escape are the harmless answers.
void set_safe_defaults(QMessageBox& box, box_buttons buttons) {
    if (buttons == box_buttons::ok) return;
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(buttons == box_buttons::yes_no ? QMessageBox::No : QMessageBox::Cancel);
}

/// Converts "hex files|*.hex;*.bin|all|*.*" to Qt's filters, in the same order.
QStringList name_filters(const std::string& filter) {
    const QStringList parts = text_of(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        // "*.*" also matches names without a dot
        const QString patterns = QString(parts[i + 1]).replace("*.*", "*").replace(';', ' ');
        filters << (parts[i] == patterns ? patterns : parts[i] + " (" + patterns + ")");
    }
    return filters;
}

/// The extension of a filter with one pattern: ".hex" for "*.hex"; else empty.
QString ending_of(const QString& filter) {
    static const QRegularExpression pattern(R"(\*(\.\w+)\)?$)");
    return pattern.match(filter).captured(1);
}

/// "v1.3" with ".hex" gives "v1.3.hex": the part after the last dot may belong to the name.
QString with_ending(const QString& path, const QString& ending) {
    return path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending;
}

/// The parent for a box or dialog.
QWidget* window_on_top(QWidget* main_window) {
    QWidget* const modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : main_window;
}

/// For Qt's own dialog only; native dialogs need no help.
void show_whole_columns(QFileDialog& dialog) {
    auto* const files = dialog.findChild<QTreeView*>("treeView");
    if (files == nullptr) return;
    dialog.setViewMode(QFileDialog::Detail);
    files->header()->setStretchLastSection(false);
    for (int column = 0; column < files->header()->count(); ++column)
        files->header()->setSectionResizeMode(column,
                                              column == 0 ? QHeaderView::Stretch : QHeaderView::ResizeToContents);
    dialog.resize(760, 480);
}

} // namespace

box_answer qt_message_box::show(std::string_view text, box_icon icon, box_buttons buttons) {
    gate_.throw_if_over();
    if (gate_.follow) gate_.follow();
    const busy_cursor::normal normal_cursor(gate_.cursor);
    QMessageBox box(icon_of(icon), program_title, text_of(text), buttons_of(buttons), window_on_top(parent));
    box.setTextFormat(Qt::PlainText);
    set_safe_defaults(box, buttons);
    const int pressed = box.exec();
    gate_.throw_if_over();
    switch (pressed) {
    case QMessageBox::Ok:
        return box_answer::ok;
    case QMessageBox::Yes:
        return box_answer::yes;
    case QMessageBox::No:
        return box_answer::no;
    default:
        return box_answer::cancel;
    }
}

std::optional<file_choice> qt_file_dialog::show(const file_dialog_setup& setup) {
    gate_.throw_if_over();
    if (gate_.follow) gate_.follow();
    const busy_cursor::normal normal_cursor(gate_.cursor);
    const bool saves = setup.kind == file_dialog_setup::dialog_kind::save;
    // keep Qt from saving the dialog's folders and size
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QProcess::nullDevice());
    QFileDialog dialog(window_on_top(parent), text_of(setup.title));
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // the desk itself reports missing files, and asks before it overwrites one
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList filters = name_filters(setup.filter);
    dialog.setNameFilters(filters);
    if (setup.filter_index >= 1 && setup.filter_index <= filters.size())
        dialog.selectNameFilter(filters[setup.filter_index - 1]);
    if (!setup.init_dir.empty()) dialog.setDirectory(text_of(setup.init_dir));
    if (!setup.file_name.empty()) dialog.selectFile(text_of(setup.file_name));
    show_whole_columns(dialog);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    gate_.throw_if_over();
    if (!accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    QString path = QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
    if (saves) path = with_ending(path, ending_of(dialog.selectedNameFilter()));
    const auto index = filters.indexOf(dialog.selectedNameFilter());
    return file_choice{path.toStdString(), index < 0 ? setup.filter_index : static_cast<int>(index) + 1};
}

} // namespace desk::qt
