#include "wizard/wizard_fixture.h"

#include <cctype>
#include <filesystem>
#include <set>

using wizard::frmTessalyConfig;

TEST_F(WizardTest, StartsOnTheWelcomePageMovesOnePageAtATimeAndHoldsFinishUntilAChange) {
    plantSettings({{"SemiIntegrated", "0"},
                   {"Acquirer", "Barclays"},
                   {"BaseCurrency", "GBP"},
                   {"ComPort", "COM1"},
                   {"ChipDeviceName", "VeriFone VX820"},
                   {"TessalyID", "Barclays Live"},
                   {"Mode", "0"}});
    frmTessalyConfig& form = open();
    const auto expectAt = [&](int page, bool backEnabled, bool nextEnabled) {
        EXPECT_EQ(form.CurrentPage(), page);
        for (int shown = 0; shown <= 6; ++shown) {
            EXPECT_EQ(window_.get<FakeFrame>("fraInstall(" + std::to_string(shown) + ")").Visible(),
                      shown == page)
                << shown;
        }
        EXPECT_EQ(button("cmdBack").Enabled(), backEnabled) << page;
        EXPECT_EQ(button("cmdNext").Enabled(), nextEnabled) << page;
    };

    // One point, between major and minor; the revision follows the minor directly.
    EXPECT_EQ(window_.label("Label1").Caption(), "Corvix Parvane Configuration Utility v1.00");
    expectAt(0, false, true);
    EXPECT_FALSE(finishEnabled()) << "complete settings, but nothing changed yet";
    // The encryption box alone never rechecks Finish; any other change does.
    check("chkE2EE").tick(true);
    EXPECT_FALSE(finishEnabled());
    text("txtCxMerchant").type("777");
    EXPECT_TRUE(finishEnabled());

    for (int page = 1; page <= 5; ++page) {
        button("cmdNext").press();
        expectAt(page, true, page != 5);
    }
    for (int page = 4; page >= 0; --page) {
        button("cmdBack").press();
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
    EXPECT_EQ(form.CurrentPage(), 9);
    EXPECT_TRUE(window_.get<FakeFrame>("fraInstall(3)").Visible());
    EXPECT_TRUE(button("cmdBack").Enabled() && button("cmdNext").Enabled());

    button("cmdClose").press();
    EXPECT_TRUE(host_.unloaded);
    EXPECT_EQ(addinValue("CorvixMerchantId"), "<missing>") << "Close saves nothing";
}

TEST_F(WizardTest, FinishNeedsProfilePortDeviceCurrencyAndInFullModeAnAcquirer) {
    open();
    combo("cboCurrency").choose("GBP");
    combo("cboDevice").choose("VeriFone VX820");
    combo("cboPort").choose("COM4");
    ASSERT_EQ(combo("cboTessalyId").Text(), "Barclays Live");

    combo("cboConfigMode").choose("Fully Integrated");
    EXPECT_FALSE(finishEnabled()) << "fully integrated with no acquirer";
    combo("cboAcquirer").choose("HSBC");
    EXPECT_TRUE(finishEnabled());
    combo("cboAcquirer").choose("");
    combo("cboConfigMode").choose("Semi Integrated");
    EXPECT_TRUE(finishEnabled()) << "semi-integrated may leave the acquirer empty";

    for (const char* name : {"cboPort", "cboDevice", "cboCurrency"}) {
        const int chosen = combo(name).ListIndex();
        combo(name).chooseIndex(0); // the empty entry
        EXPECT_FALSE(finishEnabled()) << name;
        combo(name).chooseIndex(chosen);
        EXPECT_TRUE(finishEnabled()) << name;
    }
    // Without the profile file, refilling the profiles leaves none to choose.
    std::filesystem::remove(clientFolder() / "connectioninfo.ini");
    combo("cboInstallType").choose("TEST");
    EXPECT_EQ(combo("cboTessalyId").ListCount(), 0);
    EXPECT_FALSE(finishEnabled()) << "no connection profile";
}

// Alt with a letter must reach one control only: a letter shared with Back, Next, Finish or
// Close would make those buttons take focus instead of being pressed. Both faces take their
// captions from this one table.
TEST(WizardControls, EachPageGivesEveryAltKeyToOneControl) {
    wizard::WizardControls controls;
    std::map<int, std::map<char, std::string>> owners;
    wizard::forEachControl(controls, [&](const wizard::ControlInfo& info, auto*&) {
        const std::size_t amp = info.caption.find('&');
        if (amp == std::string_view::npos || amp + 1 >= info.caption.size()) {
            return;
        }
        const char key = static_cast<char>(std::toupper(info.caption[amp + 1]));
        // The buttons below the pages are on every page.
        for (int page = 0; page <= 6; ++page) {
            if (info.page == page || info.page < 0) {
                const auto [owner, fresh] = owners[page].emplace(key, info.name);
                EXPECT_TRUE(fresh)
                    << "page " << page << ": " << info.name << " and " << owner->second;
            }
        }
    });
}
