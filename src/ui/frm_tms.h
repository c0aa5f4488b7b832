// "TMS Call": the user picks the kind of terminal-management call after a fully integrated run.
// The choice is left in the program-wide TmsTypeSelected: the list index, or -1 when cancelled.
#pragma once

#include <QDialog>
#include <cstdint>

class QComboBox;
class QLabel;
class QPushButton;

extern std::int32_t TmsTypeSelected;

class frmTms : public QDialog {
public:
    explicit frmTms(QWidget* parent = nullptr);

private:
    void cboTmsType_Change();

    QComboBox* cboTmsType;
    QLabel* lblDesc;
    QPushButton* cmdTms;
    QPushButton* cmdCancel;
};
