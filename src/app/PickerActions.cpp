#include "app/KPXAppDelegate.h"

#include <array>

namespace kpx {

namespace {

struct PickerTarget {
    const Button* trigger;
    DateField* field;
};

/// The position is the tag by which the shared picker remembers its field.
std::array<PickerTarget, 8> pickerTargets(Outlets& outlets) {
    return {{{&outlets.popOverTriggerTab1DispenseDate, &outlets.dispenseDateTab1},
             {&outlets.popOverTriggerTab1ExpirationDate, &outlets.expirationDateTab1},
             {&outlets.fromDateFilterCalIcon, &outlets.beginDateForShowTab1},
             {&outlets.toDateFilterCalIcon, &outlets.endDateForShowTab1},
             {&outlets.popOverTriggerTab3BeginDate, &outlets.beginDateTab3},
             {&outlets.popOverTriggerTab3EndDate, &outlets.endDateTab3},
             {&outlets.popOverTriggerTab4BeginDate, &outlets.beginDateTab4},
             {&outlets.popOverTriggerTab4EndDate, &outlets.endDateTab4}}};
}

}  // namespace

void KPXAppDelegate::togglePopOver(Control& sender) {
    if (&sender == &outlets.dropButton) {
        showReceiptOfForm();
        outlets.receiptPopover.show(sender);
        return;
    }
    outlets.thePopOver.show(sender);
    const auto targets = pickerTargets(outlets);
    for (std::size_t tag = 0; tag < targets.size(); ++tag) {
        if (targets[tag].trigger == &sender) {
            outlets.theDatePicker.setDate(targets[tag].field->date());
            outlets.theDatePicker.setTag(static_cast<int>(tag));
        }
    }
}

void KPXAppDelegate::userPickedFromGraphicalDatePicker() {
    const int tag = outlets.theDatePicker.tag();
    const auto targets = pickerTargets(outlets);
    if (tag < 0 || tag >= static_cast<int>(targets.size())) {
        doSheetAlert(mainWindow, localized("Failure in Graphical Date Picker"), localized("Please report to Velmora"));
        return;
    }
    targets[static_cast<std::size_t>(tag)].field->setDate(outlets.theDatePicker.date());
}

}  // namespace kpx
