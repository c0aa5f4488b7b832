// "connectioninfo.ini" of any bytes: the load never reports failure and never crashes, and every
// profile it keeps can be asked for by index and found by its name.
//
// Input: the file's bytes.
#include "fuzz_till.h"
#include "loader_limits.h"
#include "settings/connection_info.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::writeBytes(fuzzing::tillFile("config/connectioninfo.ini"),
                        std::string_view(reinterpret_cast<const char*>(data), size));
    if (!fuzzing::countIsWorthLoading("c:\\config\\connectioninfo.ini")) {
        return 0;
    }
    TConnectionInfo profiles;
    bool failed = true;
    profiles.ReadConfiguration("c:\\config\\", failed);
    fuzzing::check(!failed, "the load never reports failure");
    const std::int32_t count = profiles.lConnectionCount();
    fuzzing::check(count >= 0, "a count is never negative");
    for (std::int32_t i = 0; i < count; ++i) {
        std::string name;
        profiles.GetName(i, name);
        std::string address1, address2, address3;
        std::int32_t port1 = 0, port2 = 0, port3 = 0;
        bool missing = true;
        profiles.GetDetailsByName(name, address1, address2, address3, port1, port2, port3, missing);
        fuzzing::check(!missing, "a loaded profile is found by its name");
        profiles.IsTestMode(i);
    }
    std::string outside = "kept";
    profiles.GetName(count, outside);
    fuzzing::check(outside.empty() && !profiles.IsTestMode(count) && !profiles.IsTestMode(-1),
                   "indexes past the end give nothing");
    return 0;
}
