#include "foundation/clock.h"

#include <cstdio>
#include <ctime>
#include <thread>

namespace {

class SystemClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() const override {
        return std::chrono::system_clock::now();
    }
    void sleepFor(std::chrono::milliseconds duration) override {
        std::this_thread::sleep_for(duration);
    }
};

SystemClock systemClock;
Clock* installed = nullptr;

std::chrono::sys_days toDays(const DateTime& d) {
    return std::chrono::year{d.year} / std::chrono::month{static_cast<unsigned>(d.month)} /
           std::chrono::day{static_cast<unsigned>(d.day)};
}

std::string twoDigits(int value) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d", value);
    return text;
}

} // namespace

Clock& currentClock() {
    return installed != nullptr ? *installed : systemClock;
}

void installClock(Clock* clock) {
    installed = clock;
}

DateTime localNow() {
    return brokenDown(currentClock().now(), true);
}

DateTime brokenDown(std::chrono::system_clock::time_point moment, bool local) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(moment);
    std::tm parts{};
#ifdef _WIN32
    if (local) {
        localtime_s(&parts, &seconds);
    } else {
        gmtime_s(&parts, &seconds);
    }
#else
    if (local) {
        localtime_r(&seconds, &parts);
    } else {
        gmtime_r(&seconds, &parts);
    }
#endif
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
            parts.tm_hour,        parts.tm_min,     parts.tm_sec};
}

DateTime dateFromParts(int year, int month, int day) {
    // Months roll over into years first, then days are counted from the first of that month.
    const int monthIndex = month - 1;
    const int yearShift = monthIndex >= 0 ? monthIndex / 12 : -((11 - monthIndex) / 12);
    const int normalMonth = monthIndex - yearShift * 12 + 1;
    const std::chrono::sys_days first = std::chrono::year{year + yearShift} /
                                        std::chrono::month{static_cast<unsigned>(normalMonth)} /
                                        std::chrono::day{1};
    const std::chrono::year_month_day ymd{first + std::chrono::days{day - 1}};
    return {static_cast<int>(ymd.year()),
            static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day())),
            0,
            0,
            0};
}

long daysBetween(const DateTime& from, const DateTime& to) {
    return static_cast<long>((toDays(to) - toDays(from)).count());
}

std::string formatYmd(const DateTime& moment) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d", moment.year);
    return text + twoDigits(moment.month) + twoDigits(moment.day);
}

std::string formatHms(const DateTime& moment) {
    return twoDigits(moment.hour) + twoDigits(moment.minute) + twoDigits(moment.second);
}
