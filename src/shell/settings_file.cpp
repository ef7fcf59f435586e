#include "shell/settings_file.h"

#include "runtime/list_format.h"
#include "runtime/windows_1252.h"

namespace desk {

void kept_settings::read(std::string_view text) {
    list_reader records(text);
    link.com_port = records.read_integer();
    for (label& entry : edid.lab_pre_f)
        entry.caption = as_utf8(records.read_string());
    fields.eeprom_size_index = records.read_byte();
    fields.unused_byte_index = records.read_byte();
    fields.checksum_4digits = records.read_byte();
}

std::string kept_settings::text() const {
    std::string text = list_record(link.com_port);
    for (const label& entry : edid.lab_pre_f)
        text += list_record(entry.caption.get());
    text += list_record(fields.eeprom_size_index);
    text += list_record(fields.unused_byte_index);
    text += list_record(fields.checksum_4digits);
    return text;
}

} // namespace desk
