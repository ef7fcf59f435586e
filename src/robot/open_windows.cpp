#include "robot/open_windows.h"

#include <algorithm>

namespace desk::robot {

void open_windows::start(window* main_window) {
    windows_.clear();
    if (main_window != nullptr) windows_.push_back(main_window);
    events_.start(windows_);
}

void open_windows::show(window& w) {
    w.visible = true;
    windows_.push_back(&w);
    events_.follow_windows(windows_);
    // at a fatal end this throws, and the window stays for inspection
    let_operator_work([&w] { return !w.visible; });
    windows_.erase(std::find(windows_.begin(), windows_.end(), &w));
    events_.follow_windows(windows_);
}

window* open_windows::top() const {
    // a window may be closed while the procedure that opened it is still suspended
    const auto open =
        std::find_if(windows_.rbegin(), windows_.rend(), [](const window* w) { return w->visible.get(); });
    return open == windows_.rend() ? main() : *open;
}

window* open_windows::find(const std::string& name) const {
    const auto found = std::find_if(windows_.begin(), windows_.end(),
                                    [&](const window* w) { return w->name == name && (w->visible || w == main()); });
    return found == windows_.end() ? nullptr : *found;
}

} // namespace desk::robot
