#include "platform/platform.h"

namespace platform {

std::string profileValueAsRead(std::string_view written) {
    while (!written.empty() && (written.front() == ' ' || written.front() == '\t')) {
        written.remove_prefix(1);
    }
    while (!written.empty() && (written.back() == ' ' || written.back() == '\t')) {
        written.remove_suffix(1);
    }
    if (written.size() >= 2 && (written.front() == '"' || written.front() == '\'') &&
        written.back() == written.front()) {
        written = written.substr(1, written.size() - 2);
    }
    return std::string(written);
}

} // namespace platform
