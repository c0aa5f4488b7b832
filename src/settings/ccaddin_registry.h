// The card add-in's settings as one record, loaded whole from its registry key and written back
// one setting at a time by field number. The registry names, field numbers and the rule by which
// each stored text becomes a value live in one table (settings/settings_table.h); the record
// itself is plain data.
#pragma once

#include <cstdint>
#include <string>

class TCcAddinRegistry {
public:
    // Loads every setting from the key; a missing key or value reads as empty text and takes
    // the setting's default. Never reports a failure.
    void ReadRegistry();

    // Stores the one setting with this field number (0 to 88); any other number writes nothing.
    void WriteRegistry(std::int32_t fieldNumber);

    // Deletes receipt files older than `daysToKeep` days at most once a day and records the day
    // of the clean-up as "LastReceiptDeleteDate".
    void DeleteReceipts(std::int32_t daysToKeep, const std::string& lastDeleteDate,
                        const std::string& receiptFolder);

    // Store the present moment as "YYYYMMDDHHMMSS"; the matching properties are left alone.
    void SaveZReportDate();
    void SaveLastTmsCallDate();

    // The settings, in the order the add-in's record has always listed them (which is not the
    // order of their field numbers).
    bool bAppendLineFeed = false;
    std::string strbaseCurrency;
    std::int32_t lBaseCurrencyExponent = 0;
    std::string strBaseCurrencyName;
    std::string strConfigFileLocation;
    std::string strConfigFileName;
    bool bCustomerNotPresent = false;
    std::int32_t lDeleteReceiptDays = 0;
    bool bExternalSwipe = false;
    std::string strLastReceiptDeleteDate;
    std::string strLastZReportDate;
    bool bObscureCardNumber = false;
    std::string strOposPrinterDeviceName;
    std::string strCorvixClientId;
    std::string strCorvixMerchantId;
    std::string strCorvixPassword;
    std::string strReceiptFileLocation;
    std::string strReportFileLocation;
    std::string strRmsCashTenderType;
    std::string strRmsCcTenderType;
    bool bSaveReceipts = false;
    bool bSplitTender = false;
    std::string strWindowsPrinterName;
    std::string strWindowsPrinterFontName;
    std::string strAcquirer;
    bool bTestMode = false;
    std::string strIdlePrompt1;
    std::string strIdlePrompt2;
    std::string strComPort;
    std::string strChipDeviceName;
    std::string strDccFormTitle;
    bool bMailOrderOnly = false;
    std::int32_t lPrintReceiptsBitmap = 0;
    std::int32_t lLineFeedsBeforePaperCut = 0;
    bool bAutoAcceptOnPinVerification = false;
    bool bWindowsFontBold = false;
    std::int32_t lWindowsFontSize = 0;
    std::int32_t lTillType = 0;
    std::int32_t lRmsReceiptPrinterNo = 0;
    bool bRefundSigOnMerchCopy = false;
    bool bAlwaysOnTop = false;
    bool bRePrintReceipt = false;
    std::string strPrinterPort;
    std::int32_t lPrinterBaudRate = 0;
    std::string strPrinterParity;
    std::int32_t lPrinterdatabits = 0;
    double dPrinterStopbit = 0.0;
    std::int32_t lPrinterFlowControl = 0;
    std::int32_t lPrinterType = 0;
    std::string strPrinterCutPaper;
    std::string strTrackStartId;
    std::string strTrackEndId;
    bool bDailyTmsCall = false;
    std::string strLastTmsCallDate;
    std::string strFuelType;
    bool bCashback = false;
    bool bCardReaderStatus = false;
    bool bCardEnquiry = false;
    bool bDecimalInSplitTender = false;
    bool bE2EEEnabled = false;
    bool bAutoRunReport = false;
    bool bOfflineMode = false;
    std::string strTessalyID;
    bool bCloseBatch = false;
    std::int32_t lStartupPosition = 0;
    std::int32_t lLeftTwips = 0;
    std::int32_t lTopTwips = 0;
    std::int32_t lDisplayMode = 0;
    std::int32_t lOperatingMode = 0;
    std::int32_t lAddinWidth = 0;
    std::int32_t lAddinHeight = 0;
    bool bCustomerReceiptFirstIfPinVerified = false;
    std::string strPrintNormalControl;
    std::string strPrintBoldControl;
    bool bCutPaperAfterMerchantCopy = false;
    bool bCutPaperAfterCustomerCopy = false;
    bool bPrintMerchantHeader = false;
    bool bPrintCustomerHeader = false;
    bool bPromptTappedCustomerReceipt = false;
    bool bAutoAcceptTappedNoVerification = false;
    std::int32_t lCashbackEntryType = 0;
    std::int32_t lDccType = 0;
    bool bMakeMerchantReceiptsAvailableToClient = false;
    bool bAutoDeclinePinBypass = false;
    std::string strPedLanguageCode;
    bool bDisplayOndrelLogo = false;
    bool bE2eeStoreTransactionOnPed = false;
    bool bE2eeObscureCardNumberOfflineMode = false;
    bool bObscureCardNumberOfflineMode = false;
};

// True when the add-in's key holds a text other than "" for the setting with this field number.
// The record reads a missing value and a stored 0 alike; the few places that must tell "nothing
// stored" from a stored value ask here.
bool settingStored(std::int32_t fieldNumber);
