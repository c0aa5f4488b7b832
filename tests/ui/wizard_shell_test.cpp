#include "ui/wizard_fixture.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <filesystem>

TEST_F(WizardTest, StartsOnTheWelcomePageMovesOnePageAtATimeAndHoldsFinishUntilAChange) {
    plantSettings({{"SemiIntegrated", "0"},
                   {"Acquirer", "Barclays"},
                   {"BaseCurrency", "GBP"},
                   {"ComPort", "COM1"},
                   {"ChipDeviceName", "VeriFone VX820"},
                   {"TessalyID", "Barclays Live"},
                   {"Mode", "0"}});
    frmTessalyConfig& form = open();
    form.show();
    auto* back = control<QPushButton>("cmdBack");
    auto* next = control<QPushButton>("cmdNext");
    const auto expectAt = [&](int page, bool backEnabled, bool nextEnabled) {
        EXPECT_EQ(form.currentPage(), page);
        for (int shown = 0; shown <= 6; ++shown) {
            EXPECT_EQ(form.fraInstall(shown)->isVisibleTo(&form), shown == page) << shown;
        }
        EXPECT_EQ(back->isEnabled(), backEnabled) << page;
        EXPECT_EQ(next->isEnabled(), nextEnabled) << page;
    };

    // One point, between major and minor; the revision follows the minor directly.
    EXPECT_EQ(control<QLabel>("Label1")->text(), "Corvix Parvane Configuration Utility v1.00");
    expectAt(0, false, true);
    EXPECT_FALSE(finishEnabled()) << "complete settings, but nothing changed yet";
    // The encryption box alone never rechecks Finish; any other change does.
    control<QCheckBox>("chkE2EE")->setChecked(true);
    EXPECT_FALSE(finishEnabled());
    control<QLineEdit>("txtCxMerchant")->setText("777");
    EXPECT_TRUE(finishEnabled());

    for (int page = 1; page <= 5; ++page) {
        next->click();
        expectAt(page, true, page != 5);
    }
    for (int page = 4; page >= 0; --page) {
        back->click();
        expectAt(page, page != 0, true);
    }
    // From the welcome page: pages 2 and 4 leave Back as it was; the progress page has neither.
    for (int page : {2, 4, 6}) {
        form.ShowPage(page);
        expectAt(page, false, page != 6);
    }
    // A page outside the row changes no control but is still remembered.
    form.ShowPage(3);
    form.ShowPage(9);
    EXPECT_EQ(form.currentPage(), 9);
    EXPECT_TRUE(form.fraInstall(3)->isVisibleTo(&form));
    EXPECT_TRUE(back->isEnabled() && next->isEnabled());

    control<QPushButton>("cmdClose")->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(stored("CorvixMerchantId"), "") << "Close saves nothing";
}

TEST_F(WizardTest, FinishNeedsProfilePortDeviceCurrencyAndInFullModeAnAcquirer) {
    open();
    choose("cboCurrency", "GBP");
    choose("cboDevice", "VeriFone VX820");
    choose("cboPort", "COM4");
    ASSERT_EQ(combo("cboTessalyId")->currentText(), "Barclays Live");

    choose("cboConfigMode", "Fully Integrated");
    EXPECT_FALSE(finishEnabled()) << "fully integrated with no acquirer";
    choose("cboAcquirer", "HSBC");
    EXPECT_TRUE(finishEnabled());
    choose("cboAcquirer", "");
    choose("cboConfigMode", "Semi Integrated");
    EXPECT_TRUE(finishEnabled()) << "semi-integrated may leave the acquirer empty";

    for (const char* name : {"cboPort", "cboDevice", "cboCurrency"}) {
        QComboBox* box = combo(name);
        const int chosen = box->currentIndex();
        box->setCurrentIndex(0); // the empty entry
        EXPECT_FALSE(finishEnabled()) << name;
        box->setCurrentIndex(chosen);
        EXPECT_TRUE(finishEnabled()) << name;
    }
    // Without the profile file, refilling the profiles leaves none to choose.
    std::filesystem::remove(clientFolder() / "connectioninfo.ini");
    choose("cboInstallType", "TEST");
    EXPECT_EQ(combo("cboTessalyId")->count(), 0);
    EXPECT_FALSE(finishEnabled()) << "no connection profile";
}

// Alt with a letter must reach one control only: a letter shared with Back, Next, Finish or
// Close would make those buttons take focus instead of being pressed.
TEST_F(WizardTest, EachPageGivesEveryAltKeyToOneControlAndFitsAnSvgaScreen) {
    frmTessalyConfig& form = open();
    form.resize(form.sizeHint());
    EXPECT_LE(form.width(), 800);
    EXPECT_LE(form.height(), 600);
    for (int page = 0; page <= 5; ++page) {
        form.ShowPage(page);
        std::map<QKeySequence, QString> owners;
        const auto claim = [&](const QString& text) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (!key.isEmpty()) {
                EXPECT_TRUE(owners.emplace(key, text).second)
                    << "page " << page << ": " << text.toStdString() << " and "
                    << owners[key].toStdString();
            }
        };
        for (QWidget* widget : form.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&form)) {
                continue;
            }
            if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
                claim(button->text());
            } else if (auto* label = qobject_cast<QLabel*>(widget)) {
                claim(label->text());
                EXPECT_TRUE(label->buddy() != nullptr || !label->text().contains('&'))
                    << label->text().toStdString();
            }
        }
    }
}
