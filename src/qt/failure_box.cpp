#include "qt/failure_box.h"

#include "qt/qt_dialogs.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

namespace desk::qt {

namespace {

QString text_of(const runtime_failure& failure, const std::string& rescued) {
    QStringList parts;
    parts << QString("Run-time error '%1':").arg(failure.number())
          << QString::fromStdString(std::string(failure.text())) << QString::fromStdString(failure.sentence())
          << "The program ends now.";
    if (!rescued.empty()) parts << QString::fromStdString(rescued);
    if (rescued.find(" in the file ") != std::string::npos) {
        parts << "To continue, start the program again and OPEN the file. If the same error occurs again, the program "
                 "edid_report prints what can be decoded.";
    }
    return parts.join("\n\n");
}

} // namespace

failure_box::failure_box(const runtime_failure& failure, const std::string& rescued, QWidget* parent)
    : QMessageBox(Critical, program_title, text_of(failure, rescued), Ok, parent) {
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // else the text would have it
    setDefaultButton(Ok);
    button(Ok)->setFocus();
}

void failure_box::keyPressEvent(QKeyEvent* e) {
    if (!e->matches(QKeySequence::Copy)) return QMessageBox::keyPressEvent(e);
    const auto* const said = findChild<QLabel*>("qt_msgbox_label");
    const bool selected = said != nullptr && said->hasSelectedText();
    QString copied = selected ? said->selectedText() : text();
    QApplication::clipboard()->setText(copied.replace(QChar::ParagraphSeparator, '\n'));
}

} // namespace desk::qt
