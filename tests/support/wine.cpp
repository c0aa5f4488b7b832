#include "support/wine.h"

#include "platform/platform.h"

#include <gtest/gtest.h>
#include <vector>

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

namespace {

// The NUL-separated names the profile functions list for a null section or key.
std::vector<std::string> names(const char* section, const std::string& file) {
    std::vector<char> buffer(65536);
    const unsigned long count = platform::getPrivateProfileString(
        section, nullptr, "", buffer.data(), static_cast<unsigned long>(buffer.size()), file);
    std::vector<std::string> list;
    for (std::size_t start = 0; start < count;) {
        list.emplace_back(buffer.data() + start);
        start += list.back().size() + 1;
    }
    return list;
}

} // namespace

std::string profileValues(const std::string& windowsFile) {
    std::string text;
    std::vector<char> value(65536);
    for (const std::string& section : names(nullptr, windowsFile)) {
        for (const std::string& key : names(section.c_str(), windowsFile)) {
            const unsigned long count = platform::getPrivateProfileString(
                section.c_str(), key.c_str(), "", value.data(),
                static_cast<unsigned long>(value.size()), windowsFile);
            text += "[" + section + "] " + key + "=" + std::string(value.data(), count) + "\n";
        }
    }
    return text;
}

void expectProfileFile(const TempTill& till, const std::filesystem::path& file,
                       const std::string& expected) {
    if (!runningUnderWine()) {
        EXPECT_EQ(readBytes(file), expected) << file;
        return;
    }
    const std::filesystem::path copy = till.plant("expected.ini", expected);
    EXPECT_EQ(profileValues(file.string()), profileValues(copy.string())) << file;
}
