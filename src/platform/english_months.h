// The month abbreviations a log shows where no locale says otherwise.
#pragma once

#include <array>

namespace platform {

inline constexpr std::array<const char*, 12> kEnglishMonths = {
    "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

} // namespace platform
