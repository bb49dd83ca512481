#include "ui/preview/PrintDialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPageRanges>
#include <QPrinter>
#include <QRadioButton>

namespace kpx {

void PrintDialog::accept() {
    auto* listed = findChild<QRadioButton*>(QStringLiteral("pagesRadioButton"));
    auto* all = findChild<QRadioButton*>(QStringLiteral("printAll"));
    const auto* list = findChild<QLineEdit*>(QStringLiteral("pagesLineEdit"));
    const bool isListed = listed && all && list && listed->isChecked();
    const QPageRanges ranges = isListed ? QPageRanges::fromString(list->text()) : QPageRanges();
    if (ranges.isEmpty()) {
        QPrintDialog::accept();  // which tells what is wrong with a list that is none
        return;
    }
    all->setChecked(true);
    if (auto* oddOrEven = findChild<QComboBox*>(QStringLiteral("pageSetCombo"))) {
        oddOrEven->setCurrentIndex(0);
    }
    QPrintDialog::accept();
    listed->setChecked(true);
    printer()->setPrintRange(QPrinter::PageRange);
    printer()->setPageRanges(ranges);
}

}  // namespace kpx
