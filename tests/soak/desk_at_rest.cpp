#include "soak/desk_at_rest.h"

#include "controls/color.h"

#include <array>
#include <string>
#include <utility>

namespace desk::test {

namespace {

constexpr std::array view_buttons = {"cmd_timing", "cmd_pattern", "cmd_fav_timing", "cmd_fav_pattern",
                                     "cmd_edid",   "cmd_auto",    "cmd_setup"};

/// These talk to the generator; they are enabled except while they work.
constexpr std::array always_enabled = {"cmd_run",  "cmd_refresh", "cmd_download", "cmd_reset",
                                       "cmd_read", "cmd_erase",   "cmd_about",    "cmd_about_ok"};

/// Enabled only with an EDID to write.
constexpr std::array sometimes_enabled = {"cmd_write", "cmd_verify"};

constexpr std::array<std::pair<const char*, int>, 8> panel_groups = {{{"cmd_out", 4},
                                                                      {"cmd_hdcp", 2},
                                                                      {"cmd_asc", 3},
                                                                      {"cmd_lpcm", 3},
                                                                      {"cmd_csc", 3},
                                                                      {"cmd_deep", 3},
                                                                      {"cmd_auto_go", 2},
                                                                      {"cmd_fav", 2}}};

class examination {
public:
    explicit examination(const std::function<std::string(const std::string&)>& ask) : ask_(ask) {}

    std::vector<std::string> result() {
        if (ask_("get frm_diag.shown") == "ok true") {
            expect_enabled("frm_diag.cmd_ok");
            // the other pages have none
            if (ask_("get frm_diag.cmd_run.shown") == "ok true") expect_enabled("frm_diag.cmd_run");
            return broken_;
        }
        if (ask_("get frm_report.shown") == "ok true") return broken_;
        examine_buttons();
        examine_link();
        examine_view();
        expect("get lstv_auto.row_count", "ok 32");
        return broken_;
    }

private:
    void examine_buttons() {
        for (const char* name : always_enabled)
            expect_rest(name);
        for (const char* name : sometimes_enabled)
            expect_not_red(name);
        for (const auto& [name, count] : panel_groups) {
            for (int i = 0; i < count; ++i)
                expect_rest(std::string(name) + "(" + std::to_string(i) + ")");
        }
        // only an unanswered upload leaves it red and disabled
        if (is_red("cmd_upload") == is_enabled("cmd_upload")) broken_.emplace_back("cmd_upload is half at work");
    }

    void examine_link() {
        const bool connected = ask_("field rs232_connected") == "ok true";
        expect("get cmd_conn.back_color", number(connected ? color_green : color_button_face));
        expect("get cmd_disconn.back_color", number(connected ? color_button_face : color_red));
        expect("field download_mode", "ok false");
    }

    void examine_view() {
        const std::string mode = ask_("field view_mode");
        for (std::size_t i = 0; i < view_buttons.size(); ++i) {
            const bool current = mode == "ok " + std::to_string(i);
            expect("get " + std::string(view_buttons.at(i)) + ".back_color",
                   number(current ? color_current_view : color_button_face));
        }
    }

    void expect_rest(const std::string& button) {
        expect_enabled(button);
        expect_not_red(button);
    }
    void expect_enabled(const std::string& button) {
        if (!is_enabled(button)) broken_.push_back(button + " is disabled");
    }
    void expect_not_red(const std::string& button) {
        if (is_red(button)) broken_.push_back(button + " is red");
    }
    void expect(const std::string& line, const std::string& answer) {
        const std::string got = ask_(line);
        if (got != answer) broken_.push_back(line + ": " + got + ", not " + answer);
    }
    bool is_enabled(const std::string& button) { return ask_("get " + button + ".enabled") == "ok true"; }
    bool is_red(const std::string& button) { return ask_("get " + button + ".back_color") == number(color_red); }
    static std::string number(color c) { return "ok " + std::to_string(c); }

    const std::function<std::string(const std::string&)>& ask_;
    std::vector<std::string> broken_;
};

} // namespace

std::vector<std::string> broken_rules(const std::function<std::string(const std::string&)>& ask) {
    return examination(ask).result();
}

} // namespace desk::test
