#include "signal/color_settings.h"

#include "link/commands.h"
#include "link/module_text.h"
#include "runtime/numbers.h"
#include "runtime/subscript.h"
#include "runtime/text.h"

#include <algorithm>
#include <array>

namespace desk {

namespace {

constexpr int grey = 3;
constexpr int enter = 13;
constexpr std::uint8_t zero_difference = 128;
constexpr std::array letters_of = {mnemonic::color_red, mnemonic::color_green, mnemonic::color_blue,
                                   mnemonic::color_grey};

bool is_valid(const std::string& text) {
    if (text.empty() || !std::all_of(text.begin(), text.end(), is_digit)) return false;
    // the typed number can have any length
    const std::size_t first = std::min(text.find_first_not_of('0'), text.size());
    return text.size() - first <= 3 && val(text) <= 255;
}

} // namespace

color_settings::color_settings(exchange& link, desk_frame& desk) : exchange_(link), desk_frame_(desk) { wire_events(); }

void color_settings::wire_events() {
    for (int i = 0; i <= grey; ++i) {
        slider& bar = element(desk_frame_.hsr_color_setting, i);
        bar.on_change = [this, i] { hsr_color_setting_change(i); };
        bar.on_scroll = [this, i] { hsr_color_setting_change(i); };
        text_box& box = element(desk_frame_.txt_color_setting, i);
        box.on_got_focus = [this, i] { txt_color_setting_got_focus(i); };
        box.on_key_press = [this, i](int key) { txt_color_setting_key_press(i, key); };
    }
}

void color_settings::hsr_color_setting_change(int index) {
    // moved by the program: nothing is sent
    if (exchange_.download_mode || index > grey) return;
    const int value = element(desk_frame_.hsr_color_setting, index).value();
    if (index == grey) show_grey(number_text(value));
    element(desk_frame_.txt_color_setting, index).text = number_text(value);
    choose(index, value);
    exchange_.tx_str(command::set(element(letters_of, index), value));
}

void color_settings::choose(int index, int value) {
    const auto chosen = static_cast<std::uint8_t>(value);
    const std::uint8_t beside = color_mode == 1 ? chosen : zero_difference;
    if (index == grey)
        channels = {beside, chosen, beside};
    else
        element(channels, index) = chosen;
}

void color_settings::show_grey(const std::string& value) {
    // grey means zero for both colour differences
    const std::string beside = color_mode == 1 ? value : number_text(zero_difference);
    desk_frame_.txt_color_setting.at(0).text = beside;
    desk_frame_.txt_color_setting.at(2).text = beside;
    desk_frame_.txt_color_setting.at(1).text = value;
}

void color_settings::txt_color_setting_got_focus(int index) {
    element(desk_frame_.txt_color_setting, index).select_all();
}

void color_settings::txt_color_setting_key_press(int index, int key) {
    if (key != enter) return;
    text_box& box = element(desk_frame_.txt_color_setting, index);
    std::string t = trim(box.text.get());
    exchange_.host().events.pump();
    if (is_valid(t)) {
        exchange_.download_mode = true; // the slider moved below must not send
        element(desk_frame_.hsr_color_setting, index).set_value(to_integer(val(t)));
        if (index == grey) show_grey(t);
        choose(index, to_integer(val(t)));
        exchange_.tx_str(std::string(element(letters_of, index)) + pad_left(t, "0", 3));
        exchange_.download_mode = false;
    }
    box.select_all();
}

} // namespace desk
