#include "support/till_readers.h"

#include "foundation/registry.h"
#include "settings/settings_table.h"
#include "support/temp_till.h"

#include <gtest/gtest.h>
#include <sstream>

#ifndef _WIN32
#include "platform/posix/ini_document.h"

#include <sqlite3.h>
#endif

std::string registryValue(const std::string& key, const std::string& name) {
    std::string value;
    return TRegistry().GetRegistryValue(key, name, value) == 0 ? value : "<missing>";
}

std::string addinValue(const std::string& name) {
    return registryValue(std::string(kCcAddinKeyPath), name);
}

std::map<std::string, std::string> addinSettings() {
    std::map<std::string, std::string> values;
    for (const SettingDescriptor& descriptor : settingsTable()) {
        values[std::string(descriptor.valueName)] = addinValue(std::string(descriptor.valueName));
    }
    return values;
}

Lines logMessages(const std::filesystem::path& log, bool stamped) {
    Lines lines;
    std::istringstream in(readBytes(log));
    for (std::string line; std::getline(in, line);) {
        line = line.substr(0, line.find_last_not_of('\r') + 1);
        lines.push_back(stamped ? line : line.substr(line.find(" : ") + 3));
    }
    return lines;
}

#ifndef _WIN32
IniValues iniValues(const std::filesystem::path& file) {
    const platform::posix::IniDocument document(readBytes(file));
    IniValues values;
    for (const std::string& section : document.sectionNames()) {
        for (const std::string& key : document.keyNames(section)) {
            values.emplace(std::make_pair(section, key),
                           document.value(section, key).value_or("<none>"));
        }
    }
    return values;
}

Lines sqlRows(const std::filesystem::path& database, const std::string& statements) {
    sqlite3* db = nullptr;
    Lines rows;
    EXPECT_EQ(sqlite3_open(database.c_str(), &db), SQLITE_OK);
    const auto collect = [](void* out, int, char** values, char**) {
        static_cast<Lines*>(out)->push_back(values[0] != nullptr ? values[0] : "NULL");
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(db, statements.c_str(), collect, &rows, nullptr), SQLITE_OK);
    sqlite3_close(db);
    return rows;
}

Lines readerRows(const std::filesystem::path& database) {
    return sqlRows(database, "SELECT Localhost || '|' || DeviceName || '|' || Hostname || '|' || "
                             "SmartCardReaderType || '|' || ReaderCapabilities "
                             "FROM SmartcardReaders_T ORDER BY ReaderId;");
}
#endif
