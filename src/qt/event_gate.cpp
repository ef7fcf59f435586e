#include "qt/event_gate.h"

#include "platform/event_pump.h"
#include "runtime/failure.h"

#include <QApplication>
#include <QDialog>

namespace desk::qt {

namespace {

void close_dialogs() {
    while (QWidget* const popup = QApplication::activePopupWidget())
        if (!popup->close()) break;
    for (QWidget* w : QApplication::topLevelWidgets()) {
        auto* const dialog = qobject_cast<QDialog*>(w);
        if (dialog != nullptr && dialog->isVisible()) dialog->reject();
    }
}

} // namespace

void event_gate::run(const std::function<void()>& event) noexcept {
    if (over_) return;
    ++depth_;
    cursor.event_begins();
    guarded([&] {
        event();
        if (!over_ && follow) follow();
    });
    cursor.event_ends();
    --depth_;
    if (!over_) return;
    end_waits();
    if (depth_ == 0 && !left_) {
        left_ = true;
        if (leave) guarded(leave);
    }
}

void event_gate::end_waits() {
    close_dialogs();
    if (end_loops) end_loops();
    // also ends the loops of drags; after a failure not yet, as the failure box needs a loop
    if (!failure_) QCoreApplication::exit();
}

void event_gate::end_if_requested() {
    // asking can deliver the request
    const bool requested = end_requested && end_requested();
    if (requested && !over_ && end_in_order) end_in_order();
    throw_if_over();
}

void event_gate::guarded(const std::function<void()>& work) {
    try {
        work();
    } catch (const runtime_failure& f) {
        if (!failure_) failure_ = std::make_shared<runtime_failure>(f);
        over_ = true;
    } catch (const program_over&) {
        over_ = true;
    } catch (const std::exception& e) {
        // an internal error: reported like any other failure
        if (!failure_) failure_ = std::make_shared<runtime_failure>(desk::failure::invalid_procedure_call, e.what());
        over_ = true;
    }
}

void event_gate::throw_if_over() const {
    if (over_) throw program_over();
}

} // namespace desk::qt
