// The one place that says what time it is and that waits. The program runs on the system clock;
// tests install a fake one so that dates are fixed and the pauses of the configuration run and
// the installer pass without sleeping.
#pragma once

#include <chrono>
#include <string>

struct DateTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const DateTime&, const DateTime&) = default;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual std::chrono::system_clock::time_point now() const = 0;
    virtual void sleepFor(std::chrono::milliseconds duration) = 0;
};

// The clock in force; the system clock unless a test installed another.
Clock& currentClock();

// Installs `clock` (not owned) as the clock in force; nullptr restores the system clock.
void installClock(Clock* clock);

// The present moment in local time.
DateTime localNow();

// A moment as local time, or as UTC when `local` is false.
DateTime brokenDown(std::chrono::system_clock::time_point moment, bool local = true);

// A date built from parts that may lie outside their ranges; they roll over as a calendar does
// (month 13 is January of the next year, day 0 the last day of the month before).
DateTime dateFromParts(int year, int month, int day);

// Whole days from the date of `from` to the date of `to` (times of day play no part).
long daysBetween(const DateTime& from, const DateTime& to);

// "YYYYMMDD" and "HHMMSS", the system's date stamps.
std::string formatYmd(const DateTime& moment);
std::string formatHms(const DateTime& moment);
