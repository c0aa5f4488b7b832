#include "settings/settings_table.h"

#include "foundation/decimal_text.h"
#include "foundation/tessaly_config.h"
#include "foundation/tessaly_string.h"
#include "settings/setting_fields.h"

#include <type_traits>

namespace {

using R = TCcAddinRegistry;
using enum ReadRule;

// One maker per kind of property, so a rule can only ever be paired with a property of its type.
constexpr SettingDescriptor text(std::int32_t n, std::string_view name, std::string R::*member) {
    return {n, name, member, Text, {}};
}
constexpr SettingDescriptor folder(std::int32_t n, std::string_view name, std::string R::*member) {
    return {n, name, member, TextWithBackslash, {}};
}
constexpr SettingDescriptor textOr(std::int32_t n, std::string_view name, std::string R::*member,
                                   std::string_view emptyDefault) {
    return {n, name, member, TextDefault, emptyDefault};
}
constexpr SettingDescriptor integer(std::int32_t n, std::string_view name,
                                    std::int32_t R::*member) {
    return {n, name, member, Integer, {}};
}
constexpr SettingDescriptor integerOr(std::int32_t n, std::string_view name,
                                      std::int32_t R::*member, std::string_view emptyDefault) {
    return {n, name, member, IntegerDefault, emptyDefault};
}
constexpr SettingDescriptor threeWay(std::int32_t n, std::string_view name,
                                     std::int32_t R::*member) {
    return {n, name, member, ThreeWay, {}};
}
constexpr SettingDescriptor real(std::int32_t n, std::string_view name, double R::*member) {
    return {n, name, member, Real, {}};
}
constexpr SettingDescriptor flag(std::int32_t n, std::string_view name, bool R::*member,
                                 ReadRule rule) {
    return {n, name, member, rule, {}};
}

constexpr std::array<SettingDescriptor, kSettingCount> kSettings{{
    flag(field::bAppendLineFeed, "AppendLineFeed", &R::bAppendLineFeed, FlagOnlyOne),
    text(field::strbaseCurrency, "BaseCurrency", &R::strbaseCurrency),
    integer(field::lBaseCurrencyExponent, "BaseCurrencyExponent", &R::lBaseCurrencyExponent),
    text(field::strBaseCurrencyName, "BaseCurrencyName", &R::strBaseCurrencyName),
    folder(field::strConfigFileLocation, "ConfigFileLocation", &R::strConfigFileLocation),
    text(field::strConfigFileName, "ConfigFileName", &R::strConfigFileName),
    flag(field::bCustomerNotPresent, "CustomerNotPresent", &R::bCustomerNotPresent, FlagOnlyOne),
    integer(field::lDeleteReceiptDays, "DeleteReceiptDays", &R::lDeleteReceiptDays),
    flag(field::bExternalSwipe, "ExternalSwipe", &R::bExternalSwipe, FlagOnlyOne),
    text(field::strLastReceiptDeleteDate, "LastReceiptDeleteDate", &R::strLastReceiptDeleteDate),
    text(field::strLastZReportDate, "LastZReportDate", &R::strLastZReportDate),
    flag(field::bObscureCardNumber, "ObscureCardNumber", &R::bObscureCardNumber, FlagOnlyOne),
    text(field::strCorvixClientId, "CorvixClientId", &R::strCorvixClientId),
    text(field::strCorvixMerchantId, "CorvixMerchantId", &R::strCorvixMerchantId),
    text(field::strCorvixPassword, "CorvixPassword", &R::strCorvixPassword),
    text(field::strReceiptFileLocation, "ReceiptFileLocation", &R::strReceiptFileLocation),
    text(field::strReportFileLocation, "ReportFileLocation", &R::strReportFileLocation),
    text(field::strRmsCashTenderType, "RmsCashTenderType", &R::strRmsCashTenderType),
    text(field::strRmsCcTenderType, "RmsCcTenderType", &R::strRmsCcTenderType),
    flag(field::bSaveReceipts, "SaveReceipts", &R::bSaveReceipts, FlagOnlyOne),
    flag(field::bSplitTender, "SplitTender", &R::bSplitTender, FlagOnlyOne),
    integer(field::lPrinterType, "PrinterType", &R::lPrinterType),
    text(field::strWindowsPrinterName, "WindowsPrinterName", &R::strWindowsPrinterName),
    text(field::strWindowsPrinterFontName, "WindowsPrinterFontName", &R::strWindowsPrinterFontName),
    text(field::strAcquirer, "Acquirer", &R::strAcquirer),
    flag(field::bTestMode, "Mode", &R::bTestMode, FlagOnlyOne),
    text(field::strIdlePrompt1, "IdlePrompt1", &R::strIdlePrompt1),
    text(field::strIdlePrompt2, "IdlePrompt2", &R::strIdlePrompt2),
    text(field::strComPort, "ComPort", &R::strComPort),
    integer(field::lTillType, "RmsTill", &R::lTillType),
    text(field::strChipDeviceName, "ChipDeviceName", &R::strChipDeviceName),
    text(field::strOposPrinterDeviceName, "OPOSPrinterDeviceName", &R::strOposPrinterDeviceName),
    integer(field::lOperatingMode, "SemiIntegrated", &R::lOperatingMode),
    threeWay(field::lDccType, "DccEnabled", &R::lDccType),
    text(field::strDccFormTitle, "DccFormTitle", &R::strDccFormTitle),
    flag(field::bMailOrderOnly, "CustomerNotPresentOnly", &R::bMailOrderOnly, FlagOnlyOne),
    integer(field::lPrintReceiptsBitmap, "PrintReceipts", &R::lPrintReceiptsBitmap),
    integer(field::lLineFeedsBeforePaperCut, "LineFeedsBeforePaperCut",
            &R::lLineFeedsBeforePaperCut),
    flag(field::bAutoAcceptOnPinVerification, "AutoAcceptOnPinVerification",
         &R::bAutoAcceptOnPinVerification, FlagOnlyOne),
    flag(field::bWindowsFontBold, "WindowsFontBold", &R::bWindowsFontBold, FlagFontBold),
    integerOr(field::lWindowsFontSize, "WindowsFontSize", &R::lWindowsFontSize, "10"),
    integerOr(field::lRmsReceiptPrinterNo, "RmsReceiptPrinterNo", &R::lRmsReceiptPrinterNo, "1"),
    flag(field::bRefundSigOnMerchCopy, "RefundSigNoMerchantReceipt", &R::bRefundSigOnMerchCopy,
         FlagNotEmptyNotZero),
    flag(field::bAlwaysOnTop, "AlwaysOnTop", &R::bAlwaysOnTop, FlagNotEmptyNotZero),
    flag(field::bRePrintReceipt, "ReprintReceipt", &R::bRePrintReceipt, FlagNotEmptyNotZero),
    text(field::strPrinterPort, "PrinterPort", &R::strPrinterPort),
    integer(field::lPrinterBaudRate, "PrinterBaudRate", &R::lPrinterBaudRate),
    text(field::strPrinterParity, "PrinterParity", &R::strPrinterParity),
    integer(field::lPrinterdatabits, "PrinterDatabits", &R::lPrinterdatabits),
    real(field::dPrinterStopbit, "PrinterStopbit", &R::dPrinterStopbit),
    integer(field::lPrinterFlowControl, "PrinterFlowControl", &R::lPrinterFlowControl),
    text(field::strPrinterCutPaper, "PrinterCutPaperSequence", &R::strPrinterCutPaper),
    textOr(field::strTrackStartId, "TrackStartID", &R::strTrackStartId, "3B"),
    textOr(field::strTrackEndId, "TrackEndID", &R::strTrackEndId, "3F"),
    flag(field::bDailyTmsCall, "DailyTmsCall", &R::bDailyTmsCall, FlagNotEmptyNotZero),
    text(field::strLastTmsCallDate, "LastTmsCallDate", &R::strLastTmsCallDate),
    text(field::strFuelType, "FuelType", &R::strFuelType),
    threeWay(field::lCashbackEntryType, "DecimalInCashback", &R::lCashbackEntryType),
    flag(field::bCashback, "CashbackEnabled", &R::bCashback, FlagNotEmptyNotZero),
    flag(field::bCardReaderStatus, "CardReaderStatusEnabled", &R::bCardReaderStatus,
         FlagNotEmptyNotZero),
    flag(field::bCardEnquiry, "CardEnquiryEnabled", &R::bCardEnquiry, FlagNotEmptyNotZero),
    flag(field::bDecimalInSplitTender, "DecimalInSplitTender", &R::bDecimalInSplitTender,
         FlagNotEmptyNotZero),
    flag(field::bE2EEEnabled, "E2EEEnabled", &R::bE2EEEnabled, FlagNotEmptyNotZero),
    flag(field::bAutoRunReport, "AutoRunReport", &R::bAutoRunReport, FlagNotEmptyNotZero),
    flag(field::bOfflineMode, "OfflineModeEnabled", &R::bOfflineMode, FlagNotEmptyNotZero),
    text(field::strTessalyID, "TessalyID", &R::strTessalyID),
    flag(field::bCloseBatch, "CloseBatch", &R::bCloseBatch, FlagNotEmptyNotZero),
    integer(field::lStartupPosition, "StartupPosition", &R::lStartupPosition),
    integer(field::lLeftTwips, "LeftTwips", &R::lLeftTwips),
    integer(field::lTopTwips, "TopTwips", &R::lTopTwips),
    integer(field::lDisplayMode, "DisplayMode", &R::lDisplayMode),
    integer(field::lAddinHeight, "AddinHeight", &R::lAddinHeight),
    integer(field::lAddinWidth, "AddinWidth", &R::lAddinWidth),
    flag(field::bCustomerReceiptFirstIfPinVerified, "CustomerReceiptFirstIfPinVerified",
         &R::bCustomerReceiptFirstIfPinVerified, FlagNotEmptyNotZero),
    textOr(field::strPrintNormalControl, "PrintNormalControl", &R::strPrintNormalControl, "1B2100"),
    textOr(field::strPrintBoldControl, "PrintBoldControl", &R::strPrintBoldControl, "1B2148"),
    flag(field::bCutPaperAfterMerchantCopy, "CutPaperAfterMerchantCopy",
         &R::bCutPaperAfterMerchantCopy, FlagMerchantCut),
    flag(field::bCutPaperAfterCustomerCopy, "CutPaperAfterCustomerCopy",
         &R::bCutPaperAfterCustomerCopy, FlagEmptyOrOne),
    flag(field::bPrintMerchantHeader, "PrintMerchantHeader", &R::bPrintMerchantHeader,
         FlagEmptyOrOne),
    flag(field::bPrintCustomerHeader, "PrintCustomerHeader", &R::bPrintCustomerHeader,
         FlagEmptyOrOne),
    flag(field::bPromptTappedCustomerReceipt, "PromptTappedCustomerReceipt",
         &R::bPromptTappedCustomerReceipt, FlagOnlyOne),
    flag(field::bAutoAcceptTappedNoVerification, "AutoAcceptTappedNoVerification",
         &R::bAutoAcceptTappedNoVerification, FlagOnlyOne),
    flag(field::bMakeMerchantReceiptsAvailableToClient, "MerchantReceiptsAvailableToClients",
         &R::bMakeMerchantReceiptsAvailableToClient, FlagOnlyOne),
    flag(field::bAutoDeclinePinBypass, "AutoDeclinePinBypass", &R::bAutoDeclinePinBypass,
         FlagEmptyOrOne),
    text(field::strPedLanguageCode, "PedLanguageCode", &R::strPedLanguageCode),
    flag(field::bDisplayOndrelLogo, "DisplayOndrelLogo", &R::bDisplayOndrelLogo, FlagOnlyOne),
    flag(field::bE2eeStoreTransactionOnPed, "E2eeStoreOfflineTxnsOnPed",
         &R::bE2eeStoreTransactionOnPed, FlagOnlyOne),
    flag(field::bE2eeObscureCardNumberOfflineMode, "E2eeObscureCardNoInOfflineMode",
         &R::bE2eeObscureCardNumberOfflineMode, FlagOnlyOne),
    flag(field::bObscureCardNumberOfflineMode, "ObscureCardNoInOfflineMode",
         &R::bObscureCardNumberOfflineMode, FlagOnlyOne),
}};

constexpr bool numberedInOrder() {
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        if (kSettings[i].fieldNumber != static_cast<std::int32_t>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(numberedInOrder(), "the table is indexed by field number");

// A flag rule on a text (or any such mismatch) would silently read the wrong way.
constexpr bool ruleFits(const SettingDescriptor& s) {
    switch (s.member.index()) {
    case 0: // text
        return s.rule <= TextDefault;
    case 1: // integer
        return s.rule >= Integer && s.rule <= ThreeWay;
    case 2: // flag
        return s.rule >= FlagOnlyOne;
    default: // real
        return s.rule == Real;
    }
}

constexpr bool rulesFitTheirProperties() {
    for (const SettingDescriptor& s : kSettings) {
        if (!ruleFits(s)) {
            return false;
        }
    }
    return true;
}
static_assert(rulesFitTheirProperties(), "every rule reads into a property of its kind");

std::string textByRule(const SettingDescriptor& setting, const std::string& stored) {
    switch (setting.rule) {
    case TextWithBackslash:
        return TessalyConfig::AddBackslash(stored);
    case TextDefault:
        return stored.empty() ? std::string(setting.emptyDefault) : stored;
    default:
        return stored;
    }
}

std::int32_t integerByRule(const SettingDescriptor& setting, const std::string& stored) {
    switch (setting.rule) {
    case IntegerDefault:
        // Only an absent value takes the default; text that is not a number still reads as 0.
        return TessalyString::StrToLong(stored.empty() ? std::string(setting.emptyDefault)
                                                       : stored);
    case ThreeWay:
        if (stored.empty() || stored == "0") {
            return 0;
        }
        return stored == "1" ? 1 : 2;
    default:
        return TessalyString::StrToLong(stored);
    }
}

// `current` is the value before the read: one rule keeps it for text it does not know.
bool flagByRule(ReadRule rule, const std::string& stored, bool current) {
    switch (rule) {
    case FlagNotEmptyNotZero:
        return !stored.empty() && stored != "0";
    case FlagEmptyOrOne:
    case FlagFontBold:
        return stored.empty() || stored == "1";
    case FlagMerchantCut:
        if (stored.empty() || stored == "1") {
            return true;
        }
        return stored == "0" ? false : current;
    default:
        return stored == "1";
    }
}

} // namespace

const std::array<SettingDescriptor, kSettingCount>& settingsTable() {
    return kSettings;
}

const SettingDescriptor* findSetting(std::int32_t fieldNumber) {
    if (fieldNumber < 0 || fieldNumber >= static_cast<std::int32_t>(kSettings.size())) {
        return nullptr;
    }
    return &kSettings[static_cast<std::size_t>(fieldNumber)];
}

void applyStoredText(TCcAddinRegistry& record, const SettingDescriptor& setting,
                     const std::string& stored) {
    std::visit(
        [&](auto member) {
            using Value = std::remove_reference_t<decltype(record.*member)>;
            if constexpr (std::is_same_v<Value, std::string>) {
                record.*member = textByRule(setting, stored);
            } else if constexpr (std::is_same_v<Value, std::int32_t>) {
                record.*member = integerByRule(setting, stored);
            } else if constexpr (std::is_same_v<Value, bool>) {
                record.*member = flagByRule(setting.rule, stored, record.*member);
            } else {
                record.*member = TessalyString::StrToDouble(stored);
            }
        },
        setting.member);
}

std::string storedText(const TCcAddinRegistry& record, const SettingDescriptor& setting) {
    return std::visit(
        [&](auto member) -> std::string {
            const auto& value = record.*member;
            using Value = std::remove_cvref_t<decltype(value)>;
            if constexpr (std::is_same_v<Value, std::string>) {
                return value;
            } else if constexpr (std::is_same_v<Value, std::int32_t>) {
                return std::to_string(value);
            } else if constexpr (std::is_same_v<Value, bool>) {
                return value ? "1" : "0";
            } else {
                return decimal_text::shortestText(value);
            }
        },
        setting.member);
}

bool sameValue(const TCcAddinRegistry& left, const TCcAddinRegistry& right,
               const SettingDescriptor& setting) {
    return std::visit([&](auto member) { return left.*member == right.*member; }, setting.member);
}
