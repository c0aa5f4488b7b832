#include "foundation/strict_number.h"

#include "foundation/decimal_text.h"

#include <limits>
#include <stdexcept>

namespace {

double checked(const decimal_text::Reading& reading) {
    switch (reading.fault) {
    case decimal_text::Fault::notANumber:
        throw std::invalid_argument("Type mismatch");
    case decimal_text::Fault::overflow:
        throw std::out_of_range("Overflow");
    default:
        return reading.value;
    }
}

template <typename Integer> Integer strictWhole(const std::string& text) {
    using Limits = std::numeric_limits<Integer>;
    return static_cast<Integer>(checked(decimal_text::readWhole(
        text, static_cast<double>(Limits::min()), static_cast<double>(Limits::max()))));
}

} // namespace

std::int32_t strictToLong(const std::string& text) {
    return strictWhole<std::int32_t>(text);
}

std::int16_t strictToInt(const std::string& text) {
    return strictWhole<std::int16_t>(text);
}

double strictToDouble(const std::string& text) {
    return checked(decimal_text::readDecimal(text));
}
