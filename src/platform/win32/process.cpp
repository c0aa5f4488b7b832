// Hidden processes, waits and shell opens through the Windows functions (<windows.h> brings
// ShellExecuteA in).
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

} // namespace platform
