#include "foundation/event_pump.h"

#include <utility>

namespace {
std::function<void()>& pumpBody() {
    static std::function<void()> body;
    return body;
}
} // namespace

// A fault inside a window event belongs to the window, not to the file read or the run that let
// the events in: it stops here, so no caller's trap has to know what a window can throw.
void pumpEvents() noexcept {
    try {
        if (pumpBody()) {
            pumpBody()();
        }
    } catch (...) {
    }
}

void installEventPump(std::function<void()> body) {
    pumpBody() = std::move(body);
}
