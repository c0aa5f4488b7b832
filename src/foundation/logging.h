// The log writer: one time-stamped line per call, appended to one text file that is opened and
// closed for every line, so a crash loses nothing already logged. Logging never stops the work
// it records: every failure (no folder, no file, no archive) loses the line silently.
#pragma once

#include <string>

class Logging {
public:
    // Folder of the log; the writer appends a "\" to it when it lacks one.
    std::string strLogPath;
    // File name within strLogPath.
    std::string strLogFile;
    // Nothing is written unless this is set.
    bool bLoggingEnabled = false;
    // Masks every run of 13 or more digits in a line (card numbers), keeping its last four.
    bool bObscureNumericStrings = false;
    // When not empty, the full path of the file written, used instead of folder and name.
    std::string strLogFileDirAndName;
    // Before each line, moves a log of more than 1 MiB into "old\" under strLogPath.
    bool bArchiveLogFile = false;

    // Appends the message as given. It joins the folder with strLogFileDirAndName rather than
    // with strLogFile, so while that is empty it names the folder and writes nothing. Nothing
    // relies on it writing; the behaviour is kept as it always was.
    void Logit2(const std::string& message);
    // Appends the message with its control and non-ASCII characters spelt out.
    void Logit(const std::string& message);
    // Spells out control characters and codes 127 and up: "<CR>", "<ASCII 9>", "<ASCII 200>".
    std::string ProcessLogMsg(const std::string& message) const;

private:
    void writeLine(const std::string& message, bool spellOut);
    bool archiveLogFile();
    std::string obscureNumericStrings(const std::string& line) const;
    std::string buildMask(std::size_t digits) const;
};
