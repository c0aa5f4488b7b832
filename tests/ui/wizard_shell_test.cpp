#include "ui/wizard_fixture.h"

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>

namespace {
const std::map<std::string, std::string> kCompleteFullyIntegrated = {
    {"SemiIntegrated", "0"},
    {"Acquirer", "Barclays"},
    {"BaseCurrency", "GBP"},
    {"ComPort", "COM1"},
    {"ChipDeviceName", "VeriFone VX820"},
    {"TessalyID", "Barclays Live"},
    {"Mode", "0"}};
} // namespace

TEST_F(WizardTest, StartUpShowsTheWelcomePageAndHoldsFinishBackUntilTheFirstChange) {
    plantClientFiles();
    plantSettings(kCompleteFullyIntegrated);
    frmTessalyConfig& form = open();

    EXPECT_EQ(form.windowTitle(), "Corvix Parvane Configuration Utility ");
    // One point, between major and minor; the revision follows the minor directly.
    EXPECT_EQ(control<QLabel>("Label1")->text(), "Corvix Parvane Configuration Utility v1.00");
    EXPECT_FALSE(control<QLabel>("Picture1")->pixmap().isNull());
    EXPECT_EQ(form.currentPage(), 0);
    for (int page = 0; page <= 6; ++page) {
        EXPECT_EQ(form.fraInstall(page)->isVisibleTo(&form), page == 0) << page;
    }
    EXPECT_FALSE(control<QPushButton>("cmdBack")->isEnabled());
    EXPECT_TRUE(control<QPushButton>("cmdNext")->isEnabled());
    EXPECT_TRUE(control<QPushButton>("cmdClose")->isEnabled());
    EXPECT_EQ(control<QPushButton>("cmdfInish")->text(), "&Finish");
    EXPECT_EQ(control<QPushButton>("cmdBack")->text(), "<< &Back");
    EXPECT_EQ(control<QPushButton>("cmdNext")->text(), "&Next >>");
    EXPECT_FALSE(finishEnabled()) << "complete settings, but nothing changed yet";

    control<QLineEdit>("txtCxMerchant")->setText("777");
    EXPECT_TRUE(finishEnabled());
}

TEST_F(WizardTest, FinishNeedsProfilePortDeviceCurrencyAndInFullModeAnAcquirer) {
    plantClientFiles();
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
    combo("cboTessalyId")->clear();
    EXPECT_FALSE(finishEnabled()) << "no connection profile";
}

TEST_F(WizardTest, BackAndNextMoveOnePageAtATimeAndShowPageKeepsItsButtonTable) {
    plantClientFiles();
    frmTessalyConfig& form = open();
    auto* back = control<QPushButton>("cmdBack");
    auto* next = control<QPushButton>("cmdNext");

    for (int page = 1; page <= 5; ++page) {
        next->click();
        EXPECT_EQ(form.currentPage(), page);
        EXPECT_TRUE(form.fraInstall(page)->isVisibleTo(&form));
        EXPECT_FALSE(form.fraInstall(page - 1)->isVisibleTo(&form));
        EXPECT_TRUE(back->isEnabled()) << page;
        EXPECT_EQ(next->isEnabled(), page != 5) << page;
    }
    for (int page = 4; page >= 0; --page) {
        back->click();
        EXPECT_EQ(form.currentPage(), page);
        EXPECT_EQ(back->isEnabled(), page != 0) << page;
        EXPECT_TRUE(next->isEnabled()) << page;
    }

    // Pages 2 and 4 leave Back as it was.
    form.ShowPage(0);
    form.ShowPage(2);
    EXPECT_FALSE(back->isEnabled());
    form.ShowPage(4);
    EXPECT_FALSE(back->isEnabled());
    form.ShowPage(6);
    EXPECT_FALSE(back->isEnabled());
    EXPECT_FALSE(next->isEnabled());

    // A page outside the row changes no control but is still remembered.
    form.ShowPage(3);
    form.ShowPage(9);
    EXPECT_EQ(form.currentPage(), 9);
    EXPECT_TRUE(form.fraInstall(3)->isVisibleTo(&form));
    EXPECT_TRUE(back->isEnabled());
    EXPECT_TRUE(next->isEnabled());
}

TEST_F(WizardTest, ProgressMovesOnlyWhileJobsAreCountedAndNotPastTheEnd) {
    QProgressBar bar;
    bar.setRange(0, 10);
    bar.setValue(7);
    // {done, announced, shown}: nothing moves before jobs are announced or past the end.
    for (const auto& [done, jobs, shown] :
         {std::tuple{3, 0, 7}, std::tuple{2, 8, 25}, std::tuple{6, 8, 75}, std::tuple{5, 4, 75},
          std::tuple{4, 4, 100}}) {
        frmTessalyConfig::SetProgress(&bar, 0, 100, done, jobs);
        EXPECT_EQ(bar.value(), shown) << done << " of " << jobs;
        EXPECT_EQ(bar.maximum(), 100);
    }
}

TEST_F(WizardTest, CloseEndsTheWizardWithoutSavingAnything) {
    plantClientFiles();
    frmTessalyConfig& form = open();
    form.show();
    choose("cboAcquirer", "AIB");
    control<QPushButton>("cmdClose")->click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(stored("Acquirer"), "");
}

// Alt with a letter must reach one control only: a letter shared with Back, Next, Finish or
// Close would make those buttons take focus instead of being pressed.
TEST_F(WizardTest, EachPageGivesEveryAltKeyToOneControlAndFitsAnSvgaScreen) {
    plantClientFiles();
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
