#pragma once

#include "runtime/failure.h"

#include <QMessageBox>

#include <string>

namespace desk::qt {

/// The box of a fatal failure: what happened, where the work is saved, and how to go on. Its text can be selected;
/// Ctrl+C copies the selection, or all of it if there is none.
class failure_box final : public QMessageBox {
public:
    /// `rescued` says where the EDIDs of the windows are saved, one line each; empty if they held none.
    failure_box(const runtime_failure& failure, const std::string& rescued, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* e) override;
};

} // namespace desk::qt
