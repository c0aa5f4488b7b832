#include "tms/tms_call.h"

#include "foundation/file_system.h"
#include "foundation/tessaly_config.h"
#include "platform/platform.h"
#include "settings/fuel_info.h"
#include "tms/tms_script_rules.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace {

const char* const kScriptName = "tmscall.vbs";

// The currency tests are exact: "eur" is not the euro.
bool isEuro(const std::string& currency) {
    return currency == "EUR";
}

std::string acquirerLetter(const std::string& acquirer) {
    static const std::pair<const char*, const char*> kLetters[] = {
        {"AIB", "A"},        {"Elavon", "E"}, {"Barclays", "B"},
        {"Streamline", "S"}, {"Lloyds", "L"}, {"HSBC", "H"},
    };
    for (const auto& [name, letter] : kLetters) {
        if (acquirer == name) {
            return letter;
        }
    }
    return "";
}

std::vector<std::string> readLines(FileSystem& files, long fileNumber) {
    std::vector<std::string> lines;
    std::string line;
    while (!files.Eof(fileNumber)) {
        // A script that cannot be read whole is not rewritten at all.
        if (files.ReadData(fileNumber, line, true)) {
            throw std::runtime_error(files.strErrorMessage());
        }
        lines.push_back(line);
    }
    return lines;
}

void writeLines(FileSystem& files, const std::string& path, const std::vector<std::string>& lines) {
    const long fileNumber = files.OpenFile(path, 1);
    if (fileNumber < 1) {
        throw std::runtime_error(files.strErrorMessage());
    }
    for (const std::string& line : lines) {
        if (files.WriteData(fileNumber, line, true)) {
            throw std::runtime_error(files.strErrorMessage());
        }
    }
    files.CloseFile(fileNumber);
}

} // namespace

void TTmsCall::DoTmsCall(const std::string& folder, const std::string& parameter) {
    try {
        // The script is left running; whether it started is not examined.
        platform::shellOpen(TessalyConfig::AddBackslash(folder) + kScriptName, parameter);
    } catch (...) {
    }
}

void TTmsCall::UpdateTmsScript(const std::string& merchantId, const std::string& clientId,
                               const std::string& folder, const std::string& currency,
                               const std::string& acquirer, const std::string& fuelType,
                               bool swipeOnTill, const std::string& comPort,
                               const std::string& chipDeviceName) {
    try {
        const std::string dir = TessalyConfig::AddBackslash(folder);
        const std::string path = dir + kScriptName;
        FileSystem files;
        const long fileNumber = files.OpenFile(path, 0);
        if (fileNumber < 1) {
            return; // no script on this till: nothing to rewrite
        }
        TmsScriptValues values;
        values.folder = dir;
        values.merchantId = merchantId;
        values.clientId = clientId;
        values.offlineCode = GetOfflineFileCode(currency);
        values.fuelFilesCode = GetFuelFilesCode(dir, currency, fuelType);
        // On an SC5000 till the download constant is emptied.
        if (chipDeviceName != "VeriFone SC5000") {
            values.downloadCode =
                GetDownloadAppCode(chipDeviceName, acquirer, currency, swipeOnTill);
        }
        values.comPort = comPort;

        const TmsScriptRules rules(values);
        std::vector<std::string> lines = readLines(files, fileNumber);
        files.CloseFile(fileNumber);
        for (std::string& line : lines) {
            line = rules.rewrite(line);
        }
        writeLines(files, path, lines);
    } catch (...) {
        // The TMS call is still offered with the script as it stands.
    }
}

std::string TTmsCall::GetOfflineFileCode(const std::string& currency) const {
    return isEuro(currency) ? "UIGE" : "UUGE";
}

std::string TTmsCall::GetDownloadAppCode(const std::string& chipDeviceName,
                                         const std::string& acquirer, const std::string& currency,
                                         bool swipeOnTill) const {
    const std::string code =
        (isEuro(currency) ? "I" : "U") + acquirerLetter(acquirer) + (swipeOnTill ? "T" : "P");
    return (chipDeviceName == "VeriFone VX810" ? "GENP" : "C41") + code;
}

std::string TTmsCall::GetFuelFilesCode(const std::string& folder, const std::string& currency,
                                       const std::string& fuelType) const {
    if (fuelType.empty()) {
        return "";
    }
    // A table that cannot be read gives no prefix; the code then names the currency alone.
    TFuelInfo fuel;
    fuel.ReadConfiguration(folder);
    return fuel.GetZontalkAppPrefix(fuelType) + (isEuro(currency) ? "IFE" : "UFE");
}
