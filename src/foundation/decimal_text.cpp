#include "foundation/decimal_text.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace decimal_text {
namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
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

// The parts of a well-formed number, for telling an overflow from a value too small to hold.
struct Shape {
    bool wellFormed = false;
    bool wholeDigitAboveZero = false; // a digit other than 0 before the point
    bool negativeExponent = false;
};

std::size_t skipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at;
}

Shape shapeOf(std::string_view text) {
    Shape shape;
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
        ++at;
    }
    const std::size_t wholeEnd = skipDigits(text, at);
    bool anyDigit = wholeEnd > at;
    shape.wholeDigitAboveZero =
        text.substr(at, wholeEnd - at).find_first_not_of('0') != std::string_view::npos;
    at = wholeEnd;
    if (at < text.size() && text[at] == '.') {
        const std::size_t fractionEnd = skipDigits(text, at + 1);
        anyDigit = anyDigit || fractionEnd > at + 1;
        at = fractionEnd;
    }
    if (!anyDigit) {
        return shape;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            shape.negativeExponent = text[at] == '-';
            ++at;
        }
        const std::size_t exponentEnd = skipDigits(text, at);
        if (exponentEnd == at) {
            return shape;
        }
        at = exponentEnd;
    }
    shape.wellFormed = at == text.size();
    return shape;
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

Reading readDecimal(std::string_view text) {
    std::string_view number = trimBlanks(text);
    const Shape shape = shapeOf(number);
    if (!shape.wellFormed) {
        return {0.0, Fault::notANumber};
    }
    if (number.front() == '+') {
        number.remove_prefix(1); // from_chars takes only a minus sign
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::result_out_of_range) {
        // Out of range either way: too large, or too close to 0 to hold, which is simply 0.
        const bool tiny = shape.negativeExponent || !shape.wholeDigitAboveZero;
        return tiny ? Reading{0.0, Fault::none} : Reading{0.0, Fault::overflow};
    }
    if (error != std::errc() || end != number.data() + number.size()) {
        return {0.0, Fault::notANumber};
    }
    return {value, Fault::none};
}

Reading readWhole(std::string_view text, double lowest, double highest) {
    Reading reading = readDecimal(text);
    if (reading.fault != Fault::none) {
        return reading;
    }
    reading.value = roundHalfToEven(reading.value);
    if (reading.value < lowest || reading.value > highest) {
        return {0.0, Fault::overflow};
    }
    return reading;
}

std::string shortestText(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return result.ec == std::errc() ? std::string(buffer, result.ptr) : std::string("0");
}

} // namespace decimal_text
