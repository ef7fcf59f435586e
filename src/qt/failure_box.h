#pragma once

#include "runtime/failure.h"

#include <QMessageBox>

#include <string>

namespace desk::qt {

/// The box of a failure that ends the program: what has happened, where the work is, and how to go on. Its text can be
/// selected and copied; Ctrl+C copies all of it where nothing is selected.
class failure_box final : public QMessageBox {
public:
    /// `rescued` says where the EDIDs of the windows are, in one line each; empty where they held none.
    failure_box(const runtime_failure& failure, const std::string& rescued, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* e) override;
};

} // namespace desk::qt
