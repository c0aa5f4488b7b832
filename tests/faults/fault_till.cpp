#include "fault_till.h"

namespace fs = std::filesystem;

const std::string kProgramFolder = "C:\\Program Files\\Tessaly\\";

fs::path clientFile(const TempTill& till, const std::string& name) {
    return till.driveC() / "Program Files" / "Tessaly" / name;
}
