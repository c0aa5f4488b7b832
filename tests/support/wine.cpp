#include "support/wine.h"

#ifdef _WIN32
#include <windows.h>
#endif

bool runningUnderWine() {
#ifdef _WIN32
    // Wine's ntdll exports its version; Windows' does not.
    const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
    return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
#else
    return false;
#endif
}
