#include "configure/changed_settings.h"

#include "settings/ccaddin_registry.h"
#include "settings/settings_table.h"

#include <array>
#include <cstdint>

namespace {

enum class Marks { changed, quietly };

struct ComparedSetting {
    std::int32_t fieldNumber;
    Marks marks;
};

constexpr std::int32_t kBaseCurrency = 1;
constexpr std::int32_t kBaseCurrencyExponent = 2;
constexpr std::int32_t kBaseCurrencyName = 3;

using enum Marks;

// The order is the add-in's and is kept: DecimalInSplitTender is compared twice, and everything
// from AutoRunReport on is written without counting as a change, so such a run still logs that
// the registry was not changed.
constexpr std::array<ComparedSetting, 67> kComparedSettings{{
    {0, changed},             // bAppendLineFeed
    {6, changed},             // bCustomerNotPresent
    {8, changed},             // bExternalSwipe
    {29, changed},            // lTillType
    {20, changed},            // bSplitTender
    {61, changed},            // bDecimalInSplitTender
    {25, changed},            // bTestMode
    {21, changed},            // lPrinterType
    {24, changed},            // strAcquirer
    {kBaseCurrency, changed}, // strbaseCurrency, with its name and exponent
    {30, changed},            // strChipDeviceName
    {28, changed},            // strComPort
    {26, changed},            // strIdlePrompt1
    {27, changed},            // strIdlePrompt2
    {31, changed},            // strOposPrinterDeviceName
    {12, changed},            // strCorvixClientId
    {13, changed},            // strCorvixMerchantId
    {22, changed},            // strWindowsPrinterName
    {23, changed},            // strWindowsPrinterFontName
    {36, changed},            // lPrintReceiptsBitmap
    {37, changed},            // lLineFeedsBeforePaperCut
    {38, changed},            // bAutoAcceptOnPinVerification
    {39, changed},            // bWindowsFontBold
    {40, changed},            // lWindowsFontSize
    {41, changed},            // lRmsReceiptPrinterNo
    {42, changed},            // bRefundSigOnMerchCopy
    {43, changed},            // bAlwaysOnTop
    {52, changed},            // strTrackStartId
    {53, changed},            // strTrackEndId
    {45, changed},            // strPrinterPort
    {46, changed},            // lPrinterBaudRate
    {47, changed},            // strPrinterParity
    {48, changed},            // lPrinterdatabits
    {49, changed},            // dPrinterStopbit
    {50, changed},            // lPrinterFlowControl
    {51, changed},            // strPrinterCutPaper
    {44, changed},            // bRePrintReceipt
    {54, changed},            // bDailyTmsCall
    {56, changed},            // strFuelType
    {11, changed},            // bObscureCardNumber
    {33, changed},            // lDccType
    {57, changed},            // lCashbackEntryType
    {58, changed},            // bCashback
    {61, changed},            // bDecimalInSplitTender, a second time
    {32, changed},            // lOperatingMode
    {62, changed},            // bE2EEEnabled
    {63, quietly},            // bAutoRunReport
    {64, quietly},            // bOfflineMode
    {66, quietly},            // bCloseBatch
    {65, quietly},            // strTessalyID
    {70, quietly},            // lDisplayMode
    {71, quietly},            // lAddinHeight
    {72, quietly},            // lAddinWidth
    {68, quietly},            // lLeftTwips
    {69, quietly},            // lTopTwips
    {67, quietly},            // lStartupPosition
    {73, quietly},            // bCustomerReceiptFirstIfPinVerified
    {74, quietly},            // strPrintNormalControl
    {75, quietly},            // strPrintBoldControl
    {76, quietly},            // bCutPaperAfterMerchantCopy
    {77, quietly},            // bCutPaperAfterCustomerCopy
    {78, quietly},            // bPrintMerchantHeader
    {79, quietly},            // bPrintCustomerHeader
    {80, quietly},            // bPromptTappedCustomerReceipt
    {81, quietly},            // bAutoAcceptTappedNoVerification
    {82, quietly},            // bMakeMerchantReceiptsAvailableToClient
    {85, quietly},            // bDisplayOndrelLogo
}};

// The add-in only knows two currency names: every code but EUR is shown as sterling.
void writeBaseCurrency(TCcAddinRegistry& settings) {
    settings.WriteRegistry(kBaseCurrency);
    settings.strBaseCurrencyName =
        settings.strbaseCurrency != "EUR" ? "British Pound" : "European Euro";
    settings.WriteRegistry(kBaseCurrencyName);
    settings.lBaseCurrencyExponent = 2;
    settings.WriteRegistry(kBaseCurrencyExponent);
}

} // namespace

bool writeChangedSettings(const TCcAddinRegistry& installed, TCcAddinRegistry& settings) {
    bool bChanged = false;
    for (const ComparedSetting& compared : kComparedSettings) {
        const SettingDescriptor* setting = findSetting(compared.fieldNumber);
        if (setting == nullptr || sameValue(settings, installed, *setting)) {
            continue;
        }
        if (compared.fieldNumber == kBaseCurrency) {
            writeBaseCurrency(settings);
        } else {
            settings.WriteRegistry(compared.fieldNumber);
        }
        bChanged = bChanged || compared.marks == changed;
    }
    return bChanged;
}
