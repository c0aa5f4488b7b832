// Text to number where the text must be a number: unlike the forgiving conversions of
// TessalyString, empty or non-numeric text is a fault, reported by throwing. Counts in the profile
// and fuel files and the printer serial dialog's typed values are read this way.
#pragma once

#include <cstdint>
#include <string>

// Blanks around the number are allowed and a fraction rounds to the nearest whole number, halves
// to the even neighbour (" 3 " gives 3, "3.5" gives 4, "2.5" gives 2), as the till's own
// conversion has always done. Each throws std::invalid_argument ("Type mismatch") for text that is
// not a number and std::out_of_range ("Overflow") for one outside its type.
std::int32_t strictToLong(const std::string& text);
std::int16_t strictToInt(const std::string& text);
double strictToDouble(const std::string& text);
