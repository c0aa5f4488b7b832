// What a configuration run asked to write, read back after it. The settings store, the hook setup
// and the ZonTalk profiles swallow their own failures, as the add-in always has; the wizard and
// parvane-apply open an audit around the run to learn all the same which values did not land.
#pragma once

#include <map>
#include <string>
#include <vector>

class WriteAudit {
public:
    // Opens the audit: from now on every registry value and INI key the system asks to write is
    // noted (the last value asked for each).
    WriteAudit();
    ~WriteAudit();
    WriteAudit(const WriteAudit&) = delete;
    WriteAudit& operator=(const WriteAudit&) = delete;

    // Each noted write the till does not hold now, as "where: expected ..., found ..." (the
    // Corvix password shown as "***").
    std::vector<std::string> notHeld() const;

    // Called by the registry and INI-file access while an audit is open.
    static void registryWrite(const std::string& keyPath, const std::string& valueName,
                              const std::string& value);
    static void iniWrite(const std::string& file, const std::string& section,
                         const std::string& key, const std::string& value);

private:
    struct Write {
        std::string where; // the key path, or the INI file
        std::string section;
        std::string name;
        std::string value; // as a reader gets it back
    };
    // By the write's place with names folded, as Windows matches them; the last value asked wins.
    std::map<std::string, Write> registry_;
    std::map<std::string, Write> ini_;
    WriteAudit* previous_;
};
