#pragma once

#include "platform/dialogs.h"
#include "robot/answers.h"

#include <deque>
#include <optional>
#include <string>

namespace desk::robot {

/// Answers message boxes from a queue: each box takes the first queued answer that it has a button for; without one,
/// the first of ok, no and cancel that it has.
class queued_message_box final : public message_box {
public:
    box_answer show(std::string_view text, box_icon icon, box_buttons buttons) override;

    void queue(box_answer answer) { answers_.push_back(answer); }
    /// The boxes shown since the last call.
    json take_shown();

private:
    std::deque<box_answer> answers_;
    json shown_ = json::array();
};

/// Answers file dialogs from a queue; if it is empty, the dialog is cancelled.
class queued_file_dialog final : public file_dialog {
public:
    std::optional<file_choice> show(const file_dialog_setup& setup) override;

    /// Queues the result of a dialog. No file name: Cancel. No filter index: that of the setup.
    void queue(std::optional<std::string> file_name, std::optional<int> filter_index);
    /// The dialogs shown since the last call.
    json take_shown();

private:
    struct queued {
        std::optional<std::string> file_name;
        std::optional<int> filter_index;
    };
    std::deque<queued> results_;
    json shown_ = json::array();
};

} // namespace desk::robot
