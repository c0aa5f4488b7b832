#include "foundation/comm_parms.h"

#include "platform/cp1252.h"

#include <array>
#include <string_view>

namespace {

constexpr int kHighestComPort = 256;
constexpr std::array<std::int32_t, 10> kBaudRates = {110,  300,   1200,  2400,  4800,
                                                     9600, 19200, 38400, 57600, 115200};
constexpr std::array<const char*, 5> kParities = {"EVEN", "ODD", "NONE", "SPACE", "MARK"};
constexpr std::array<const char*, 3> kDialTypes = {"TONE", "PULSE", "ISDN"}; // id = position
constexpr std::array<const char*, 4> kDataBits = {"5", "6", "7", "8"};
constexpr std::array<const char*, 3> kStopBits = {"1", "1.5", "2"};

constexpr std::int16_t kFlowNone = 0;
constexpr std::int16_t kFlowXonXoff = 1;
constexpr std::int16_t kFlowHardware = 2;

// The number formed by the leading digits of the text from its fourth character on ("COM12x"
// gives 12, "COMx" 0). Saturates well above any port number instead of overflowing.
long portNumber(const std::string& portText) {
    long number = 0;
    for (std::size_t i = 3; i < portText.size(); ++i) {
        const char c = portText[i];
        if (c < '0' || c > '9') {
            break;
        }
        number = number * 10 + (c - '0');
        if (number > 1'000'000) {
            return 1'000'000;
        }
    }
    return number;
}

template <typename Texts> void addAll(ListControl& box, const Texts& texts) {
    for (const auto& text : texts) {
        box.AddItem(text);
    }
}

// Every operation runs under a trap: a fault ends it with the result it had reached, which is
// false for the checks, the empty text for the texts and the items already added for the fills.
template <typename Result, typename Body> Result trapped(Result reached, Body body) {
    try {
        return body();
    } catch (...) {
        return reached;
    }
}

template <typename Body> void trapped(Body body) {
    try {
        body();
    } catch (...) {
    }
}

} // namespace

bool CommParms::IsValidDataBits(std::int16_t dataBits) const {
    return dataBits >= 5 && dataBits <= 8;
}

bool CommParms::IsValidStopbit(double stopBits) const {
    return stopBits == 1.0 || stopBits == 1.5 || stopBits == 2.0;
}

bool CommParms::IsValidBaudRate(std::int32_t baudRate) const {
    for (const std::int32_t rate : kBaudRates) {
        if (rate == baudRate) {
            return true;
        }
    }
    return false;
}

void CommParms::FillBoxWithPorts(ListControl& box) const {
    trapped([&] {
        box.Clear();
        box.AddItem("LPT1");
        box.AddItem("LPT2");
        for (int port = 1; port <= kHighestComPort; ++port) {
            box.AddItem("COM" + std::to_string(port));
        }
    });
}

void CommParms::FillBoxWithParity(ListControl& box) const {
    trapped([&] { addAll(box, kParities); });
}

void CommParms::FillBoxWithDatabits(ListControl& box) const {
    trapped([&] { addAll(box, kDataBits); });
}

void CommParms::FillBoxWithBaudRates(ListControl& box) const {
    trapped([&] {
        for (const std::int32_t rate : kBaudRates) {
            box.AddItem(std::to_string(rate));
        }
    });
}

void CommParms::FillBoxWithStopBits(ListControl& box) const {
    trapped([&] { addAll(box, kStopBits); });
}

void CommParms::FillBoxWithDialTypes(ListControl& box) const {
    trapped([&] { addAll(box, kDialTypes); });
}

void CommParms::FillBoxWithFlowControlTypes(ListControl& box) const {
    trapped([&] {
        box.Clear();
        box.AddItem(GetFlowControlStr(kFlowXonXoff));
        box.AddItem(GetFlowControlStr(kFlowHardware));
        box.AddItem(GetFlowControlStr(kFlowNone));
    });
}

// Only the number after the first three characters is checked, so any three-letter prefix
// followed by 1 to 256 passes; settings written that way on existing tills stay valid.
std::string CommParms::GetCommPortStr(const std::string& portText) const {
    return trapped(std::string(), [&]() -> std::string {
        if (portText.size() < 4) {
            return {};
        }
        const long number = portNumber(portText);
        if ((number > 0 && number <= kHighestComPort) || portText == "LPT1" || portText == "LPT2") {
            return portText;
        }
        return {};
    });
}

std::int16_t CommParms::GetCommPortID(const std::string& portText) const {
    if (portText.size() < 4) {
        return 1;
    }
    const long number = portNumber(portText);
    return number <= 32767 ? static_cast<std::int16_t>(number) : std::int16_t{0};
}

std::string CommParms::GetParityStr(const std::string& text) const {
    return trapped(std::string(), [&]() -> std::string {
        if (text.empty()) {
            return {};
        }
        const char initial = cp1252::toUpper(text.front());
        for (const char* parity : kParities) {
            if (parity[0] == initial) {
                return parity;
            }
        }
        return {};
    });
}

std::string CommParms::GetDialTypeStr(std::int16_t id) const {
    return trapped(std::string(), [&]() -> std::string {
        if (id < 0 || static_cast<std::size_t>(id) >= kDialTypes.size()) {
            return {};
        }
        return kDialTypes[static_cast<std::size_t>(id)];
    });
}

// An unknown dial type silently becomes tone (0). Exact, case-sensitive match.
std::int16_t CommParms::GetDialTypeID(const std::string& text) const {
    for (std::size_t id = 0; id < kDialTypes.size(); ++id) {
        if (text == kDialTypes[id]) {
            return static_cast<std::int16_t>(id);
        }
    }
    return 0;
}

std::int16_t CommParms::GetFlowControlID(const std::string& text) const {
    if (text == "Xon/Xoff") {
        return kFlowXonXoff;
    }
    if (text == "Hardware") {
        return kFlowHardware;
    }
    return kFlowNone;
}

// Unlike the dial types, an unknown identifier reads as "None", never as the empty text: a
// dialog always has a flow-control choice to show.
std::string CommParms::GetFlowControlStr(std::int16_t id) const {
    return trapped(std::string(), [&]() -> std::string {
        switch (id) {
        case kFlowXonXoff:
            return "Xon/Xoff";
        case kFlowHardware:
            return "Hardware";
        default:
            return "None";
        }
    });
}

bool CommParms::IsValidFlowControlID(std::int16_t id) const {
    return id == kFlowNone || id == kFlowXonXoff || id == kFlowHardware;
}
