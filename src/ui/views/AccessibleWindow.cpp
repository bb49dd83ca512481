#include "ui/views/AccessibleWindow.h"

#include "ui/views/MainWindow.h"
#include "ui/views/SheetDialog.h"

#include <QAccessibleWidget>

namespace kpx {

namespace {

class AccessibleWindow : public QAccessibleWidget {
public:
    AccessibleWindow(QWidget* window, QAccessible::Role role) : QAccessibleWidget(window, role) {}

    int childCount() const override { return QAccessibleWidget::childCount() + static_cast<int>(popUps().size()); }
    QAccessibleInterface* child(int index) const override {
        const int behind = index - QAccessibleWidget::childCount();
        return behind < 0 ? QAccessibleWidget::child(index)
                          : QAccessible::queryAccessibleInterface(popUps().value(behind, nullptr));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        const auto position = child ? popUps().indexOf(qobject_cast<QWidget*>(child->object())) : -1;
        return position < 0 ? QAccessibleWidget::indexOfChild(child)
                            : QAccessibleWidget::childCount() + static_cast<int>(position);
    }

private:
    /// Those of pop-ups and of the menu bar hang from these.
    QList<QWidget*> popUps() const {
        QList<QWidget*> found;
        for (QWidget* child : widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->windowType() == Qt::Popup && child->isVisible()) {
                found += child;
            }
        }
        return found;
    }
};

QAccessibleInterface* accessibleWindow(const QString&, QObject* object) {
    if (auto* window = qobject_cast<MainWindow*>(object)) {
        return new AccessibleWindow(window, QAccessible::Window);
    }
    auto* sheet = qobject_cast<SheetDialog*>(object);
    return sheet ? new AccessibleWindow(sheet, QAccessible::Dialog) : nullptr;
}

}  // namespace

void installAccessibleWindows() {
    // A second time changes nothing.
    QAccessible::installFactory(accessibleWindow);
}

}  // namespace kpx
