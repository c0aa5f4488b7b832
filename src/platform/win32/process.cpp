// Hidden processes, waits and shell opens through the Windows functions (<windows.h> brings
// ShellExecuteA in).
#include "platform/english_months.h"
#include "platform/platform.h"
#include "platform/win32/win32_error.h"

#include <stdexcept>
#include <windows.h>

namespace platform {

std::uint32_t startHidden(const std::string& commandLine) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_HIDE;
    PROCESS_INFORMATION started{};
    // CreateProcessA may write into the command line, so it gets a copy of its own.
    std::string writable = commandLine;
    if (!CreateProcessA(nullptr, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &started)) {
        throw std::runtime_error(win32::lastErrorDescription());
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return started.dwProcessId;
}

void waitForProcess(std::uint32_t processId) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, processId);
    if (process == nullptr) {
        return; // already gone: nothing to wait for
    }
    WaitForSingleObject(process, INFINITE);
    CloseHandle(process);
}

std::intptr_t shellOpen(const std::string& windowsFile, const std::string& parameters) {
    const HINSTANCE result =
        ShellExecuteA(nullptr, "open", windowsFile.c_str(),
                      parameters.empty() ? nullptr : parameters.c_str(), nullptr, SW_HIDE);
    return reinterpret_cast<std::intptr_t>(result);
}

std::string computerName() {
    // Room for 255 characters, as the installer has always asked with; the name is cut at its
    // first NUL by the caller.
    char name[255] = {};
    DWORD length = sizeof name;
    if (!GetComputerNameA(name, &length)) {
        return "";
    }
    return std::string(name, length);
}

// Read as text in UTF-16 and written in Windows-1252 whatever the till's ANSI code page, so the
// log stays in the one code page of everything the program writes.
std::string abbreviatedMonthName(int month) {
    if (month < 1 || month > 12) {
        return "???";
    }
    wchar_t wide[80] = {};
    const LCTYPE item = static_cast<LCTYPE>(LOCALE_SABBREVMONTHNAME1 + month - 1);
    const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, item, wide, 80);
    char text[160] = {};
    BOOL lossy = FALSE;
    const int bytes = length > 1 ? WideCharToMultiByte(1252, 0, wide, length - 1, text, sizeof text,
                                                       nullptr, &lossy)
                                 : 0;
    if (bytes <= 0 || lossy) {
        return kEnglishMonths[static_cast<std::size_t>(month - 1)];
    }
    return std::string(text, static_cast<std::size_t>(bytes));
}

} // namespace platform
