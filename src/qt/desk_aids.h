#pragma once

#include "qt/color_patch.h"
#include "qt/retry_label.h"
#include "qt/two_texts.h"
#include "qt/work_bar.h"
#include "shell/frm_main.h"

namespace desk::qt {

/// What a window shows beside its controls: how far work is, and in the main window the chosen color and where two
/// EDIDs differ.
class desk_aids {
public:
    desk_aids(QWidget& window, const frm_main& desk);

    void follow();
    /// A modal window has only a bar.
    void follow_in(QWidget& modal_window);

private:
    const exchange& exchange_;
    work_bar& bar_;
    retry_label& words_;
    color_patch& patch_;
    two_texts texts_;
};

} // namespace desk::qt
