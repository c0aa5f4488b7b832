// Text to number without ever failing: text that is empty, not wholly a number, or out of the
// type's range gives 0. "." is the decimal separator whatever the machine's locale.
#pragma once

#include <cstdint>
#include <string>

namespace TessalyString {

// Decimal text rounds to the nearest integer, halves to the even neighbour ("2.5" gives 2).
std::int32_t StrToLong(const std::string& text);
std::int16_t StrToInt(const std::string& text);
double StrToDouble(const std::string& text);

} // namespace TessalyString
