#pragma once

#include "platform/dialogs.h"
#include "qt/event_gate.h"

#include <QPointer>
#include <QWidget>

namespace desk::qt {

/// Qt message boxes over the desk's window.
class qt_message_box final : public message_box {
public:
    explicit qt_message_box(event_gate& gate) : gate_(gate) {}
    box_answer show(std::string_view text, box_icon icon, box_buttons buttons) override;

    QPointer<QWidget> parent;

private:
    event_gate& gate_;
};

/// The system's file dialogs if there are any, else Qt's.
class qt_file_dialog final : public file_dialog {
public:
    explicit qt_file_dialog(event_gate& gate) : gate_(gate) {}
    std::optional<file_choice> show(const file_dialog_setup& setup) override;

    QPointer<QWidget> parent;

private:
    event_gate& gate_;
};

/// The title of boxes, which have none of their own.
inline constexpr const char* program_title = "VELOTRACE";

} // namespace desk::qt
