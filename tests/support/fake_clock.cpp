#include "support/fake_clock.h"

FakeClock::FakeClock(int year, int month, int day, int hour, int minute, int second) {
    const std::chrono::sys_days date = std::chrono::year{year} /
                                       std::chrono::month{static_cast<unsigned>(month)} /
                                       std::chrono::day{static_cast<unsigned>(day)};
    now_ = date + std::chrono::hours{hour} + std::chrono::minutes{minute} +
           std::chrono::seconds{second};
    installClock(this);
}

FakeClock::~FakeClock() {
    installClock(nullptr);
}

void FakeClock::sleepFor(std::chrono::milliseconds duration) {
    now_ += duration;
    slept_ += duration;
}
