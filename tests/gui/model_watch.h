#pragma once

#include "controls/window.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace desk::gui {

/// What an operator sees of a window's controls: of each, by its full name, its properties in one line.
using sight_of_model = std::map<std::string, std::string>;
sight_of_model see(const window& w);
/// The controls that differ.
std::set<std::string> changes(const sight_of_model& before, const sight_of_model& after);

/// Takes the place of every event procedure of a window's controls while it lives: counts the events, and does nothing
/// with them. The focus, the pointer's way and the window's own keys raise none here.
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

/// The control on top at a point of the window, in twips; none: nullptr.
const control* on_top_at(const window& w, int left, int top);

} // namespace desk::gui
