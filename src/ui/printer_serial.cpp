#include "ui/printer_serial.h"

PrinterSerialParameters printerSerial;
