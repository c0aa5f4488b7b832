#include "foundation/ini_file.h"

#include "foundation/write_audit.h"
#include "platform/platform.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace {

constexpr unsigned long kValueBufferSize = 2048;

} // namespace

std::string TTLIniFile::GetINIString(const std::string& section, const std::string& key,
                                     const std::string& defaultValue) const {
    try {
        std::string buffer(kValueBufferSize, ' ');
        const unsigned long length = platform::getPrivateProfileString(
            section.c_str(), key.c_str(), defaultValue.c_str(), buffer.data(), kValueBufferSize,
            strIniFileDir + strIniFileName);
        buffer.resize(std::min<unsigned long>(length, kValueBufferSize - 1));
        return buffer;
    } catch (...) {
        return defaultValue;
    }
}

std::int32_t TTLIniFile::SetINIString(const std::string& section, const std::string& key,
                                      const std::string& value) {
    try {
        // Reading uses the folder as given; writing completes it, and the completion stays on
        // the property, so a folder set without its backslash is read glued to the file name
        // until the first write. The asymmetry is deliberate and kept.
        if (strIniFileDir.empty() || strIniFileDir.back() != '\\') {
            strIniFileDir += '\\';
        }
        WriteAudit::iniWrite(strIniFileDir + strIniFileName, section, key, value);
        return platform::writePrivateProfileString(section.c_str(), key.c_str(), value.c_str(),
                                                   strIniFileDir + strIniFileName)
                   ? 1
                   : 0;
    } catch (...) {
        return 0;
    }
}

std::int16_t TTLIniFile::FillSingleLineValues(std::vector<std::string>& items,
                                              const std::string& text,
                                              std::int16_t separator) const {
    std::int16_t count = 0;
    try {
        std::string item;
        // Each stored item is followed by one empty element: callers walk the array up to its
        // last element and treat the empty one as the end.
        const auto store = [&] {
            if (item.empty()) {
                return;
            }
            if (count == std::numeric_limits<std::int16_t>::max()) {
                throw std::overflow_error("too many items");
            }
            items.resize(static_cast<std::size_t>(count) + 2);
            items[static_cast<std::size_t>(count)] = item;
            items[static_cast<std::size_t>(count) + 1].clear();
            ++count;
            item.clear();
        };
        for (const char c : text) {
            if (static_cast<unsigned char>(c) == separator) {
                store();
            } else {
                item += c;
            }
        }
        store();
    } catch (...) {
    }
    return count;
}

std::int32_t TTLIniFile::FillBoxWithLineValues(ListControl& box, const std::string& text,
                                               std::int16_t separator) const {
    std::int32_t added = 0;
    try {
        std::vector<std::string> items;
        const std::int16_t count = FillSingleLineValues(items, text, separator);
        if (count == 0) {
            return 0;
        }
        box.Clear();
        for (std::int16_t i = 0; i < count; ++i) {
            box.AddItem(items[static_cast<std::size_t>(i)]);
            ++added;
        }
    } catch (...) {
    }
    return added;
}

std::int32_t TTLIniFile::FillBoxWithMultiLineValues(ListControl& box, const std::string& section,
                                                    std::int32_t count) const {
    std::int32_t added = 0;
    try {
        for (std::int32_t i = 1; i <= count; ++i) {
            const std::string value = GetINIString(section, std::to_string(i), "");
            if (!value.empty()) {
                box.AddItem(value);
                ++added;
            }
        }
    } catch (...) {
    }
    return added;
}
