#include "controls/operator_actions.h"
#include "desk_under_fuzz.h"
#include "link/module_text.h"
#include "shell/settings_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    fuzz::edid_side d;
    stored_settings settings{d.link, d.edid, d.fields};
    if (!fuzz::ends_well([&] { settings.read(fuzz::text_of(data, size)); })) return 0;
    const std::string kept = settings.text();
    fuzz::demand(fuzz::ends_well([&] { settings.read(kept); }), "the written settings can be read");
    fuzz::demand(settings.text() == kept, "the settings read back unchanged");
    // an entry can name anything: a missing file is removed from the list
    for (label& entry : d.edid.lab_pre_f) {
        const std::string name = entry.caption;
        for (const int part : {0, 1, 2})
            path_part(name, part);
        hover(entry);
        fuzz::ends_well([&] { click(entry); });
        d.fields.edid_file_name = name;
        d.previous.add_pre_f();
        fuzz::demand(d.edid.lab_pre_f[0].caption == name, "the file used last is first");
    }
    return 0;
}
