// Windows paths on a Linux till: C: is <till root>/drive_c, Z: is the host's "/", any other
// letter <till root>/drive_<letter>. Names are found case-insensitively, as on NTFS, so a path
// written "C:\Tessaly\CCAddin" finds the folder stored as "tessaly/ccaddin"; a name that does not
// exist yet keeps the case it was given.
#include "platform/cp1252.h"
#include "platform/platform.h"
#include "platform/posix/till_root.h"

#include <cctype>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace platform {
namespace {

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool hasDriveLetter(const std::string& path) {
    return path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0]));
}

// Windows drops trailing dots and blanks of a name ("file.txt. " is "file.txt").
std::string withoutTrailingDotsAndBlanks(const std::string& name) {
    if (name == "." || name == "..") {
        return name;
    }
    std::size_t end = name.size();
    while (end > 0 && (name[end - 1] == '.' || name[end - 1] == ' ')) {
        --end;
    }
    return name.substr(0, end);
}

std::vector<std::string> components(const std::string& path, std::size_t from) {
    std::vector<std::string> parts;
    std::string current;
    for (std::size_t i = from; i <= path.size(); ++i) {
        if (i == path.size() || isSeparator(path[i])) {
            current = withoutTrailingDotsAndBlanks(current);
            if (current == "..") {
                if (!parts.empty()) {
                    parts.pop_back();
                }
            } else if (!current.empty() && current != ".") {
                parts.push_back(current);
            }
            current.clear();
        } else {
            current += path[i];
        }
    }
    return parts;
}

fs::path driveFolder(char letter) {
    const char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    if (lower == 'z') {
        return fs::path("/");
    }
    return posix::tillRoot() / (std::string("drive_") + lower);
}

// The stored name in `folder` that matches `name`: the exact name when it exists, else the first
// case-insensitive match in name order, else nothing.
std::string storedName(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::exists(folder / name, error)) {
        return name;
    }
    std::string best;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        const std::string candidate = it->path().filename().string();
        if (cp1252::iequals(candidate, name) && (best.empty() || candidate < best)) {
            best = candidate;
        }
    }
    return best;
}

// A path that exists as written is found with one stat call: every name along it is then its own
// exact match, which wins.
fs::path resolveBelow(fs::path base, const std::vector<std::string>& parts) {
    fs::path exact = base;
    for (const std::string& part : parts) {
        exact /= part;
    }
    std::error_code error;
    if (fs::exists(exact, error)) {
        return exact;
    }
    bool matching = true;
    for (const std::string& part : parts) {
        std::string name = part;
        if (matching) {
            const std::string found = storedName(base, part);
            if (found.empty()) {
                matching = false;
            } else {
                name = found;
            }
        }
        base /= name;
    }
    return base;
}

} // namespace

std::string hostPath(const std::string& windowsPath) {
    if (windowsPath.size() >= 2 && isSeparator(windowsPath[0]) && isSeparator(windowsPath[1])) {
        throw std::runtime_error("network path " + windowsPath + " is not supported on this till");
    }
    fs::path base;
    std::size_t from = 0;
    if (hasDriveLetter(windowsPath)) {
        base = driveFolder(windowsPath[0]);
        from = 2;
    } else if (!windowsPath.empty() && isSeparator(windowsPath[0])) {
        base = driveFolder('c');
    } else {
        base = fs::current_path();
    }
    std::string host = resolveBelow(base, components(windowsPath, from)).string();
    if (!windowsPath.empty() && isSeparator(windowsPath.back()) && host.back() != '/') {
        host += '/';
    }
    return host;
}

std::string windowsPath(const std::string& hostPathText) {
    const fs::path host = fs::absolute(fs::path(hostPathText)).lexically_normal();
    std::string drive = "Z:";
    fs::path relative = host.relative_path();
    try {
        const fs::path root = posix::tillRoot().lexically_normal();
        for (const auto& entry : fs::directory_iterator(root)) {
            const std::string name = entry.path().filename().string();
            if (name.size() != 7 || !cp1252::iequals(name.substr(0, 6), "drive_")) {
                continue;
            }
            const fs::path inside = host.lexically_relative(entry.path().lexically_normal());
            if (!inside.empty() && *inside.begin() != "..") {
                drive = std::string(1, cp1252::toUpper(name[6])) + ":";
                relative = inside == "." ? fs::path() : inside;
                break;
            }
        }
    } catch (const std::exception&) {
        // Without a till every host path is on Z:, as it is for Wine.
    }
    std::string text = drive;
    for (const auto& part : relative) {
        if (!part.empty()) {
            text += "\\" + part.string();
        }
    }
    if (text.size() == 2 || (!hostPathText.empty() && hostPathText.back() == '/')) {
        text += "\\";
    }
    return text;
}

std::string programFolder() {
    std::string folder = windowsPath(posix::executablePath().parent_path().string());
    if (folder.back() != '\\') {
        folder += '\\';
    }
    return folder;
}

} // namespace platform
