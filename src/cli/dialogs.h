#pragma once

#include "platform/dialogs.h"
#include "platform/modal_windows.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace desk::cli {

/// Message boxes become messages. A question is answered with yes: the command line has answered it.
class answered_boxes final : public message_box {
public:
    std::function<void(const std::string& text)> report;
    std::vector<std::string> shown; ///< except for questions

    box_answer show(std::string_view text, box_icon /*icon*/, box_buttons buttons) override {
        if (buttons != box_buttons::ok) return box_answer::yes;
        shown.emplace_back(text);
        if (report) report(shown.back());
        return box_answer::ok;
    }
};

/// The file dialog chooses the file that the command line names.
class named_file final : public file_dialog {
public:
    std::optional<file_choice> choice;

    std::optional<file_choice> show(const file_dialog_setup& /*setup*/) override { return choice; }
};

/// A modal window is worked by the command that opened it, and then closed.
class worked_windows final : public modal_windows {
public:
    std::function<void(window&)> work;

    void show(window& w) override {
        w.visible = true;
        if (work) work(w);
        w.visible = false;
    }
};

} // namespace desk::cli
