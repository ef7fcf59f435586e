#include "shell/settings_file.h"

#include "runtime/list_format.h"
#include "runtime/windows_1252.h"

#include <cstddef>
#include <optional>

namespace desk {

namespace {

/// Nothing for a name that would be read back as a different one.
std::optional<std::string> record_of(const std::string& name) {
    return as_utf8(name) == name ? list_record(name) : std::nullopt;
}

} // namespace

void stored_settings::read(std::string_view text) {
    list_reader records(text);
    link.com_port = records.read_integer();
    for (label& entry : edid.lab_pre_f)
        entry.caption = as_utf8(records.read_string());
    fields.eeprom_size_index = records.read_byte();
    fields.unused_byte_index = records.read_byte();
    fields.checksum_4digits = records.read_byte();
}

std::string stored_settings::text() const {
    std::string text = list_record(link.com_port);
    std::size_t left_out = 0;
    for (const label& entry : edid.lab_pre_f) {
        if (const auto record = record_of(entry.caption.get()))
            text += *record;
        else
            ++left_out;
    }
    for (; left_out > 0; --left_out)
        text += *list_record("");
    text += list_record(fields.eeprom_size_index);
    text += list_record(fields.unused_byte_index);
    text += list_record(fields.checksum_4digits);
    return text;
}

} // namespace desk
