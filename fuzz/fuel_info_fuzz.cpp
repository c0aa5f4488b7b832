// "fuelinfo.ini" of any bytes: the load never crashes, a failure always carries its message, and
// every entry it keeps can be asked for by index and its prefix found by its name.
//
// Input: the file's bytes.
#include "fuzz_till.h"
#include "loader_limits.h"
#include "settings/fuel_info.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::writeBytes(fuzzing::tillFile("config/fuelinfo.ini"),
                        std::string_view(reinterpret_cast<const char*>(data), size));
    if (!fuzzing::countIsWorthLoading("c:\\config\\fuelinfo.ini")) {
        return 0;
    }
    TFuelInfo fuel;
    if (fuel.ReadConfiguration("c:\\config")) {
        fuzzing::check(fuel.strErrorMessage.starts_with("TFuelInfo.ReadConfiguration() Failed - "),
                       "a failed load says why");
    }
    const std::int32_t count = fuel.lFuelInfoCount();
    fuzzing::check(count >= 0, "a count is never negative");
    for (std::int32_t i = 0; i < count; ++i) {
        fuel.GetZontalkAppPrefix(fuel.GetFuelName(i));
    }
    fuzzing::check(fuel.GetFuelName(count).empty() && fuel.GetFuelName(-1).empty(),
                   "indexes outside the table give nothing");
    return 0;
}
