#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace desk {

/// The icon, buttons and answer of a message box.
enum class box_icon { none, critical, question, exclamation, information };
enum class box_buttons { ok, yes_no, yes_no_cancel };
enum class box_answer { ok, yes, no, cancel };

/// The message box. It has no title.
class message_box {
public:
    virtual ~message_box() = default;
    virtual box_answer show(std::string_view text, box_icon icon, box_buttons buttons) = 0;
};

struct file_dialog_setup {
    enum class dialog_kind { open, save };
    dialog_kind kind = dialog_kind::open;
    std::string title;
    std::string filter; ///< "description|patterns|description|patterns..."
    int filter_index = 1;
    std::string init_dir;  ///< empty: the system's choice
    std::string file_name; ///< preset
};

struct file_choice {
    std::string file_name; ///< absolute path
    int filter_index = 1;
};

/// The file dialog. Returns nothing if the operator cancels.
class file_dialog {
public:
    virtual ~file_dialog() = default;
    virtual std::optional<file_choice> show(const file_dialog_setup& setup) = 0;
};

} // namespace desk
