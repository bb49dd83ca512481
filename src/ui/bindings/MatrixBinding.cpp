#include "ui/bindings/MatrixBinding.h"

#include "ui/Conversions.h"
#include "ui/Translations.h"
#include "ui/bindings/UserAct.h"

#include <QAbstractButton>
#include <QSignalBlocker>

namespace kpx {

namespace {

QString buttonName(const Matrix& control, int tag) {
    return qstring(control.name()) + QLatin1Char('_') + QString::number(tag);
}

QAbstractButton* buttonOf(const Matrix& control, const QWidget& container, int tag) {
    return container.findChild<QAbstractButton*>(buttonName(control, tag));
}

void showCells(const Matrix& control, const QWidget& container) {
    for (const Matrix::Cell& cell : control.cells()) {
        if (QAbstractButton* button = buttonOf(control, container, cell.tag)) {
            const QSignalBlocker noUserAct(button);
            // An exclusive button could not be turned off when none is to be on.
            const bool exclusive = button->autoExclusive();
            button->setAutoExclusive(false);
            button->setChecked(cell.on);
            button->setAutoExclusive(exclusive);
        }
    }
}

}  // namespace

void bind(Matrix& control, QWidget& container) {
    for (const Matrix::Cell& cell : control.cells()) {
        QAbstractButton* button = buttonOf(control, container, cell.tag);
        if (!button) {
            continue;
        }
        // Not the click: assistive technology turns a button over without one.
        QObject::connect(button, &QAbstractButton::toggled, &container,
                         byUser(control, container, [&control, tag = cell.tag](bool on) {
                             if (control.kind() == Matrix::Kind::Checks || on) {
                                 control.userClick(tag, on);
                             }
                         }));
    }
    control.changed = [&control, &container] {
        showCells(control, container);
        container.setEnabled(control.isEnabled());
    };
}

std::vector<std::string> mismatches(const Matrix& control, const QWidget& container) {
    std::vector<std::string> found;
    for (const Matrix::Cell& cell : control.cells()) {
        const QAbstractButton* button = buttonOf(control, container, cell.tag);
        if (!button) {
            found.push_back(control.name() + " has no button for tag " + std::to_string(cell.tag));
        } else if (!Translations::areInstalled() && button->text().remove(QLatin1Char('&')) != qstring(cell.title)) {
            found.push_back(control.name() + " has another title for tag " + std::to_string(cell.tag));
        }
    }
    const auto buttons = container.findChildren<QAbstractButton*>();
    if (static_cast<std::size_t>(buttons.size()) != control.cells().size()) {
        found.push_back(control.name() + " has " + std::to_string(buttons.size()) + " buttons for " +
                        std::to_string(control.cells().size()) + " tags");
    }
    return found;
}

}  // namespace kpx
