#include "apply/folder_snapshot.h"

#include "platform/cp1252.h"
#include "platform/platform.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

// Payment-client files are small; an archive beside them is compared by size and time only.
constexpr std::uint64_t kComparedBytes = 1 << 20;

std::optional<std::string> readAll(const std::string& windowsFile) {
    std::ifstream in(platform::hostPath(windowsFile), std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool named(const std::vector<std::string>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& n) { return cp1252::iequals(n, name); });
}

} // namespace

FolderSnapshot::FolderSnapshot(const std::string& folder)
    : folder_(folder), before_(take(folder)) {}

std::map<std::string, FolderSnapshot::Seen> FolderSnapshot::take(const std::string& folder) {
    std::map<std::string, Seen> files;
    for (const platform::FoundFile& found : platform::findFiles(folder + "*")) {
        if (found.isFolder) {
            continue;
        }
        Seen seen{found.size, found.lastWrite, std::nullopt};
        if (found.size <= kComparedBytes) {
            seen.bytes = readAll(folder + found.name);
        }
        files.emplace(found.name, std::move(seen));
    }
    return files;
}

std::vector<FileWrite> FolderSnapshot::writtenSince(const std::vector<std::string>& skip) const {
    const std::map<std::string, Seen> after = take(folder_);
    std::vector<FileWrite> written;
    std::vector<std::string> untouched;
    for (const auto& [name, now] : after) {
        const auto was = before_.find(name);
        if (was != before_.end() && was->second.lastWrite == now.lastWrite &&
            was->second.size == now.size) {
            untouched.push_back(name);
            continue;
        }
        if (named(skip, folder_ + name)) {
            continue;
        }
        const bool changed = was == before_.end() || was->second.size != now.size ||
                             !was->second.bytes || was->second.bytes != now.bytes;
        written.push_back({folder_ + name, "", changed});
    }
    // Name the source of a copy when exactly one untouched file holds the same bytes.
    for (FileWrite& write : written) {
        const auto& bytes = after.at(write.file.substr(folder_.size())).bytes;
        std::vector<std::string> twins;
        for (const std::string& name : untouched) {
            if (bytes && after.at(name).bytes == bytes) {
                twins.push_back(name);
            }
        }
        if (twins.size() == 1) {
            write.sameBytesAs = folder_ + twins.front();
        }
    }
    return written;
}
