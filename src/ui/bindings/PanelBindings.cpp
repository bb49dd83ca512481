#include "ui/bindings/PanelBindings.h"

#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/bindings/UserAct.h"
#include "ui/views/FirstStepsView.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/ReceiptView.h"
#include "ui/views/SheetDialog.h"

#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QTabWidget>

#include <optional>
#include <string>
#include <utility>

namespace kpx {

void bind(TabView& control, QTabWidget& widget) {
    control.changed = [&control, &widget] {
        const QSignalBlocker noUserAct(widget);
        widget.setCurrentIndex(control.selectedTab());
    };
    QObject::connect(&widget, &QTabWidget::currentChanged, &widget,
                     byUser(control, widget, [&control](int index) { control.selectTab(index); }));
}

void bind(Bar& control, QFrame& widget) {
    control.changed = [&control, &widget] {
        auto* label = widget.findChild<QLabel*>();
        label->setText(qstring(control.text()));
        widget.setAccessibleName(label->text());
        widget.setVisible(control.isOpen());
    };
}

void bind(Steps& control, FirstStepsView& widget) {
    control.changed = [&control, &widget] {
        widget.setDone(control.done());
        widget.setShown(control.isOpen());
    };
}

void bind(Sheet& control, SheetDialog& widget) {
    control.changed = [&control, &widget] {
        if (control.isOpen() && !widget.isVisible()) {
            widget.open();
        } else if (!control.isOpen() && widget.isVisible()) {
            widget.endSheet();
        }
    };
}

void bind(Popover& control, PopoverFrame& widget, std::function<QWidget*(const Control&)> widgetForControl) {
    control.changed = [&control, &widget, find = std::move(widgetForControl)] {
        QWidget* anchor = control.isOpen() ? find(*control.anchor()) : nullptr;
        if (anchor) {
            widget.showBeside(anchor);
        } else if (widget.isVisible()) {
            widget.hide();
        }
    };
    QObject::connect(&widget, &PopoverFrame::closed, &widget, [&control] { control.close(); });
}

void bind(Menu& control, QMenu& widget) {
    control.changed = [&control, &widget] {
        widget.clear();
        for (std::size_t index = 0; index < control.items().size(); ++index) {
            const Menu::Item& item = control.items()[index];
            // A name in it may hold the character that would mark a mnemonic.
            QAction* action = widget.addAction(translated(item.title).replace(QLatin1Char('&'), QStringLiteral("&&")));
            action->setEnabled(item.enabled);
            QObject::connect(action, &QAction::triggered, &widget, [&control, &widget, index] {
                widget.hide();  // an act of assistive technology leaves it open
                if (control.action) {
                    control.action(static_cast<int>(index));
                }
            });
        }
    };
    QObject::connect(&widget, &QMenu::aboutToShow, &widget, [&control] {
        if (control.needsUpdate) {
            control.needsUpdate();
        }
    });
}

void bind(KPXReceiptView& control, ReceiptView& widget) {
    control.changed = [&control, &widget, shown = std::optional<std::string>()]() mutable {
        if (shown != control.file() || control.file().empty()) {
            shown = control.file();
            widget.showReceipt(control.file());
        }
        widget.setMessage(qstring(control.message()));
    };
}

}  // namespace kpx
