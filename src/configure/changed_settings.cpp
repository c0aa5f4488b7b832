#include "configure/changed_settings.h"

#include "settings/ccaddin_registry.h"
#include "settings/setting_fields.h"
#include "settings/settings_table.h"

#include <array>
#include <cstdint>

namespace {

enum class Marks { changed, quietly };

struct ComparedSetting {
    std::int32_t fieldNumber;
    Marks marks;
};

using enum Marks;

// The order is the add-in's and is kept: DecimalInSplitTender is compared twice, and everything
// from AutoRunReport on is written without counting as a change, so such a run still logs that
// the registry was not changed.
constexpr std::array<ComparedSetting, 67> kComparedSettings{{
    {field::bAppendLineFeed, changed},
    {field::bCustomerNotPresent, changed},
    {field::bExternalSwipe, changed},
    {field::lTillType, changed},
    {field::bSplitTender, changed},
    {field::bDecimalInSplitTender, changed},
    {field::bTestMode, changed},
    {field::lPrinterType, changed},
    {field::strAcquirer, changed},
    {field::strbaseCurrency, changed}, // with its name and exponent
    {field::strChipDeviceName, changed},
    {field::strComPort, changed},
    {field::strIdlePrompt1, changed},
    {field::strIdlePrompt2, changed},
    {field::strOposPrinterDeviceName, changed},
    {field::strCorvixClientId, changed},
    {field::strCorvixMerchantId, changed},
    {field::strWindowsPrinterName, changed},
    {field::strWindowsPrinterFontName, changed},
    {field::lPrintReceiptsBitmap, changed},
    {field::lLineFeedsBeforePaperCut, changed},
    {field::bAutoAcceptOnPinVerification, changed},
    {field::bWindowsFontBold, changed},
    {field::lWindowsFontSize, changed},
    {field::lRmsReceiptPrinterNo, changed},
    {field::bRefundSigOnMerchCopy, changed},
    {field::bAlwaysOnTop, changed},
    {field::strTrackStartId, changed},
    {field::strTrackEndId, changed},
    {field::strPrinterPort, changed},
    {field::lPrinterBaudRate, changed},
    {field::strPrinterParity, changed},
    {field::lPrinterdatabits, changed},
    {field::dPrinterStopbit, changed},
    {field::lPrinterFlowControl, changed},
    {field::strPrinterCutPaper, changed},
    {field::bRePrintReceipt, changed},
    {field::bDailyTmsCall, changed},
    {field::strFuelType, changed},
    {field::bObscureCardNumber, changed},
    {field::lDccType, changed},
    {field::lCashbackEntryType, changed},
    {field::bCashback, changed},
    {field::bDecimalInSplitTender, changed}, // a second time
    {field::lOperatingMode, changed},
    {field::bE2EEEnabled, changed},
    {field::bAutoRunReport, quietly},
    {field::bOfflineMode, quietly},
    {field::bCloseBatch, quietly},
    {field::strTessalyID, quietly},
    {field::lDisplayMode, quietly},
    {field::lAddinHeight, quietly},
    {field::lAddinWidth, quietly},
    {field::lLeftTwips, quietly},
    {field::lTopTwips, quietly},
    {field::lStartupPosition, quietly},
    {field::bCustomerReceiptFirstIfPinVerified, quietly},
    {field::strPrintNormalControl, quietly},
    {field::strPrintBoldControl, quietly},
    {field::bCutPaperAfterMerchantCopy, quietly},
    {field::bCutPaperAfterCustomerCopy, quietly},
    {field::bPrintMerchantHeader, quietly},
    {field::bPrintCustomerHeader, quietly},
    {field::bPromptTappedCustomerReceipt, quietly},
    {field::bAutoAcceptTappedNoVerification, quietly},
    {field::bMakeMerchantReceiptsAvailableToClient, quietly},
    {field::bDisplayOndrelLogo, quietly},
}};

// The add-in only knows two currency names: every code but EUR is shown as sterling.
void writeBaseCurrency(TCcAddinRegistry& settings) {
    settings.WriteRegistry(field::strbaseCurrency);
    settings.strBaseCurrencyName =
        settings.strbaseCurrency != "EUR" ? "British Pound" : "European Euro";
    settings.WriteRegistry(field::strBaseCurrencyName);
    settings.lBaseCurrencyExponent = 2;
    settings.WriteRegistry(field::lBaseCurrencyExponent);
}

} // namespace

bool writeChangedSettings(const TCcAddinRegistry& installed, TCcAddinRegistry& settings) {
    bool bChanged = false;
    for (const ComparedSetting& compared : kComparedSettings) {
        const SettingDescriptor* setting = findSetting(compared.fieldNumber);
        if (setting == nullptr || sameValue(settings, installed, *setting)) {
            continue;
        }
        if (compared.fieldNumber == field::strbaseCurrency) {
            writeBaseCurrency(settings);
        } else {
            settings.WriteRegistry(compared.fieldNumber);
        }
        bChanged = bChanged || compared.marks == changed;
    }
    return bChanged;
}
