// Times profile-string and registry calls: on Linux through this program's platform layer, built
// for Windows through the Windows functions (run under Wine by scripts/bench, on the same files,
// for a ratio). Prints microseconds per call, or milliseconds per whole pass.
// Usage: profile_string_timer FILE SECTION KEY CALLS   one key read and written CALLS times
//        profile_string_timer --numbered FILE SECTION  Count, then every key 1..Count, once
//        profile_string_timer --registry CALLS         89 values of one key read, CALLS times
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
namespace {
unsigned long readKey(const char* section, const char* key, char* buffer, unsigned long size,
                      const std::string& file) {
    return GetPrivateProfileStringA(section, key, "", buffer, size, file.c_str());
}
bool writeKey(const char* section, const char* key, const char* value, const std::string& file) {
    return WritePrivateProfileStringA(section, key, value, file.c_str()) != 0;
}
using Key = HKEY;
bool createKey(const char* path, Key& key) {
    return RegCreateKeyExA(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                           nullptr) == ERROR_SUCCESS;
}
bool openKey(const char* path, Key& key) {
    return RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &key) == ERROR_SUCCESS;
}
void setText(Key key, const std::string& name, const std::string& value) {
    RegSetValueExA(key, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>(value.size()));
}
bool queryText(Key key, const std::string& name, char* buffer, std::uint32_t size) {
    DWORD length = size;
    return RegQueryValueExA(key, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(buffer),
                            &length) == ERROR_SUCCESS;
}
void closeKey(Key key) {
    RegCloseKey(key);
}
} // namespace
#else
#include "platform/platform.h"
namespace {
unsigned long readKey(const char* section, const char* key, char* buffer, unsigned long size,
                      const std::string& file) {
    return platform::getPrivateProfileString(section, key, "", buffer, size, file);
}
bool writeKey(const char* section, const char* key, const char* value, const std::string& file) {
    return platform::writePrivateProfileString(section, key, value, file);
}
using Key = platform::RegKey;
bool createKey(const char* path, Key& key) {
    return platform::regCreateKey(path, key) == platform::kErrorSuccess;
}
bool openKey(const char* path, Key& key) {
    return platform::regOpenKey(path, key) == platform::kErrorSuccess;
}
void setText(Key key, const std::string& name, const std::string& value) {
    platform::regSetValue(key, name, platform::kRegSz,
                          reinterpret_cast<const unsigned char*>(value.data()),
                          static_cast<std::uint32_t>(value.size()));
}
bool queryText(Key key, const std::string& name, char* buffer, std::uint32_t size) {
    return platform::regQueryValue(key, name, nullptr, reinterpret_cast<unsigned char*>(buffer),
                                   &size) == platform::kErrorSuccess;
}
void closeKey(Key key) {
    platform::regCloseKey(key);
}
} // namespace
#endif

namespace {

using Steady = std::chrono::steady_clock;

double millisSince(Steady::time_point start) {
    return std::chrono::duration<double, std::milli>(Steady::now() - start).count();
}

int timeOneKey(const std::string& file, const char* section, const char* key, int calls) {
    char buffer[2048];
    auto start = Steady::now();
    for (int i = 0; i < calls; ++i) {
        if (readKey(section, key, buffer, sizeof buffer, file) == 0) {
            std::fprintf(stderr, "the key is missing\n");
            return 1;
        }
    }
    const double readMicros = millisSince(start) * 1000 / calls;
    start = Steady::now();
    for (int i = 0; i < calls; ++i) {
        if (!writeKey(section, key, std::to_string(i).c_str(), file)) {
            std::fprintf(stderr, "the write failed\n");
            return 1;
        }
    }
    std::printf("%.1f %.1f\n", readMicros, millisSince(start) * 1000 / calls);
    return 0;
}

// As the profile loader reads: the count, then each numbered key into a 2,048-byte buffer.
int timeNumberedKeys(const std::string& file, const char* section) {
    char buffer[2048];
    const auto start = Steady::now();
    readKey(section, "Count", buffer, sizeof buffer, file);
    const long count = std::atol(buffer);
    long found = 0;
    for (long key = 1; key <= count; ++key) {
        found += readKey(section, std::to_string(key).c_str(), buffer, sizeof buffer, file) > 0;
    }
    if (count == 0 || found != count) {
        std::fprintf(stderr, "%ld of %ld keys found\n", found, count);
        return 1;
    }
    std::printf("%.3f\n", millisSince(start));
    return 0;
}

int timeRegistry(int calls) {
    const char* const path = "SOFTWARE\\ParvaneBench";
    std::vector<std::string> names;
    Key key{};
    if (!createKey(path, key)) {
        std::fprintf(stderr, "cannot create the key\n");
        return 1;
    }
    for (int i = 0; i < 89; ++i) {
        names.push_back("Setting" + std::to_string(i));
        setText(key, names.back(), "value " + std::to_string(i));
    }
    closeKey(key);
    char buffer[256];
    const auto start = Steady::now();
    for (int call = 0; call < calls; ++call) {
        for (const std::string& name : names) {
            if (!openKey(path, key) || !queryText(key, name, buffer, sizeof buffer)) {
                std::fprintf(stderr, "cannot read %s\n", name.c_str());
                return 1;
            }
            closeKey(key);
        }
    }
    std::printf("%.4f\n", millisSince(start) / calls);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "--numbered" && argc == 4) {
        return timeNumberedKeys(argv[2], argv[3]);
    }
    if (mode == "--registry" && argc == 3) {
        return timeRegistry(std::atoi(argv[2]));
    }
    if (argc == 5 && !mode.starts_with("--")) {
        return timeOneKey(argv[1], argv[2], argv[3], std::atoi(argv[4]));
    }
    std::fprintf(stderr, "usage: profile_string_timer FILE SECTION KEY CALLS\n"
                         "       profile_string_timer --numbered FILE SECTION\n"
                         "       profile_string_timer --registry CALLS\n");
    return 2;
}
