#include "foundation/tessaly_string.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trimBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at;
}

// Accepts [sign] digits [. digits] [e [sign] digits], with digits on at least one side of the
// point: the forms a till operator or a settings file writes ("42", "-2.5", ".5", "1e3", "+5").
// Hexadecimal, "inf", "nan" and thousands separators are not numbers here.
bool isDecimalNumber(std::string_view text) {
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    const std::size_t integerEnd = skipDigits(text, at);
    bool anyDigit = integerEnd > at;
    at = integerEnd;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fractionEnd = skipDigits(text, at + 1);
        anyDigit = anyDigit || fractionEnd > at + 1;
        at = fractionEnd;
    }
    if (!anyDigit) {
        return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        const std::size_t exponentEnd = skipDigits(text, at);
        if (exponentEnd == at) {
            return false;
        }
        at = exponentEnd;
    }
    return at == text.size();
}

// One fixed rule instead of the machine's locale: "." is always the decimal separator, so a
// value written on one till reads the same on every other. std::from_chars never consults the
// locale.
std::optional<double> parseNumber(const std::string& text) {
    std::string_view number = trimBlanks(text);
    if (!isDecimalNumber(number)) {
        return std::nullopt;
    }
    if (number.front() == '+') {
        number.remove_prefix(1); // from_chars takes only a minus sign
    }
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error != std::errc() || end != number.data() + number.size() || !std::isfinite(value)) {
        return std::nullopt;
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

template <typename Integer> Integer toInteger(const std::string& text) {
    const std::optional<double> value = parseNumber(text);
    if (!value) {
        return 0;
    }
    const double rounded = roundHalfToEven(*value);
    if (rounded < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<Integer>::max())) {
        return 0;
    }
    return static_cast<Integer>(rounded);
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
    return parseNumber(text).value_or(0.0);
}

} // namespace TessalyString
