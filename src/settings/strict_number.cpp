#include "settings/strict_number.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace {

std::string_view trimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Decimal digits, one sign, a point and an exponent only: no "inf", "nan" or hexadecimal.
bool onlyNumberCharacters(std::string_view text) {
    bool anyDigit = false;
    for (const char c : text) {
        const bool digit = c >= '0' && c <= '9';
        anyDigit = anyDigit || digit;
        if (!digit && c != '.' && c != '-' && c != '+' && c != 'e' && c != 'E') {
            return false;
        }
    }
    return anyDigit;
}

double parseDecimal(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1); // from_chars takes only a minus sign
        if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
            throw std::invalid_argument("Type mismatch");
        }
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        throw std::out_of_range("Overflow");
    }
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::invalid_argument("Type mismatch");
    }
    return value;
}

double roundHalfToEven(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction > 0.5 || (fraction == 0.5 && std::fmod(below, 2.0) != 0.0)) {
        return below + 1.0;
    }
    return below;
}

} // namespace

std::int32_t strictToLong(const std::string& text) {
    const std::string_view number = trimBlanks(text);
    if (!onlyNumberCharacters(number)) {
        throw std::invalid_argument("Type mismatch");
    }
    const double rounded = roundHalfToEven(parseDecimal(number));
    if (!std::isfinite(rounded) ||
        rounded < static_cast<double>(std::numeric_limits<std::int32_t>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<std::int32_t>::max())) {
        throw std::out_of_range("Overflow");
    }
    return static_cast<std::int32_t>(rounded);
}
