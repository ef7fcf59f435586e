#include "cli/panel_groups.h"

namespace desk::cli {

const std::vector<panel_group>& panel_groups() {
    using buttons = std::span<button>;
    static const std::vector<panel_group> groups = {
        {"output", {"pc", "hd", "dvi", "hdmi"}, [](panel& p) -> buttons { return p.cmd_out; }},
        {"hdcp", {"off", "on"}, [](panel& p) -> buttons { return p.cmd_hdcp; }},
        {"audio", {"ext-7.1", "ext-opt", "int-sine"}, [](panel& p) -> buttons { return p.cmd_asc; }},
        {"lpcm", {"2", "5.1", "7.1"}, [](panel& p) -> buttons { return p.cmd_lpcm; }},
        {"color-space", {"rgb444", "yuv444", "yuv422"}, [](panel& p) -> buttons { return p.cmd_csc; }},
        {"deep-color", {"8", "10", "12"}, [](panel& p) -> buttons { return p.cmd_deep; }},
        {"autorun", {"off", "on"}, [](panel& p) -> buttons { return p.cmd_auto_go; }},
        {"favorite", {"off", "on"}, [](panel& p) -> buttons { return p.cmd_fav; }},
    };
    return groups;
}

} // namespace desk::cli
