// Month names of the time locale the environment names, as a program that called
// setlocale(LC_ALL, "") would print them, whether or not this one did.
#include "platform/cp1252.h"
#include "platform/english_months.h"
#include "platform/platform.h"

#include <clocale>
#include <cstdlib>
#include <langinfo.h>
#include <string_view>

namespace platform {
namespace {

// The locale name that decides LC_TIME, by the environment's order of precedence.
std::string timeLocaleName() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "C";
}

// How the locale's names are encoded, from its name ("de_DE.UTF-8@euro" is UTF-8); a name without
// a code set is in the locale's traditional one, Latin-1 for the Western locales.
enum class Encoding { utf8, latin, other };

Encoding encodingOf(std::string_view name) {
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos) {
        return Encoding::latin;
    }
    std::string codeset(name.substr(dot + 1, name.find('@', dot) - dot - 1));
    codeset = cp1252::toUpper(codeset);
    if (codeset == "UTF-8" || codeset == "UTF8") {
        return Encoding::utf8;
    }
    if (codeset == "ISO-8859-1" || codeset == "ISO88591" || codeset == "ISO-8859-15" ||
        codeset == "ISO885915" || codeset == "CP1252") {
        return Encoding::latin;
    }
    return Encoding::other;
}

} // namespace

std::string abbreviatedMonthName(int month) {
    if (month < 1 || month > 12) {
        return "???";
    }
    const std::string english = kEnglishMonths[static_cast<std::size_t>(month - 1)];
    const std::string name = timeLocaleName();
    const Encoding encoding = encodingOf(name);
    locale_t time = newlocale(LC_TIME_MASK, name.c_str(), static_cast<locale_t>(nullptr));
    if (time == static_cast<locale_t>(nullptr) || encoding == Encoding::other) {
        if (time != static_cast<locale_t>(nullptr)) {
            freelocale(time);
        }
        return english;
    }
    std::string local = nl_langinfo_l(static_cast<nl_item>(ABMON_1 + month - 1), time);
    freelocale(time);
    if (encoding == Encoding::utf8) {
        local = cp1252::fromUtf8(local);
    }
    // A name Windows-1252 cannot spell would come out as question marks.
    if (local.empty() || local.find('?') != std::string::npos) {
        return english;
    }
    return local;
}

} // namespace platform
