#include "foundation/tessaly_string.h"

#include "foundation/decimal_text.h"

#include <limits>

namespace {

template <typename Integer> Integer toInteger(const std::string& text) {
    using Limits = std::numeric_limits<Integer>;
    const decimal_text::Reading reading = decimal_text::readWhole(
        text, static_cast<double>(Limits::min()), static_cast<double>(Limits::max()));
    return reading.fault == decimal_text::Fault::none ? static_cast<Integer>(reading.value) : 0;
}

} // namespace

namespace TessalyString {

std::int32_t StrToLong(const std::string& text) {
    return toInteger<std::int32_t>(text);
}

std::int16_t StrToInt(const std::string& text) {
    return toInteger<std::int16_t>(text);
}

double StrToDouble(const std::string& text) {
    return decimal_text::readDecimal(text).value;
}

} // namespace TessalyString
