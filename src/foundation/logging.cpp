#include "foundation/logging.h"

#include "foundation/clock.h"
#include "foundation/file_system.h"
#include "platform/platform.h"

#include <cstdint>
#include <cstdio>
#include <fstream>

namespace {

// A log of exactly this size stays; one byte more goes to the archive.
constexpr std::int64_t kArchiveLimit = 1048576;

// Runs shorter than this are dates, times, amounts and references, never card numbers.
constexpr std::size_t kShortestCardNumber = 13;
constexpr std::size_t kDigitsLeftVisible = 4;

// Only these control codes have names in the log; the rest, tab included, show their number.
// Support staff read logs with this table in mind, so it stays partial.
struct ControlName {
    unsigned char code;
    const char* name;
};
constexpr ControlName kControlNames[] = {{0, "NUL"}, {1, "SOH"}, {2, "STX"},  {3, "ETX"},
                                         {4, "EOT"}, {5, "ENQ"}, {6, "ACK"},  {7, "BEL"},
                                         {10, "LF"}, {13, "CR"}, {16, "DLE"}, {21, "NAK"},
                                         {28, "FS"}, {30, "RS"}, {31, "US"}};

const char* controlName(unsigned char code) {
    for (const ControlName& entry : kControlNames) {
        if (entry.code == code) {
            return entry.name;
        }
    }
    return nullptr;
}

// "03 Mar 2025: 14:05:09 : ", the month as the till's locale abbreviates it.
std::string stamp(const DateTime& now) {
    const std::string month = platform::abbreviatedMonthName(now.month);
    char text[96];
    std::snprintf(text, sizeof text, "%02d %s %04d: %02d:%02d:%02d : ", now.day, month.c_str(),
                  now.year, now.hour, now.minute, now.second);
    return text;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

void Logging::Logit2(const std::string& message) {
    writeLine(message, false);
}

void Logging::Logit(const std::string& message) {
    writeLine(message, true);
}

std::string Logging::ProcessLogMsg(const std::string& message) const {
    std::string shown;
    for (const char c : message) {
        const auto code = static_cast<unsigned char>(c);
        if (const char* name = controlName(code)) {
            shown += std::string("<") + name + ">";
        } else if (code < 32 || code >= 127) {
            shown += "<ASCII " + std::to_string(code) + ">";
        } else {
            shown += c;
        }
    }
    return shown;
}

void Logging::writeLine(const std::string& message, bool spellOut) {
    try {
        if (!bLoggingEnabled) {
            return;
        }
        std::string file = strLogFileDirAndName;
        if (file.empty()) {
            if (strLogPath.empty()) {
                return;
            }
            if (strLogPath.back() != '\\') {
                strLogPath += '\\';
            }
            // Logit2 joins the folder with the (empty) full-path property instead of the file
            // name, so it names the folder itself and the open below fails.
            file = strLogPath + (spellOut ? strLogFile : strLogFileDirAndName);
        }
        // An oversized log that cannot be moved aside costs the line, not the caller's work.
        if (bArchiveLogFile && !archiveLogFile()) {
            return;
        }
        std::ofstream out(platform::hostPath(file), std::ios::binary | std::ios::app);
        if (!out.is_open()) {
            return;
        }
        std::string line = stamp(localNow()) + (spellOut ? ProcessLogMsg(message) : message);
        if (bObscureNumericStrings) {
            line = obscureNumericStrings(line);
        }
        out << line << "\r\n";
    } catch (...) {
        // The line is lost; the caller goes on.
    }
}

// Always works on folder and name, even when a full path is set. False only when an oversized
// log could not be moved: a missing folder or an "old" folder that cannot be made just leaves
// the log where it is.
bool Logging::archiveLogFile() {
    FileSystem files;
    if (!files.FolderExists(strLogPath)) {
        return true;
    }
    const std::string oldFolder = strLogPath + "old\\";
    if (!files.FolderExists(oldFolder) && files.CreateFolder(oldFolder)) {
        return true;
    }
    const std::string logFile = strLogPath + strLogFile;
    if (files.GetFileSize(logFile) <= kArchiveLimit) {
        return true;
    }
    const DateTime now = localNow();
    bool failed = false;
    files.MoveFile(logFile, oldFolder + formatYmd(now) + "_" + formatHms(now) + "_" + strLogFile,
                   failed);
    return !failed;
}

std::string Logging::obscureNumericStrings(const std::string& line) const {
    std::string masked;
    std::size_t at = 0;
    while (at < line.size()) {
        if (!isDigit(line[at])) {
            masked += line[at++];
            continue;
        }
        const std::size_t start = at;
        while (at < line.size() && isDigit(line[at])) {
            ++at;
        }
        const std::size_t length = at - start;
        masked +=
            length < kShortestCardNumber
                ? line.substr(start, length)
                : buildMask(length) + line.substr(at - kDigitsLeftVisible, kDigitsLeftVisible);
    }
    return masked;
}

std::string Logging::buildMask(std::size_t digits) const {
    return std::string(digits - kDigitsLeftVisible, '*');
}
