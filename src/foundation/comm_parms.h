// The fixed vocabulary of serial and parallel connections: which ports, baud rates, data bits,
// stop bits, parities, flow-control kinds and dial types exist, how each is shown in a list, and
// how a shown text turns back into what the settings keep. Dialogs fill their lists and check
// their input here only, so lists and checks cannot disagree. No operation reports an error.
#pragma once

#include "foundation/list_control.h"

#include <cstdint>
#include <string>

class CommParms {
public:
    bool IsValidDataBits(std::int16_t dataBits) const;
    bool IsValidStopbit(double stopBits) const;
    bool IsValidBaudRate(std::int32_t baudRate) const;

    // Only the ports and the flow-control kinds clear the box first; the others append.
    void FillBoxWithPorts(ListControl& box) const;
    void FillBoxWithParity(ListControl& box) const;
    void FillBoxWithDatabits(ListControl& box) const;
    void FillBoxWithBaudRates(ListControl& box) const;
    void FillBoxWithStopBits(ListControl& box) const;
    void FillBoxWithDialTypes(ListControl& box) const;
    void FillBoxWithFlowControlTypes(ListControl& box) const;

    // The text unchanged when it names a usable port, else "".
    std::string GetCommPortStr(const std::string& portText) const;
    std::int16_t GetCommPortID(const std::string& portText) const;
    std::string GetParityStr(const std::string& text) const;
    std::string GetDialTypeStr(std::int16_t id) const;
    std::int16_t GetDialTypeID(const std::string& text) const;
    std::int16_t GetFlowControlID(const std::string& text) const;
    std::string GetFlowControlStr(std::int16_t id) const;
    bool IsValidFlowControlID(std::int16_t id) const;
};
