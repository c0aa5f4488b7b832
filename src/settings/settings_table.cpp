#include "settings/settings_table.h"

#include "foundation/tessaly_config.h"
#include "foundation/tessaly_string.h"

#include <charconv>
#include <system_error>
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
    flag(0, "AppendLineFeed", &R::bAppendLineFeed, FlagOnlyOne),
    text(1, "BaseCurrency", &R::strbaseCurrency),
    integer(2, "BaseCurrencyExponent", &R::lBaseCurrencyExponent),
    text(3, "BaseCurrencyName", &R::strBaseCurrencyName),
    folder(4, "ConfigFileLocation", &R::strConfigFileLocation),
    text(5, "ConfigFileName", &R::strConfigFileName),
    flag(6, "CustomerNotPresent", &R::bCustomerNotPresent, FlagOnlyOne),
    integer(7, "DeleteReceiptDays", &R::lDeleteReceiptDays),
    flag(8, "ExternalSwipe", &R::bExternalSwipe, FlagOnlyOne),
    text(9, "LastReceiptDeleteDate", &R::strLastReceiptDeleteDate),
    text(10, "LastZReportDate", &R::strLastZReportDate),
    flag(11, "ObscureCardNumber", &R::bObscureCardNumber, FlagOnlyOne),
    text(12, "CorvixClientId", &R::strCorvixClientId),
    text(13, "CorvixMerchantId", &R::strCorvixMerchantId),
    text(14, "CorvixPassword", &R::strCorvixPassword),
    text(15, "ReceiptFileLocation", &R::strReceiptFileLocation),
    text(16, "ReportFileLocation", &R::strReportFileLocation),
    text(17, "RmsCashTenderType", &R::strRmsCashTenderType),
    text(18, "RmsCcTenderType", &R::strRmsCcTenderType),
    flag(19, "SaveReceipts", &R::bSaveReceipts, FlagOnlyOne),
    flag(20, "SplitTender", &R::bSplitTender, FlagOnlyOne),
    integer(21, "PrinterType", &R::lPrinterType),
    text(22, "WindowsPrinterName", &R::strWindowsPrinterName),
    text(23, "WindowsPrinterFontName", &R::strWindowsPrinterFontName),
    text(24, "Acquirer", &R::strAcquirer),
    flag(25, "Mode", &R::bTestMode, FlagOnlyOne),
    text(26, "IdlePrompt1", &R::strIdlePrompt1),
    text(27, "IdlePrompt2", &R::strIdlePrompt2),
    text(28, "ComPort", &R::strComPort),
    integer(29, "RmsTill", &R::lTillType),
    text(30, "ChipDeviceName", &R::strChipDeviceName),
    text(31, "OPOSPrinterDeviceName", &R::strOposPrinterDeviceName),
    integer(32, "SemiIntegrated", &R::lOperatingMode),
    threeWay(33, "DccEnabled", &R::lDccType),
    text(34, "DccFormTitle", &R::strDccFormTitle),
    flag(35, "CustomerNotPresentOnly", &R::bMailOrderOnly, FlagOnlyOne),
    integer(36, "PrintReceipts", &R::lPrintReceiptsBitmap),
    integer(37, "LineFeedsBeforePaperCut", &R::lLineFeedsBeforePaperCut),
    flag(38, "AutoAcceptOnPinVerification", &R::bAutoAcceptOnPinVerification, FlagOnlyOne),
    flag(39, "WindowsFontBold", &R::bWindowsFontBold, FlagFontBold),
    integerOr(40, "WindowsFontSize", &R::lWindowsFontSize, "10"),
    integerOr(41, "RmsReceiptPrinterNo", &R::lRmsReceiptPrinterNo, "1"),
    flag(42, "RefundSigNoMerchantReceipt", &R::bRefundSigOnMerchCopy, FlagNotEmptyNotZero),
    flag(43, "AlwaysOnTop", &R::bAlwaysOnTop, FlagNotEmptyNotZero),
    flag(44, "ReprintReceipt", &R::bRePrintReceipt, FlagNotEmptyNotZero),
    text(45, "PrinterPort", &R::strPrinterPort),
    integer(46, "PrinterBaudRate", &R::lPrinterBaudRate),
    text(47, "PrinterParity", &R::strPrinterParity),
    integer(48, "PrinterDatabits", &R::lPrinterdatabits),
    real(49, "PrinterStopbit", &R::dPrinterStopbit),
    integer(50, "PrinterFlowControl", &R::lPrinterFlowControl),
    text(51, "PrinterCutPaperSequence", &R::strPrinterCutPaper),
    textOr(52, "TrackStartID", &R::strTrackStartId, "3B"),
    textOr(53, "TrackEndID", &R::strTrackEndId, "3F"),
    flag(54, "DailyTmsCall", &R::bDailyTmsCall, FlagNotEmptyNotZero),
    text(55, "LastTmsCallDate", &R::strLastTmsCallDate),
    text(56, "FuelType", &R::strFuelType),
    threeWay(57, "DecimalInCashback", &R::lCashbackEntryType),
    flag(58, "CashbackEnabled", &R::bCashback, FlagNotEmptyNotZero),
    flag(59, "CardReaderStatusEnabled", &R::bCardReaderStatus, FlagNotEmptyNotZero),
    flag(60, "CardEnquiryEnabled", &R::bCardEnquiry, FlagNotEmptyNotZero),
    flag(61, "DecimalInSplitTender", &R::bDecimalInSplitTender, FlagNotEmptyNotZero),
    flag(62, "E2EEEnabled", &R::bE2EEEnabled, FlagNotEmptyNotZero),
    flag(63, "AutoRunReport", &R::bAutoRunReport, FlagNotEmptyNotZero),
    flag(64, "OfflineModeEnabled", &R::bOfflineMode, FlagNotEmptyNotZero),
    text(65, "TessalyID", &R::strTessalyID),
    flag(66, "CloseBatch", &R::bCloseBatch, FlagNotEmptyNotZero),
    integer(67, "StartupPosition", &R::lStartupPosition),
    integer(68, "LeftTwips", &R::lLeftTwips),
    integer(69, "TopTwips", &R::lTopTwips),
    integer(70, "DisplayMode", &R::lDisplayMode),
    integer(71, "AddinHeight", &R::lAddinHeight),
    integer(72, "AddinWidth", &R::lAddinWidth),
    flag(73, "CustomerReceiptFirstIfPinVerified", &R::bCustomerReceiptFirstIfPinVerified,
         FlagNotEmptyNotZero),
    textOr(74, "PrintNormalControl", &R::strPrintNormalControl, "1B2100"),
    textOr(75, "PrintBoldControl", &R::strPrintBoldControl, "1B2148"),
    flag(76, "CutPaperAfterMerchantCopy", &R::bCutPaperAfterMerchantCopy, FlagMerchantCut),
    flag(77, "CutPaperAfterCustomerCopy", &R::bCutPaperAfterCustomerCopy, FlagEmptyOrOne),
    flag(78, "PrintMerchantHeader", &R::bPrintMerchantHeader, FlagEmptyOrOne),
    flag(79, "PrintCustomerHeader", &R::bPrintCustomerHeader, FlagEmptyOrOne),
    flag(80, "PromptTappedCustomerReceipt", &R::bPromptTappedCustomerReceipt, FlagOnlyOne),
    flag(81, "AutoAcceptTappedNoVerification", &R::bAutoAcceptTappedNoVerification, FlagOnlyOne),
    flag(82, "MerchantReceiptsAvailableToClients", &R::bMakeMerchantReceiptsAvailableToClient,
         FlagOnlyOne),
    flag(83, "AutoDeclinePinBypass", &R::bAutoDeclinePinBypass, FlagEmptyOrOne),
    text(84, "PedLanguageCode", &R::strPedLanguageCode),
    flag(85, "DisplayOndrelLogo", &R::bDisplayOndrelLogo, FlagOnlyOne),
    flag(86, "E2eeStoreOfflineTxnsOnPed", &R::bE2eeStoreTransactionOnPed, FlagOnlyOne),
    flag(87, "E2eeObscureCardNoInOfflineMode", &R::bE2eeObscureCardNumberOfflineMode, FlagOnlyOne),
    flag(88, "ObscureCardNoInOfflineMode", &R::bObscureCardNumberOfflineMode, FlagOnlyOne),
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

std::string realText(double value) {
    // The shortest text that reads back as the same number, with "." whatever the locale.
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    if (result.ec != std::errc()) {
        return "0";
    }
    return std::string(buffer, result.ptr);
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
                return realText(value);
            }
        },
        setting.member);
}

bool sameValue(const TCcAddinRegistry& left, const TCcAddinRegistry& right,
               const SettingDescriptor& setting) {
    return std::visit([&](auto member) { return left.*member == right.*member; }, setting.member);
}
