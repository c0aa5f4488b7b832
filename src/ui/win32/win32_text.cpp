#include "ui/win32/win32_text.h"

#include <windows.h>

namespace {
constexpr UINT kTillCodePage = 1252;
} // namespace

std::wstring wideText(std::string_view tillText) {
    if (tillText.empty()) {
        return {};
    }
    const int size = static_cast<int>(tillText.size());
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    const int length =
        MultiByteToWideChar(kTillCodePage, 0, tillText.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length > 0 ? length : 0));
    return wide;
}

std::string tillText(std::wstring_view wide) {
    if (wide.empty()) {
        return {};
    }
    const int size = static_cast<int>(wide.size());
    std::string text(static_cast<std::size_t>(size) * 2, '\0');
    const int length = WideCharToMultiByte(kTillCodePage, 0, wide.data(), size, text.data(),
                                           static_cast<int>(text.size()), "?", nullptr);
    text.resize(static_cast<std::size_t>(length > 0 ? length : 0));
    return text;
}
