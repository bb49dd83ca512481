#include "ui/bindings/PopUpButtonBinding.h"

#include "ui/Conversions.h"
#include "ui/bindings/UserAct.h"

#include <QComboBox>
#include <QSignalBlocker>

namespace kpx {

namespace {

bool showsItems(const QComboBox& widget, const std::vector<PopUpButton::Item>& items) {
    if (widget.count() != static_cast<int>(items.size())) {
        return false;
    }
    for (int index = 0; index < widget.count(); ++index) {
        const PopUpButton::Item& item = items[static_cast<std::size_t>(index)];
        const bool separator =
            widget.itemData(index, Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
        if (separator != !item || (item && widget.itemText(index) != qstring(*item))) {
            return false;
        }
    }
    return true;
}

void showItems(QComboBox& widget, const std::vector<PopUpButton::Item>& items) {
    widget.clear();
    for (const PopUpButton::Item& item : items) {
        if (item) {
            widget.addItem(qstring(*item));
            widget.setItemData(widget.count() - 1, qstring(*item), Qt::ToolTipRole);
        } else {
            widget.insertSeparator(widget.count());
        }
    }
}

}  // namespace

void bind(PopUpButton& control, QComboBox& widget) {
    control.changed = [&control, &widget] {
        const QSignalBlocker noUserAct(widget);
        if (!showsItems(widget, control.items())) {
            showItems(widget, control.items());
        }
        widget.setCurrentIndex(control.indexOfSelectedItem());
        widget.setEnabled(control.isEnabled());
        widget.update();
    };
    QObject::connect(&widget, &QComboBox::activated, &widget,
                     byUser(control, widget, [&control](int index) { control.userChoose(index); }));
}

}  // namespace kpx
