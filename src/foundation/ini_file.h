// One INI file, read and written a key at a time through the profile-string functions, plus the
// list fills that turn a separated text or a numbered section into list items.
#pragma once

#include "foundation/list_control.h"

#include <cstdint>
#include <string>
#include <vector>

class TTLIniFile {
public:
    // The value of the key, or `defaultValue` when the file, section or key is missing. The path
    // is strIniFileDir followed directly by strIniFileName: no backslash is added here.
    std::string GetINIString(const std::string& section, const std::string& key,
                             const std::string& defaultValue) const;

    // Writes the key, making file, section and key as needed. Completes strIniFileDir with a
    // trailing backslash first, and the completed folder stays. Non-zero on success, 0 on failure.
    std::int32_t SetINIString(const std::string& section, const std::string& key,
                              const std::string& value);

    // Splits `text` at the separator (a character code), dropping empty items. Item i goes to
    // items[i] and one empty element always follows the last item, so items.size() is the count
    // plus one; with no item at all the vector is left as it was. Returns the number of items.
    std::int16_t FillSingleLineValues(std::vector<std::string>& items, const std::string& text,
                                      std::int16_t separator) const;

    // Replaces the box's items by the split items; with no item the box keeps what it had.
    std::int32_t FillBoxWithLineValues(ListControl& box, const std::string& text,
                                       std::int16_t separator) const;

    // Appends the non-empty values of keys "1" to `count` of the section, in key order, without
    // clearing the box. Returns the number added.
    std::int32_t FillBoxWithMultiLineValues(ListControl& box, const std::string& section,
                                            std::int32_t count) const;

    std::string strIniFileDir;  // the folder, normally ending in a backslash
    std::string strIniFileName; // the file name within that folder
};
