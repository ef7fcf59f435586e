#include "qt/access_keys.h"

#include "controls/kinds.h"
#include "controls/operator_actions.h"
#include "qt/control_table.h"
#include "qt/reading_order.h"

#include <QShortcut>
#include <QString>
#include <QWidget>

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk::qt {

namespace {

enum class side { write, read };

struct letters {
    /// The first letter in the caption is used, else the first of all; "*": the control's index in its array.
    const char* all;
    side belongs_to = side::write;
};

/// The view buttons and their neighbours use A B C D E F N P R T V in every view (see the layout table).
const std::map<std::string, letters>& table() {
    static const std::map<std::string, letters> all = {
        {"cmd_about_ok", {"Q"}},
        {"lstv_timing", {"I"}},
        {"lstv_pattern", {"I"}},
        {"lstv_auto", {"I"}},
        {"hsr_color_setting", {"*"}},
        {"txt_motion_str", {"M"}},

        {"cmd_out", {"1"}},
        {"cmd_hdcp", {"2"}},
        {"cmd_asc", {"3"}},
        {"cmd_lpcm", {"4"}},
        {"cmd_csc", {"5"}},
        {"cmd_deep", {"6"}},
        {"cmd_auto_go", {"7"}},
        {"cmd_fav", {"8"}},
        {"cmd_reset", {"9"}},

        {"cbo_timing", {"1"}},
        {"cbo_pattern", {"2"}},
        {"cbo_interval", {"3"}},
        {"cmd_replace", {"L"}},
        {"cmd_delete", {"X"}},

        {"cmd_load", {"O"}},
        {"cmd_pre_f", {"J"}},
        {"cmd_clear_file", {"L"}},
        {"cmd_save_write", {"S"}},
        {"cmd_write", {"W"}},
        {"cmd_verify", {"Y"}},
        {"cmd_w_auto", {"U"}},
        {"cmd_erase", {"Z"}},
        {"cmd_write_translate", {"X"}},
        {"cmd_sum_write", {"M"}},
        {"cmd_recover", {"*"}},
        {"cmd_read", {"R", side::read}},
        {"cmd_compare", {"C", side::read}},
        {"cmd_clear_read", {"L", side::read}},
        {"cmd_save_read", {"S", side::read}},
        {"cmd_read_translate", {"X", side::read}},
        {"cmd_sum_read", {"M", side::read}},
        {"opt_edid_src(1)", {"H"}},
        {"opt_edid_src(2)", {"I"}},
        {"opt_edid_src(3)", {"G"}},
        {"cmd_ok", {"K"}},
        {"cmd_edid_report", {"O"}},
        {"cmd_edid_back", {"K"}},

        // OK, EXIT or CANCEL
        {"frm_diag.cmd_ok", {"KXC"}},
        {"cbo_eeprom", {"E"}},
        {"opt_unused(0)", {"0"}},
        {"opt_unused(1)", {"F"}},
        {"chk_4digits", {"S"}},
        {"cmd_checksum", {"C"}},
        {"opt_hex_type(0)", {"S"}},
        {"opt_hex_type(1)", {"L"}},
        {"txt_sn", {"S"}},
        {"cmd_add", {"U"}},
        {"cmd_sub", {"D"}},
        {"chk_write", {"W"}},
        {"chk_verify", {"V"}},
        {"chk_auto_sn", {"A"}},
        {"frm_diag.cmd_run", {"R"}},

        {"cmd_save", {"S"}},
        {"cmd_exit", {"X"}},
    };
    return all;
}

const letters* letters_of(const control& c) { return entry_of(c, table()); }

std::string caption_of(const control& c) {
    return visit(c, overloaded{
                        [](const button& b) { return b.caption.get(); },
                        [](const check_box& k) { return k.caption.get(); },
                        [](const option_button& o) { return o.caption.get(); },
                        [](const control&) { return std::string(); },
                    });
}

char upper(char c) { return static_cast<char>(std::toupper(static_cast<unsigned char>(c))); }

bool has(const std::string& caption, char letter) {
    return std::any_of(caption.begin(), caption.end(), [letter](char c) { return upper(c) == letter; });
}

QKeySequence with_alt(char letter, side belongs_to) {
    const Qt::KeyboardModifiers shift = belongs_to == side::read ? Qt::ShiftModifier : Qt::NoModifier;
    return {QKeyCombination(shift | Qt::AltModifier, static_cast<Qt::Key>(upper(letter)))};
}

char letter_of(const control& c, const letters& entry) {
    const std::string all = entry.all;
    if (all == "*") return static_cast<char>('0' + c.index);
    const std::string caption = caption_of(c);
    const auto in_caption = std::find_if(all.begin(), all.end(), [&](char l) { return has(caption, l); });
    return in_caption == all.end() ? all.front() : *in_caption;
}

char mnemonic_of(const control& c) {
    const auto* const b = as<button>(&c);
    return b == nullptr ? '\0' : b->mnemonic;
}

/// Every key the control can have as its caption changes.
std::vector<QKeySequence> possible_keys(const control& c) {
    const letters* const entry = letters_of(c);
    if (mnemonic_of(c) != 0 || entry == nullptr || std::string(entry->all) == "*") return {access_key(c)};
    std::vector<QKeySequence> keys;
    for (const char* l = entry->all; *l != 0; ++l)
        keys.push_back(with_alt(*l, entry->belongs_to));
    return keys;
}

/// A panel button acts at once, so its key only moves the focus along its row.
bool only_takes_focus(const control& c) { return c.parent != nullptr && c.parent->name == "fra_setup"; }

} // namespace

QKeySequence access_key(const control& c) {
    if (const char mnemonic = mnemonic_of(c)) return with_alt(mnemonic, side::write);
    const letters* const entry = letters_of(c);
    return entry == nullptr ? QKeySequence() : with_alt(letter_of(c, *entry), entry->belongs_to);
}

int underlined_letter(const control& c, const std::string& caption) {
    if (only_takes_focus(c)) return -1;
    char letter = mnemonic_of(c);
    if (letter == 0) {
        const letters* const entry = letters_of(c);
        if (entry == nullptr || entry->belongs_to == side::read) return -1;
        letter = letter_of(c, *entry);
    }
    const auto exact = caption.find(letter);
    if (exact != std::string::npos) return static_cast<int>(exact);
    const auto found = std::find_if(caption.begin(), caption.end(), [&](char l) { return upper(l) == upper(letter); });
    return found == caption.end() ? -1 : static_cast<int>(found - caption.begin());
}

access_keys::access_keys(QWidget& adapter, desk::window& model, event_gate& gate) : model_(model), gate_(gate) {
    std::set<QKeySequence> known;
    for (const control* c : model.controls()) {
        for (const QKeySequence& key : possible_keys(*c)) {
            if (key.isEmpty() || !known.insert(key).second) continue;
            auto* const shortcut = new QShortcut(key, &adapter);
            shortcut->setAutoRepeat(false);
            connect(shortcut, &QShortcut::activated, this, [this, key] { press(key); });
        }
    }
}

control* access_keys::target_of(const QKeySequence& key) const {
    std::vector<control*> targets;
    for (control* c : model_.controls())
        if (access_key(*c) == key && can_be_reached(*c)) targets.push_back(c);
    if (targets.empty()) return nullptr;
    // the next one in the row, else the topmost
    const auto focused = std::find(targets.begin(), targets.end(), model_.focused);
    if (focused != targets.end()) return focused + 1 == targets.end() ? targets.front() : *(focused + 1);
    return only_takes_focus(*targets.front()) ? targets.front() : targets.back();
}

void access_keys::press(const QKeySequence& key) {
    gate_.run([&] {
        control* const c = target_of(key);
        if (c == nullptr) return;
        if (only_takes_focus(*c)) return c->set_focus();
        visit(*c, overloaded{
                      [](button& b) { click(b); },
                      [](check_box& k) { click(k); },
                      [](option_button& o) { click(o); },
                      [](control& other) { other.set_focus(); },
                  });
    });
}

} // namespace desk::qt
