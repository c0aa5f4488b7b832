// On Windows the registry is the machine's own and cannot be copied aside for a dry run.
#include "platform/scratch_till.h"

#include <stdexcept>

namespace platform {

ScratchTill::ScratchTill(const std::vector<std::string>&) {
    throw std::runtime_error("a plan needs a till folder to copy; on Windows make the plan on a "
                             "Linux copy of the till");
}

ScratchTill::~ScratchTill() = default;

bool ScratchTill::available() {
    return false;
}

} // namespace platform
