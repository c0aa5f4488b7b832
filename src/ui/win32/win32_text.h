// The face's edge between the till's Windows-1252 text and the wide (UTF-16) window functions.
//
// The wide functions are used throughout, with an explicit Windows-1252 conversion here, rather
// than the ANSI ones: an ANSI window function reads bytes in the machine's own code page, which on
// a till set up for another language (or for UTF-8) is not 1252, and would show "\xE9" as another
// letter. Converting here keeps every byte the core holds exactly what it was, whatever the
// till's code page; the controls of comctl32 version 6 are wide underneath anyway.
#pragma once

#include <string>
#include <string_view>

std::wstring wideText(std::string_view tillText);

// Characters Windows-1252 cannot hold become '?', as WideCharToMultiByte's default character.
std::string tillText(std::wstring_view wide);
