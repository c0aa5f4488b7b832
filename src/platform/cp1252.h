// Windows-1252, the till's single-byte code page: case folding for the case-insensitive names of
// files, registry keys and INI sections, and the conversion to and from UTF-8 for the UI.
#pragma once

#include <string>
#include <string_view>

namespace cp1252 {

// The upper-case form of one byte, as Windows folds ANSI names (ASCII and the Latin letters).
char toUpper(char c);

// Byte-wise case-insensitive equality.
bool iequals(std::string_view a, std::string_view b);

std::string toUpper(std::string_view text);

// Every byte has a mapping; the five bytes Windows-1252 leaves undefined map to U+FFFD.
std::string toUtf8(std::string_view text);

// Whether the bytes are well-formed UTF-8 (no overlong forms, surrogates or values past U+10FFFF).
bool isUtf8(std::string_view bytes);

// Characters Windows-1252 cannot hold become '?', as WideCharToMultiByte's default character.
std::string fromUtf8(std::string_view utf8);

} // namespace cp1252
