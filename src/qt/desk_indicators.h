#pragma once

#include "qt/color_patch.h"
#include "qt/retry_label.h"
#include "qt/two_texts.h"
#include "qt/work_bar.h"
#include "shell/frm_main.h"

namespace desk::qt {

/// Displays that are not controls: the progress bar, and in the main window the chosen color and the differences
/// between two EDIDs.
class desk_indicators {
public:
    desk_indicators(QWidget& window, const frm_main& desk);

    void follow();
    /// Adds a progress bar only.
    void follow_in(QWidget& modal_window);

private:
    const exchange& exchange_;
    work_bar& bar_;
    retry_label& retry_label_;
    color_patch& patch_;
    two_texts texts_;
};

} // namespace desk::qt
