// The main of every test program: fixed time zone and locale, so dates, month names and numbers
// read the same on every machine.
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

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
