#pragma once

#include "controls/kinds.h"
#include "edid/buffers.h"
#include "edid/compare_recover.h"
#include "edid/file_number_1.h"
#include "edid/file_opener.h"
#include "edid/file_saver.h"
#include "edid/previous_files.h"
#include "edid/result_frame.h"
#include "edid/serial_number.h"
#include "edid/shared_fields.h"
#include "edid/sink_transfers.h"
#include "edid/window_text.h"
#include "edid/workbench_frame.h"
#include "support/generator_fixture.h"
#include "support/temporary_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <iomanip>
#include <map>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace desk::test {

/// The kinds of file in the order of the save dialog's filters.
inline constexpr int hex_kind = 1;
inline constexpr int bin_kind = 2;

/// The buffer that is neither READ's nor WRITE's.
inline constexpr std::uint8_t trans = 0;

inline const std::string edid_header("\x00\xFF\xFF\xFF\xFF\xFF\xFF\x00", 8);

/// `count` bytes that differ from place to place: 1, 4, 7, ...
inline std::string some_bytes(std::size_t count) {
    std::string data;
    for (std::size_t i = 0; i < count; ++i)
        data.push_back(static_cast<char>(3 * i + 1));
    return data;
}

inline int byte_at(std::string_view data, std::size_t place) { return static_cast<std::uint8_t>(data[place]); }

/// The correct checksum of block 0 or 1: 1 to 256.
inline int needed_by(std::string_view data, std::size_t block) {
    int sum = 0;
    for (std::size_t i = 128 * block; i < 128 * block + 127; ++i)
        sum += byte_at(data, i);
    return 256 - sum % 256;
}

/// These bytes with the block's correct checksum; 256 becomes 0.
inline std::string mended(std::string data, std::size_t block) {
    data[128 * block + 127] = static_cast<char>(needed_by(data, block));
    return data;
}

/// These bytes with a block whose correct checksum is 256.
inline std::string needing_256(std::string data, std::size_t block) {
    data[128 * block + 100] = static_cast<char>(byte_at(data, 128 * block + 100) + needed_by(data, block));
    return mended(std::move(data), block);
}

/// 256 bytes with an EDID header and correct checksums in both blocks.
inline std::string good_edid() { return mended(mended(edid_header + some_bytes(248), 0), 1); }

/// 256 random bytes, with correct and wrong checksums; 1 in 16 blocks has checksum 256.
class random_edids {
public:
    explicit random_edids(std::uint32_t seed) : random_(seed) {}

    std::string next() {
        std::string data;
        for (int i = 0; i < 256; ++i)
            data.push_back(static_cast<char>(random_()));
        for (const std::size_t block : {0U, 1U}) {
            const auto kind = random_() % 16;
            if (kind < 8) data = mended(data, block);
            if (kind == 8) data = needing_256(data, block);
        }
        return data;
    }

private:
    std::mt19937 random_;
};

/// Bytes as the READ and WRITE windows show them.
inline std::string window_text_of(std::string_view data) {
    std::ostringstream text;
    text << std::hex << std::uppercase;
    for (std::size_t i = 0; i < data.size(); ++i) {
        text << std::setw(2) << std::setfill('0') << byte_at(data, i) << ' ';
        if (i % 8 == 7) text << "//" << i << "\r\n";
        if (i == 127) text << "\r\n";
    }
    return text.str();
}

/// A checksum label's text for block 0 or 1: "BK0=3C Correct.".
inline std::string checksum_text(std::string_view data, std::size_t block) {
    const int needed = needed_by(data, block);
    std::ostringstream text;
    text << "BK" << block << "=" << std::hex << std::uppercase << needed
         << (needed == byte_at(data, 128 * block + 127) ? " Correct." : " Error.");
    return text.str();
}

/// A buffer with these bytes, padded with `filler`.
inline edid_buffer buffer_of(std::string_view data, std::uint8_t filler = 0xFF) {
    edid_buffer buffer{};
    buffer.fill(filler);
    std::copy_n(data.begin(), std::min(data.size(), buffer.size()), buffer.begin());
    return buffer;
}

/// Visible properties by name: "cmd_write.enabled", "form.caption".
using looks = std::map<std::string, std::string>;

template <class Control, class Tell>
void tell_caption(const control& c, Tell tell) {
    if (const auto* shown = as<Control>(&c)) tell(".caption", shown->caption);
}

inline looks looks_of(const window& form) {
    looks all{{"form.caption", form.caption}};
    for (const control* c : form.controls()) {
        const auto tell = [&](const char* what, const std::string& value) { all[c->full_name() + what] = value; };
        tell(".visible", std::to_string(c->visible.get()));
        tell(".enabled", std::to_string(c->enabled.get()));
        tell(".back_color", std::to_string(c->back_color.get()));
        tell(".fore_color", std::to_string(c->fore_color.get()));
        tell_caption<frame>(*c, tell);
        tell_caption<label>(*c, tell);
        tell_caption<button>(*c, tell);
        tell_caption<check_box>(*c, tell);
        tell_caption<option_button>(*c, tell);
        if (const auto* shown = as<text_box>(c)) tell(".text", shown->text);
        if (const auto* shown = as<check_box>(c)) tell(".value", std::to_string(shown->value.get()));
        if (const auto* shown = as<option_button>(c)) tell(".value", std::to_string(shown->value.get()));
    }
    return all;
}

/// The EDID workbench on a scripted machine with a generator, and a directory for its files.
class edid_fixture : public generator_fixture {
protected:
    edid_fixture() {
        m.host.program_directory = "/program";
        add_controls();
        form.caption = "VELOTRACE ";
        for (control* c : std::initializer_list<control*>{&view.fra_pre_f, &view.fra_compare, &view.cmd_recover[0],
                                                          &view.cmd_recover[1]})
            c->visible = false;
        for (button* b : {&view.cmd_write, &view.cmd_verify, &view.cmd_w_auto, &view.cmd_write_translate,
                          &view.cmd_sum_write, &view.cmd_read_translate, &view.cmd_sum_read})
            b->enabled = false;
        saver.choose_hex_type = [this] {
            ++hex_type_questions;
            fields.hex_type = hex_type_choice;
        };
    }

    /// The generator sends its sink's EDID after "ERD001", and its results after the 256 bytes of a WRITE and after
    /// "ERS001".
    void take(const std::string& written) override {
        if (answers.contains(written) && answers[written].empty()) return;
        if (written == "ERD001") bring(sink, 60);
        if (written == "ERS001") bring(erase_result, 60);
        if (written == "EWR001") bytes_written = 0;
        if (written.size() == 1 && ++bytes_written == 256) bring(write_result, 10);
    }

    std::string path(const std::string& name) const { return utf8_from_path(directory / name); }

    void open(const std::string& name) {
        m.files.choices = {file_choice{path(name), 1}};
        view.cmd_load.on_click();
    }
    void open_bytes(const std::string& name, std::string_view content) {
        directory.put(name, content);
        open(name);
    }
    /// Presses SAVE on the WRITE or the READ side and chooses this file and type (1 HEX, 2 BIN).
    void save(const button& pressed, const std::string& name, int filter_index) {
        m.files.choices = {file_choice{path(name), filter_index}};
        pressed.on_click();
    }

    /// Starts a comparison for `changed`.
    void remember() { before_ = everything(); }
    /// Names of everything changed since `remember`, sorted.
    strings changed() const {
        strings names;
        looks before = before_;
        for (const auto& [name, value] : everything()) {
            const auto old = before.extract(name);
            if (old.empty() || old.mapped() != value) names.push_back(name);
        }
        for (const auto& [name, value] : before)
            names.push_back(name);
        std::sort(names.begin(), names.end());
        return names;
    }

    temporary_directory directory;
    window form;
    workbench_frame view;
    shared_fields fields;
    edid_buffers buffers;
    window_text texts{form, view, buffers, m.events};
    previous_files previous{view, fields};
    file_number_1 number_1;
    file_opener opener{m.host, form, view, fields, texts, previous, number_1};
    file_saver saver{m.host, form, view, fields, previous, number_1};
    result_frame result{view};
    compare_recover comparison{m.host, form, view, buffers, texts, result};
    sink_transfers transfers{link, view, fields, buffers, texts, result};
    serial_number serial{buffers, fields};

    std::string sink = good_edid();
    std::string write_result = "EWR002";
    std::string erase_result = "ERS002";
    int bytes_written = 0; ///< since the last "EWR001"

    std::int16_t hex_type_choice = 1;
    int hex_type_questions = 0;

private:
    void bring(const std::string& text, std::int64_t ms) {
        if (!unplugged && !text.empty()) m.events.in(ms, [this, text] { m.port.arrive(text); });
    }
    void add(control& c, const char* name) {
        c.name = name;
        form.add(c);
    }
    template <class Control, std::size_t Count>
    void add(std::array<Control, Count>& all, const char* name) {
        for (std::size_t i = 0; i < Count; ++i) {
            add(all.at(i), name);
            all.at(i).index = static_cast<int>(i);
        }
    }
    void add_controls() {
        add(view.txt_write, "txt_write");
        add(view.lab_write_checksum, "lab_write_checksum");
        add(view.cmd_recover, "cmd_recover");
        add(view.cmd_load, "cmd_load");
        add(view.cmd_pre_f, "cmd_pre_f");
        add(view.cmd_clear_file, "cmd_clear_file");
        add(view.cmd_save_write, "cmd_save_write");
        add(view.cmd_verify, "cmd_verify");
        add(view.cmd_write, "cmd_write");
        add(view.cmd_w_auto, "cmd_w_auto");
        add(view.cmd_erase, "cmd_erase");
        add(view.cmd_write_translate, "cmd_write_translate");
        add(view.cmd_sum_write, "cmd_sum_write");
        add(view.txt_read, "txt_read");
        add(view.lab_read_checksum, "lab_read_checksum");
        add(view.cmd_read, "cmd_read");
        add(view.cmd_compare, "cmd_compare");
        add(view.cmd_clear_read, "cmd_clear_read");
        add(view.cmd_save_read, "cmd_save_read");
        add(view.cmd_read_translate, "cmd_read_translate");
        add(view.cmd_sum_read, "cmd_sum_read");
        add(view.opt_edid_src, "opt_edid_src");
        add(view.fra_pre_f, "fra_pre_f");
        add(view.lab_pre_f, "lab_pre_f");
        add(view.fra_compare, "fra_compare");
        add(view.txt_msg, "txt_msg");
        add(view.lab_pass, "lab_pass");
        add(view.cmd_ok, "cmd_ok");
    }
    looks everything() const {
        looks all = looks_of(form);
        const auto bytes = [](const auto& of) { return std::string(of.begin(), of.end()); };
        all["read_buff"] = bytes(buffers.read_buff);
        all["write_buff"] = bytes(buffers.write_buff);
        all["trans_buff"] = bytes(buffers.trans_buff);
        all["recover_sum"] = bytes(texts.recover_sum);
        all["file_ok"] = std::to_string(opener.file_ok);
        all["edid_file_name"] = fields.edid_file_name;
        all["edid_src"] = std::to_string(fields.edid_src);
        all["read_ok"] = std::to_string(fields.read_ok);
        all["run_ok"] = std::to_string(fields.run_ok);
        all["diag_mode"] = std::to_string(fields.diag_mode);
        all["hex_type"] = std::to_string(fields.hex_type);
        all["sn_value"] = std::to_string(fields.sn_value);
        all["eeprom_size_index"] = std::to_string(fields.eeprom_size_index);
        all["unused_byte_index"] = std::to_string(fields.unused_byte_index);
        all["checksum_4digits"] = std::to_string(fields.checksum_4digits);
        all["boxes"] = std::to_string(m.boxes.all.size());
        for (const auto& entry : std::filesystem::directory_iterator(directory.path())) {
            const std::string name = utf8_from_path(entry.path().filename());
            if (entry.is_regular_file()) all["file " + name] = directory.content(name);
        }
        return all;
    }

    looks before_;
};

} // namespace desk::test
