// Where the system "lets pending window events run". The wizard installs a body that runs Qt's
// pending events; without a user interface the pump does nothing.
#pragma once

#include <functional>

void pumpEvents() noexcept;

// Installs the pump's body; an empty function restores the one that does nothing.
void installEventPump(std::function<void()> body);
