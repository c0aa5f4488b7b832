// The terminal-management call: "tmscall.vbs" in the payment client's folder is rewritten so its
// constants carry this till's folder, identities and application codes, then started with the
// kind of call as its argument.
#pragma once

#include <string>

class TTmsCall {
public:
    // Starts folder + "tmscall.vbs" through the shell with `parameter` ("0", "1" or "2") as its
    // arguments and does not wait for it. Reports nothing.
    void DoTmsCall(const std::string& folder, const std::string& parameter);

    // Rewrites the script's constant lines; every other line is written back as read, each line
    // ended by CR LF. A missing script is left missing; any fault ends the rewrite silently.
    // `swipeOnTill` is true when cards are swiped on the till rather than on the device.
    void UpdateTmsScript(const std::string& merchantId, const std::string& clientId,
                         const std::string& folder, const std::string& currency,
                         const std::string& acquirer, const std::string& fuelType, bool swipeOnTill,
                         const std::string& comPort, const std::string& chipDeviceName);

private:
    std::string GetOfflineFileCode(const std::string& currency) const;
    std::string GetDownloadAppCode(const std::string& chipDeviceName, const std::string& acquirer,
                                   const std::string& currency, bool swipeOnTill) const;
    std::string GetFuelFilesCode(const std::string& folder, const std::string& currency,
                                 const std::string& fuelType) const;
};
