#include "soak/soak_files.h"

#include "generator/sink_edids.h"
#include "runtime/text.h"
#include "support/desk_fixture.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <numeric>
#include <system_error>

namespace desk::test {

namespace {

constexpr const char* settings_name = "marlo_rs232.ini";
constexpr const char* catalogue_name = "timing_pattern.ini";

const std::array changing_files = {"display.bin", "good.bin", "good.hex", "wrong.hex", "long.bin", "one.ddc"};
constexpr std::array locked_files = {"locked.bin", "locked.hex"};

void mend_checksums(bytes& edid) {
    for (const std::size_t end : {std::size_t{127}, std::size_t{255}}) {
        const auto first = edid.begin() + static_cast<std::ptrdiff_t>(end - 127);
        const int sum = std::accumulate(first, first + 127, 0);
        edid.at(end) = static_cast<std::uint8_t>(-sum);
    }
}

} // namespace

soak_files::soak_files(std::mt19937_64& random) : random_(random) {
    mend_start();
    const std::string display = string_of(first_sink_edid(1));
    directory_.put("display.bin", display);
    directory_.put("good.bin", string_of(first_sink_edid(2)));
    directory_.put("good.hex", "00 FF FF FF FF FF FF 00 //7\n0x12,0x34\n");
    directory_.put("wrong.hex", "00 x");
    directory_.put("long.bin", std::string(300, 'A'));
    directory_.put("empty.bin", "");
    directory_.put("one.ddc", std::string(200, 'j') + display);
    directory_.put("short.ddc", display.substr(0, 128));
    directory_.put("other.txt", "00");
    std::filesystem::create_directory(directory_ / "folder.bin");
    for (const char* name : locked_files) {
        directory_.put(name, display);
        std::filesystem::permissions(directory_ / name, std::filesystem::perms::owner_read);
    }
    names_ = {"display.bin", "display.bin", "display.bin", "good.bin",   "good.bin",  "good.hex",
              "wrong.hex",   "long.bin",    "empty.bin",   "one.ddc",    "short.ddc", "other.txt",
              "folder.bin",  "locked.bin",  "locked.hex",  "gone.bin",   "saved.hex", "saved.bin",
              "saved.txt",   "saved.hex",   "no/such.hex", "no/such.bin"};
}

soak_files::~soak_files() {
    // Windows doesn't delete read-only files
    std::error_code ignored;
    for (const char* name : locked_files)
        std::filesystem::permissions(directory_ / name, std::filesystem::perms::owner_all, ignored);
}

void soak_files::change_some() {
    const std::string name = changing_files.at(static_cast<std::size_t>(below(changing_files.size())));
    if (below(8) == 0)
        std::filesystem::remove(directory_ / name);
    else
        directory_.put(name, some_content());
}

std::string soak_files::some_content() {
    const bytes edid = some_edid();
    std::string text;
    switch (below(6)) {
    case 0:
        for (std::size_t i = 0; i < edid.size(); ++i)
            append_listed_byte(text, edid[i], i);
        return text;
    case 1:
        for (const std::uint8_t byte : edid)
            text += "0x" + hex2(byte) + ", ";
        return text.substr(0, text.size() - static_cast<std::size_t>(below(40)));
    case 2:
        return std::string(static_cast<std::size_t>(below(300)), 'j') + string_of(edid);
    case 3:
        return string_of(edid).substr(0, static_cast<std::size_t>(below(257)));
    default:
        return string_of(edid);
    }
}

bytes soak_files::some_edid() {
    bytes edid = first_sink_edid(1 + below(3));
    constexpr std::array changes = {0, 1, 1, 4, 20, 400};
    for (int i = changes.at(static_cast<std::size_t>(below(changes.size()))); i > 0; --i)
        edid.at(static_cast<std::size_t>(below(256))) = static_cast<std::uint8_t>(below(256));
    if (below(3) == 0) {
        // duplicates a descriptor, and changes the type of one
        const auto some_descriptor = [&] { return std::ptrdiff_t{54} + std::ptrdiff_t{18} * below(4); };
        std::copy_n(edid.begin() + some_descriptor(), 18, edid.begin() + some_descriptor());
        edid.at(static_cast<std::size_t>(some_descriptor() + 3)) = static_cast<std::uint8_t>(0xFA + below(6));
    }
    if (below(2) == 0) mend_checksums(edid);
    return edid;
}

void soak_files::spoil_start() {
    switch (below(6)) {
    case 0:
        std::filesystem::remove(directory_ / settings_name);
        break;
    case 1:
        directory_.put(settings_name, "1\r\n\"\"\r\n");
        break;
    case 2:
        directory_.put(settings_name, "70000" + usual_settings.substr(1));
        break;
    case 3:
        std::filesystem::remove(directory_ / catalogue_name);
        break;
    case 4:
        directory_.put(catalogue_name, plain_catalogue(45, 45).substr(0, 500));
        break;
    default:
        directory_.put(catalogue_name, "many\r\n");
        break;
    }
}

void soak_files::mend_start() {
    directory_.put(settings_name, usual_settings);
    directory_.put(catalogue_name, plain_catalogue(45, 45));
}

} // namespace desk::test
