#include "link/button_at_work.h"

namespace desk {

void begin_work(button& pressed, event_pump& events) {
    pressed.enabled = false;
    events.pump();
    pressed.back_color = color_red;
}

void end_work(button& pressed) {
    pressed.back_color = color_button_face;
    pressed.enabled = true;
}

} // namespace desk
