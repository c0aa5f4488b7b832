// "tmscall.vbs" of any bytes: the rewrite never crashes, keeps the number of lines, ends each
// with CR LF, and changes only lines that name one of the script's constants.
//
// Input: a line naming the device ("VeriFone SC5000", "VeriFone VX810", ...), a line with the
// COM port, then the script's bytes.
#include "fuzz_till.h"
#include "platform/cp1252.h"
#include "tms/tms_call.h"

#include <string>
#include <vector>

namespace {

// Every constant the rewrite knows begins so; a line without it must come back as it was.
const char* const kConstantMark = "CONST ";

// Lines as the till's text reader sees them: cut at LF, one CR before it dropped; a final line
// without its LF still counts.
std::vector<std::string> scriptLines(const std::string& bytes) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        std::size_t end = bytes.find('\n', start);
        const std::size_t next = end == std::string::npos ? bytes.size() : end + 1;
        if (end == std::string::npos) {
            end = bytes.size();
        }
        std::string line = bytes.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        lines.push_back(line);
        start = next;
    }
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::Parts parts = fuzzing::splitInput(data, size, 2);
    const auto script = fuzzing::tillFile("config/tmscall.vbs");
    fuzzing::writeBytes(script, parts.rest);
    fuzzing::writeBytes(fuzzing::tillFile("config/fuelinfo.ini"),
                        "[GENERAL]\r\nCount=1\r\n1=Keyfuels,KF\r\n");

    TTmsCall call;
    call.UpdateTmsScript("M123", "C456", "c:\\config", "GBP", "Barclays", "Keyfuels", false,
                         parts.lines[1], parts.lines[0]);

    const std::string after = fuzzing::readBytes(script);
    const std::vector<std::string> oldLines = scriptLines(parts.rest);
    std::size_t position = 0;
    for (const std::string& oldLine : oldLines) {
        const std::size_t end = after.find("\r\n", position);
        fuzzing::check(end != std::string::npos, "every line is written, ended by CR LF");
        const std::string newLine = after.substr(position, end - position);
        if (cp1252::toUpper(oldLine).find(kConstantMark) == std::string::npos) {
            fuzzing::check(newLine == oldLine, "a line naming no constant changed: " + oldLine);
        }
        position = end + 2;
    }
    fuzzing::check(position == after.size(), "no line is added");
    return 0;
}
