#include "robot/queued_dialogs.h"

#include <algorithm>
#include <vector>

namespace desk::robot {

namespace {

std::string icon_name(box_icon icon) {
    switch (icon) {
    case box_icon::none:
        return "none";
    case box_icon::critical:
        return "critical";
    case box_icon::question:
        return "question";
    case box_icon::exclamation:
        return "exclamation";
    case box_icon::information:
        return "information";
    }
    return "";
}

std::string buttons_name(box_buttons buttons) {
    switch (buttons) {
    case box_buttons::ok:
        return "ok";
    case box_buttons::yes_no:
        return "yesno";
    case box_buttons::yes_no_cancel:
        return "yesnocancel";
    }
    return "";
}

std::vector<box_answer> answers_of(box_buttons buttons) {
    switch (buttons) {
    case box_buttons::ok:
        return {box_answer::ok};
    case box_buttons::yes_no:
        return {box_answer::no, box_answer::yes};
    case box_buttons::yes_no_cancel:
        return {box_answer::no, box_answer::cancel, box_answer::yes};
    }
    return {};
}

json take(json& list) {
    json taken = json::array();
    taken.swap(list);
    return taken;
}

} // namespace

box_answer queued_message_box::show(std::string_view text, box_icon icon, box_buttons buttons) {
    shown_.push_back({{"text", std::string(text)}, {"icon", icon_name(icon)}, {"buttons", buttons_name(buttons)}});
    const std::vector<box_answer> possible = answers_of(buttons);
    const auto queued = std::find_first_of(answers_.begin(), answers_.end(), possible.begin(), possible.end());
    if (queued == answers_.end()) return possible.front();
    const box_answer answer = *queued;
    answers_.erase(queued);
    return answer;
}

json queued_message_box::take_shown() { return take(shown_); }

std::optional<file_choice> queued_file_dialog::show(const file_dialog_setup& setup) {
    shown_.push_back({{"kind", setup.kind == file_dialog_setup::dialog_kind::open ? "open" : "save"},
                      {"title", setup.title},
                      {"filter", setup.filter},
                      {"filter_index", setup.filter_index},
                      {"init_dir", setup.init_dir},
                      {"file_name", setup.file_name}});
    if (results_.empty()) return std::nullopt;
    const queued result = std::move(results_.front());
    results_.pop_front();
    if (!result.file_name) return std::nullopt;
    return file_choice{*result.file_name, result.filter_index.value_or(setup.filter_index)};
}

void queued_file_dialog::queue(std::optional<std::string> file_name, std::optional<int> filter_index) {
    results_.push_back({std::move(file_name), filter_index});
}

json queued_file_dialog::take_shown() { return take(shown_); }

} // namespace desk::robot
