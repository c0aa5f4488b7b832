// The main of every test program: fixed time zone and locale, so dates, month names and numbers
// read the same on every machine.
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

// Under LeakSanitizer: what the libraries keep for the life of the process is not a leak of ours.
// fontconfig keeps its font caches (the Qt face's test); glibc keeps the locale path it was given
// in LOCPATH (the log's month test).
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig.so\nleak:__argz_add_sep\n";
}

int main(int argc, char** argv) {
#ifdef _WIN32
    _putenv_s("TZ", "UTC");
    _putenv_s("LC_ALL", "C.UTF-8");
    _tzset();
#else
    setenv("TZ", "UTC", 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    tzset();
#endif
    std::setlocale(LC_ALL, "C");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
