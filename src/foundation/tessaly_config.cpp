#include "foundation/tessaly_config.h"

namespace TessalyConfig {

std::string AddBackslash(const std::string& path) {
    // An empty path has no last character to look at; it is given back as it is, never as "\"
    // (which would point at the root of the drive).
    if (path.empty() || path.back() == '\\') {
        return path;
    }
    return path + '\\';
}

} // namespace TessalyConfig
