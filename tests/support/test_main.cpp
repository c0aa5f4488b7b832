// The main of every test program: fixed time zone and locale, so dates and numbers read the
// same on every machine.
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    setenv("TZ", "UTC", 1);
    tzset();
    std::setlocale(LC_ALL, "C");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
