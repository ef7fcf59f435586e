#include "desk_under_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace desk;
    fuzz::desk_under_fuzz d;
    kept_settings settings{d.desk.link, d.desk.edid, d.desk.fields};
    if (!fuzz::ends_well([&] { settings.read(fuzz::text_of(data, size)); })) return 0;
    const std::string kept = settings.text();
    fuzz::demand(fuzz::ends_well([&] { settings.read(kept); }), "what was written can be read");
    fuzz::demand(settings.text() == kept, "what was written is read as it was");
    return 0;
}
