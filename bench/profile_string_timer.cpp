// Times one key read and one key write of a file through the profile-string functions, in
// microseconds per call: on Linux through this program's INI engine, built for Windows through
// the Windows functions (run under Wine by scripts/bench, on the same file, for a ratio).
// Usage: profile_string_timer FILE SECTION KEY CALLS   (FILE as the platform names it)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

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
} // namespace
#endif

int main(int argc, char** argv) {
    if (argc != 5) {
        std::fprintf(stderr, "usage: profile_string_timer FILE SECTION KEY CALLS\n");
        return 2;
    }
    const std::string file = argv[1];
    const int calls = std::atoi(argv[4]);
    using Steady = std::chrono::steady_clock;
    char buffer[2048];

    auto start = Steady::now();
    for (int i = 0; i < calls; ++i) {
        if (readKey(argv[2], argv[3], buffer, sizeof buffer, file) == 0) {
            std::fprintf(stderr, "the key is missing\n");
            return 1;
        }
    }
    const double readMicros =
        std::chrono::duration<double, std::micro>(Steady::now() - start).count() / calls;

    start = Steady::now();
    for (int i = 0; i < calls; ++i) {
        if (!writeKey(argv[2], argv[3], std::to_string(i).c_str(), file)) {
            std::fprintf(stderr, "the write failed\n");
            return 1;
        }
    }
    const double writeMicros =
        std::chrono::duration<double, std::micro>(Steady::now() - start).count() / calls;
    std::printf("%.1f %.1f\n", readMicros, writeMicros);
    return 0;
}
