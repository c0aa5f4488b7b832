// Page 3, "Receipt Printing Configuration": which printer prints the receipts and how, what is
// printed, and the serial line of a printer driven directly (through the printer dialog).
#pragma once

#include "wizard/control_set.h"
#include "wizard/printer_serial.h"

#include <cstdint>

class TCcAddinRegistry;

namespace wizard {

class Host;

class ReceiptPage {
public:
    ReceiptPage(ReceiptPageControls& controls, Host& host);
    void FillLists();
    void Load(const TCcAddinRegistry& settings);
    void Save(TCcAddinRegistry& settings) const;

private:
    void Refresh();
    void cmdComPort_Click();
    void ShowSerial();

    ReceiptPageControls& c_;
    Host& host_;
    // The serial line as this page keeps it between the dialog and the settings record.
    PrinterSerialParameters serial_;
    // A printer with no flow control stored is shown the dialog's own default (hardware), not
    // the "None" a stored 0 stands for.
    bool flowControlStored_ = false;
    // Bits of the receipt bitmap that no check box shows are kept as they were installed.
    std::int32_t otherReceiptBits_ = 0;
};

} // namespace wizard
