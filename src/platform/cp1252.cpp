#include "platform/cp1252.h"

#include <array>
#include <cstdint>

namespace cp1252 {
namespace {

// Code points of 0x80..0x9F; 0xFFFD marks the five unassigned bytes.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

char32_t codePoint(unsigned char b) {
    if (b >= 0x80 && b < 0xA0) {
        return kHigh[b - 0x80];
    }
    return b;
}

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

char fromCodePoint(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<char>(cp);
    }
    for (std::size_t i = 0; i < kHigh.size(); ++i) {
        if (kHigh[i] == cp && cp != 0xFFFD) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

} // namespace

char toUpper(char c) {
    const auto b = static_cast<unsigned char>(c);
    if (b >= 'a' && b <= 'z') {
        return static_cast<char>(b - 32);
    }
    if (b >= 0xE0 && b <= 0xFE && b != 0xF7) {
        return static_cast<char>(b - 32);
    }
    switch (b) {
    case 0x9A:
        return static_cast<char>(0x8A); // š
    case 0x9C:
        return static_cast<char>(0x8C); // œ
    case 0x9E:
        return static_cast<char>(0x8E); // ž
    case 0xFF:
        return static_cast<char>(0x9F); // ÿ
    default:
        return c;
    }
}

bool iequals(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (toUpper(a[i]) != toUpper(b[i])) {
            return false;
        }
    }
    return true;
}

std::string toUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out) {
        c = toUpper(c);
    }
    return out;
}

std::string toUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        appendUtf8(out, codePoint(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string fromUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto b = static_cast<unsigned char>(utf8[i]);
        int extra = b < 0x80           ? 0
                    : (b >> 5) == 0x6  ? 1
                    : (b >> 4) == 0xE  ? 2
                    : (b >> 3) == 0x1E ? 3
                                       : -1;
        if (extra < 0 || i + extra >= utf8.size() + (extra == 0 ? 1 : 0)) {
            out += '?';
            ++i;
            continue;
        }
        char32_t cp = extra == 0 ? b : (b & (0x3F >> extra));
        for (int k = 1; k <= extra; ++k) {
            cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        }
        out += fromCodePoint(cp);
        i += static_cast<std::size_t>(extra) + 1;
    }
    return out;
}

bool isUtf8(std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        const int extra = b < 0x80                 ? 0
                          : b >= 0xC2 && b <= 0xDF ? 1
                          : (b >> 4) == 0xE        ? 2
                          : b >= 0xF0 && b <= 0xF4 ? 3
                                                   : -1;
        if (extra < 0 || i + static_cast<std::size_t>(extra) >= bytes.size() + (extra == 0)) {
            return false;
        }
        char32_t cp = extra == 0 ? b : (b & (0x3F >> extra));
        for (int k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            if ((next & 0xC0) != 0x80) {
                return false;
            }
            cp = (cp << 6) | (next & 0x3F);
        }
        const char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
        if (cp < smallest[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            return false;
        }
        i += static_cast<std::size_t>(extra) + 1;
    }
    return true;
}

} // namespace cp1252
