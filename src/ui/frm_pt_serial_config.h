// "Printer Settings": the serial line and paper-cut sequence of a receipt printer driven over a
// serial port. Reads and writes the program-wide printer serial parameters, never arguments.
#pragma once

#include <QDialog>

class QComboBox;
class QLineEdit;
class QPushButton;

class frmPTSerialConfig : public QDialog {
public:
    explicit frmPTSerialConfig(QWidget* parent = nullptr);

private:
    void fillLists();
    void showCurrentValues();
    void cmdOK_Click();
    void cmdCancel_Click();

    QComboBox* cboPort;
    QComboBox* cboBaudRate;
    QComboBox* cboParity;
    QComboBox* cboDatabits;
    QComboBox* cboStopbit;
    QComboBox* cboFlowControl;
    QLineEdit* txtPaperCut;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
};
