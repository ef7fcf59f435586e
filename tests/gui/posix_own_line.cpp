#include "own_line.h"

#include "generator/pseudo_terminal.h"
#include "terminal_pace.h"

#include <poll.h>

namespace desk::gui {

namespace {

class terminal_line final : public own_line {
public:
    explicit terminal_line(const std::filesystem::path& folder) : link_(folder / "com1") { lead_to(terminal_.name()); }
    // the terminal's name may be reused before the desk looks it up again
    ~terminal_line() override { lead_to("no_device"); }
    terminal_line(const terminal_line&) = delete;
    terminal_line& operator=(const terminal_line&) = delete;

    bytes read() override {
        constexpr int longest_ms = 5;
        pollfd line{terminal_.descriptor(), POLLIN, 0};
        return ::poll(&line, 1, longest_ms) > 0 ? terminal_.read() : bytes();
    }

    void write(const bytes& data) override { terminal_.write(data); }

private:
    void lead_to(const std::string& device) const {
        std::error_code ignored;
        std::filesystem::remove(link_, ignored);
        std::filesystem::create_symlink(device, link_, ignored);
    }

    pseudo_terminal terminal_;
    std::filesystem::path link_;
};

} // namespace

std::unique_ptr<own_line> make_own_line(const std::filesystem::path& folder) {
    return std::make_unique<terminal_line>(folder);
}

std::shared_ptr<void> pace_of_own_lines() { return std::make_shared<terminal_pace>(); }

} // namespace desk::gui
