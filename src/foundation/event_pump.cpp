#include "foundation/event_pump.h"

#include <utility>

namespace {
std::function<void()>& pumpBody() {
    static std::function<void()> body;
    return body;
}
} // namespace

void pumpEvents() {
    if (pumpBody()) {
        pumpBody()();
    }
}

void installEventPump(std::function<void()> body) {
    pumpBody() = std::move(body);
}
