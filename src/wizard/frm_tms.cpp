#include "wizard/frm_tms.h"

#include "foundation/error_trap.h"
#include "wizard/control_rules.h"

#include <array>
#include <string_view>

namespace wizard {
namespace {

struct TmsType {
    std::string_view item;
    std::string_view description;
};

// The index of each entry is the argument the script receives; "it's" is the text as shipped.
constexpr std::array<TmsType, 3> kTmsTypes{{
    {"Standard TMS call",
     "If ped already has an application on board, a check will be made with Ondrel server to "
     "check if there are any updates for the ped. If ped has no application on board then a full "
     "application download to the ped will be performed."},
    {"Force full download to ped",
     "If there is an application on board the ped and if the application is at a minimum "
     "version then this option will force a full application download to the ped."},
    {"Upload log files from ped",
     "If there is an application on board the ped and if the application is at a minimum "
     "version then this option will force the ped to upload it's log files to Ondrel server."},
}};

} // namespace

std::int32_t TmsTypeSelected = -1;

void frmTms::Form_Load() {
    TmsControls& c = controls;
    c.cboTmsType->Click = [this] { cboTmsType_Change(); };
    c.cmdTms->Click = [this] {
        TmsTypeSelected = controls.cboTmsType->ListIndex();
        Unload();
    };
    c.cmdCancel->Click = [this] { QueryUnload(); };
    quietly([&] {
        c.cboTmsType->Clear();
        for (const TmsType& type : kTmsTypes) {
            c.cboTmsType->AddItem(std::string(type.item));
        }
        SetListIndex(*c.cboTmsType, 0);
    });
}

void frmTms::QueryUnload() {
    TmsTypeSelected = -1;
    if (Unload) {
        Unload();
    }
}

void frmTms::cboTmsType_Change() {
    quietly([this] {
        controls.lblDesc->SetCaption("");
        const int index = controls.cboTmsType->ListIndex();
        if (index >= 0 && index < static_cast<int>(kTmsTypes.size())) {
            controls.lblDesc->SetCaption(
                std::string(kTmsTypes[static_cast<std::size_t>(index)].description));
        }
    });
}

} // namespace wizard
