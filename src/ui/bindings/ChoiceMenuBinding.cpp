#include "ui/bindings/ChoiceMenuBinding.h"

#include "ui/Conversions.h"
#include "ui/bindings/UserAct.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

#include <algorithm>

namespace kpx {

namespace {

bool showsItems(const QMenu& menu, const std::vector<PopUpButton::Item>& items) {
    return std::ranges::equal(menu.actions(), items, {}, &QAction::text,
                              [](const PopUpButton::Item& item) { return qstring(item.value_or("")); });
}

void showItems(QMenu& menu, const std::vector<PopUpButton::Item>& items) {
    menu.clear();
    auto* group = new QActionGroup(&menu);
    for (const PopUpButton::Item& item : items) {
        QAction* action = item ? menu.addAction(qstring(*item)) : menu.addSeparator();
        action->setCheckable(item.has_value());
        group->addAction(action);
    }
}

/// The one with the menu bar: a menu is a window of its own.
const QWidget& windowOf(const QMenu& menu) {
    const QWidget* around = &menu;
    while (around->windowType() == Qt::Popup && around->parentWidget()) {
        around = around->parentWidget();
    }
    return *around->window();
}

}  // namespace

void bind(PopUpButton& control, QMenu& menu) {
    control.changed = [&control, &menu] {
        if (!showsItems(menu, control.items())) {
            showItems(menu, control.items());
        }
        for (int index = 0; index < control.numberOfItems(); ++index) {
            menu.actions().at(index)->setChecked(index == control.indexOfSelectedItem());
        }
        menu.setEnabled(control.isEnabled());
    };
    QObject::connect(&menu, &QMenu::triggered, &menu,
                     byUser(control, windowOf(menu), [&control, &menu](QAction* action) {
                         control.userChoose(static_cast<int>(menu.actions().indexOf(action)));
                     }));
}

}  // namespace kpx
