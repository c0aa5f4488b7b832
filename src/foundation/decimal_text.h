// The one grammar for numbers typed or stored as text, and the two ways the system reads them:
// the forgiving conversions (TessalyString), which read every fault as 0, and the strict ones
// (strict_number.h), which report it. Both come from readDecimal, so they can never disagree on
// what a number is.
#pragma once

#include <string>
#include <string_view>

namespace decimal_text {

enum class Fault { none, notANumber, overflow };

struct Reading {
    double value = 0.0;
    Fault fault = Fault::none;
};

// Blanks (space, tab) around are allowed; then [sign] digits [. digits] [e [sign] digits], with
// digits on at least one side of the point. "." is the decimal point whatever the machine's
// locale, so a value written on one till reads the same on every other. Hexadecimal, "inf", "nan"
// and thousands separators are not numbers. A value too large for a double is an overflow; one
// too small to tell from 0 reads as 0.
Reading readDecimal(std::string_view text);

// readDecimal, rounded to the nearest whole number with halves to the even neighbour ("2.5" gives
// 2, "3.5" gives 4), as the till's conversions always have; outside [lowest, highest] after
// rounding is an overflow.
Reading readWhole(std::string_view text, double lowest, double highest);

// The shortest text with "." as the point that readDecimal reads back as the same number (1.5 is
// "1.5", 2 is "2"), whatever the machine's locale.
std::string shortestText(double value);

} // namespace decimal_text
