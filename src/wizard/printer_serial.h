// The one program-wide set of receipt-printer serial parameters: the channel through which the
// receipt printing page and the printer serial settings dialog hand values to each other.
#pragma once

#include <cstdint>
#include <string>

namespace wizard {

struct PrinterSerialParameters {
    std::string port;
    std::int32_t baudRate = 0;
    std::string parity;
    std::int16_t dataBits = 0;
    double stopBits = 0.0;
    std::int16_t flowControl = 0;
    std::string paperCut; // hexadecimal digits, two per byte
    bool accepted = false;
};

extern PrinterSerialParameters printerSerial;

} // namespace wizard
