// A clock that stands still until a wait moves it on.
#pragma once

#include "foundation/clock.h"

#include <chrono>

class FakeClock final : public Clock {
public:
    // Installs itself at a fixed UTC moment (tests run with TZ=UTC, so local time is the same).
    FakeClock(int year, int month, int day, int hour = 12, int minute = 0, int second = 0);
    ~FakeClock() override;

    std::chrono::system_clock::time_point now() const override { return now_; }
    void sleepFor(std::chrono::milliseconds duration) override;

    void advance(std::chrono::seconds by) { now_ += by; }
    std::chrono::milliseconds slept() const { return slept_; }

private:
    std::chrono::system_clock::time_point now_;
    std::chrono::milliseconds slept_{0};
};
