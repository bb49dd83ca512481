#include "ui/views/SheetDialog.h"

#include <QAbstractButton>

namespace kpx {

SheetDialog::SheetDialog(QWidget* parent) : QDialog(parent) { setWindowModality(Qt::WindowModal); }

void SheetDialog::reject() {
    for (QAbstractButton* button : findChildren<QAbstractButton*>()) {
        if (button->objectName().startsWith(QStringLiteral("closeBtn"))) {
            button->click();
            return;
        }
    }
    QDialog::reject();
}

void SheetDialog::endSheet() { QDialog::reject(); }

}  // namespace kpx
