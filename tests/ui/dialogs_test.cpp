#include "ui/frm_pt_serial_config.h"
#include "ui/frm_tms.h"
#include "ui/printer_serial.h"
#include "ui/wizard_fixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {
struct SerialDialog {
    frmPTSerialConfig dialog;
    QString text(const char* name) const {
        if (auto* box = dialog.findChild<QComboBox*>(name)) {
            return box->currentText();
        }
        return dialog.findChild<QLineEdit*>(name)->text();
    }
    void type(const char* name, const QString& text) {
        dialog.findChild<QComboBox*>(name)->setCurrentText(text);
    }
    void click(const char* name) { dialog.findChild<QPushButton*>(name)->click(); }
};
} // namespace

TEST_F(WizardTest, SerialDialogShowsOnlyUsableStoredValuesOverItsDefaults) {
    const char* const names[] = {"cboPort",    "cboBaudRate",    "cboParity",  "cboDatabits",
                                 "cboStopbit", "cboFlowControl", "txtPaperCut"};
    // Unusable values give the defaults (a stored n reads as NONE); a cut sequence that is no
    // hex is shown as stored.
    const std::pair<PrinterSerialParameters, std::vector<QString>> rows[] = {
        {{"COM0", 14400, "n", 9, 1.25, 7, "", false},
         {"LPT1", "9600", "NONE", "8", "1", "Hardware", "1B64040D0A1B690D0A"}},
        {{"COM3", 19200, "EVEN", 7, 1.5, 1, "not hex", false},
         {"COM3", "19200", "EVEN", "7", "1.5", "Xon/Xoff", "not hex"}}};
    for (const auto& [stored, shown] : rows) {
        printerSerial = stored;
        SerialDialog serial;
        EXPECT_EQ(serial.dialog.windowTitle(), "Printer Settings");
        for (std::size_t i = 0; i < std::size(names); ++i) {
            EXPECT_EQ(serial.text(names[i]).toStdString(), shown[i].toStdString()) << names[i];
        }
    }
}

TEST_F(WizardTest, SerialDialogOkStoresWhatIsTypedAndCancelKeepsTheValues) {
    printerSerial = {"COM1", 9600, "NONE", 8, 1.0, 2, "1B69", false};
    {
        SerialDialog serial;
        serial.type("cboPort", "COM4");
        serial.type("cboBaudRate", "57600");
        serial.type("cboStopbit", "1.5");
        serial.type("cboFlowControl", "None");
        serial.click("cmdOK");
        EXPECT_EQ(serial.dialog.result(), QDialog::Accepted);
    }
    EXPECT_TRUE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM4");
    EXPECT_EQ(printerSerial.baudRate, 57600);
    EXPECT_EQ(printerSerial.stopBits, 1.5);
    EXPECT_EQ(printerSerial.flowControl, 0);
    EXPECT_EQ(printerSerial.paperCut, "1B69");

    {
        // A baud rate that is no number ends OK with the port already stored and the dialog open.
        SerialDialog serial;
        serial.type("cboPort", "COM6");
        serial.type("cboBaudRate", "fast");
        serial.type("cboDatabits", "5");
        serial.dialog.show();
        serial.click("cmdOK");
        EXPECT_TRUE(serial.dialog.isVisible());
        EXPECT_EQ(printerSerial.port, "COM6");
        EXPECT_EQ(printerSerial.baudRate, 57600);
        EXPECT_EQ(printerSerial.dataBits, 8);

        serial.click("cmdCancel");
        EXPECT_FALSE(serial.dialog.isVisible());
    }
    EXPECT_FALSE(printerSerial.accepted);
    EXPECT_EQ(printerSerial.port, "COM6");
}

TEST_F(WizardTest, TmsDialogDescribesEachCallAndLeavesTheChoiceBehind) {
    frmTms tms;
    EXPECT_EQ(tms.windowTitle(), "TMS Call");
    auto* types = tms.findChild<QComboBox*>("cboTmsType");
    auto* description = tms.findChild<QLabel*>("lblDesc");
    ASSERT_EQ(types->count(), 3);
    EXPECT_EQ(types->itemText(2), "Upload log files from ped");
    EXPECT_TRUE(description->text().startsWith("If ped already has an application on board"));
    types->setCurrentIndex(2);
    EXPECT_TRUE(description->text().endsWith("upload it's log files to Ondrel server."));
    types->setCurrentIndex(-1);
    EXPECT_EQ(description->text(), "");

    types->setCurrentIndex(1);
    tms.findChild<QPushButton*>("cmdTms")->click();
    EXPECT_EQ(TmsTypeSelected, 1);
    frmTms again;
    again.findChild<QPushButton*>("cmdCancel")->click();
    EXPECT_EQ(TmsTypeSelected, -1);
}
