#pragma once

#include "controls/window.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk::gui {

/// The visible state of a window's controls: one line of properties for each full name.
using model_snapshot = std::map<std::string, std::string>;
model_snapshot snapshot_of(const window& w);
std::set<std::string> changes(const model_snapshot& before, const model_snapshot& after);

/// While it lives, replaces every event procedure of a window's controls by a counter. Changes of focus, mouse moves
/// and the window's own keys raise no events.
class event_watch {
public:
    explicit event_watch(window& w);
    ~event_watch();
    event_watch(const event_watch&) = delete;
    event_watch& operator=(const event_watch&) = delete;

    /// The events since the last call, by the full names of their controls.
    std::map<std::string, int> take();

private:
    template <class Procedure, class Counter>
    void replace(Procedure& procedure, Counter counter);
    void watch(control& c);

    std::map<std::string, int> seen_;
    std::vector<std::function<void()>> put_back_;
};

/// The topmost control at a point of the window, in twips, or nullptr.
const control* on_top_at(const window& w, int left, int top);

} // namespace desk::gui
