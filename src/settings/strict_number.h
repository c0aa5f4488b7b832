// Text to a whole number for counts that must be numbers: unlike the forgiving conversions of
// TessalyString, empty or non-numeric text is a fault, reported by throwing.
#pragma once

#include <cstdint>
#include <string>

// Blanks around the number are allowed and a fraction rounds to the nearest whole number, halves
// to the even neighbour (" 3 " gives 3, "3.5" gives 4, "2.5" gives 2), as the till's own
// conversion has always done. Throws std::invalid_argument ("Type mismatch") for text that is not
// a number and std::out_of_range ("Overflow") for one outside 32 bits.
std::int32_t strictToLong(const std::string& text);
