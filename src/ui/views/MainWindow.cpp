#include "ui/views/MainWindow.h"

#include "ui/views/DayCalendar.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/ReceiptView.h"
#include "ui/views/SheetDialog.h"
#include "ui_CostTab.h"
#include "ui_DrugSheet.h"
#include "ui_FilterSheet.h"
#include "ui_HistoryTab.h"
#include "ui_MainWindow.h"
#include "ui_PatientSheet.h"
#include "ui_PharmacySheet.h"
#include "ui_PrescriberSheet.h"
#include "ui_ReportTab.h"
#include "ui_ScheduleTab.h"

#include <QCloseEvent>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace kpx {

namespace {

template <class Form>
void addTab(QTabWidget& tabs) {
    auto* page = new QWidget;
    Form().setupUi(page);
    tabs.addTab(page, page->windowTitle());
}

template <class Form>
void addSheet(QWidget& window) {
    Form().setupUi(new SheetDialog(&window));
}

}  // namespace

MainWindow::MainWindow() {
    Ui::MainWindow().setupUi(this);
    // Leaves room for the title bar.
    constexpr int titleHeight = 32;
    resize(size().boundedTo(screen()->availableSize() - QSize(0, titleHeight)));
    addTabs();
    addSheets();
    addPopovers();
    findChild<QWidget*>(QStringLiteral("patientPopTab1"))->setFocus();
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("contextMenuTab2"));
    auto* quit = findChild<QAction*>(QStringLiteral("quitMenuItem"));
    // From the previews of reports, too.
    quit->setShortcutContext(Qt::ApplicationShortcut);
    connect(quit, &QAction::triggered, this, &QWidget::close);
}

void MainWindow::addTabs() {
    auto* tabs = findChild<QTabWidget*>(QStringLiteral("theTabView"));
    addTab<Ui::HistoryTab>(*tabs);
    addTab<Ui::ScheduleTab>(*tabs);
    addTab<Ui::CostTab>(*tabs);
    addTab<Ui::ReportTab>(*tabs);
    for (int index = 0; index < tabs->count(); ++index) {
        const QKeySequence keys(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + index));
        connect(new QShortcut(keys, this), &QShortcut::activated, tabs,
                [tabs, index] { tabs->setCurrentIndex(index); });
        tabs->setTabToolTip(index, keys.toString(QKeySequence::NativeText));
    }
    tabs->setCurrentIndex(0);
}

void MainWindow::addSheets() {
    addSheet<Ui::FilterSheet>(*this);
    addSheet<Ui::DrugSheet>(*this);
    addSheet<Ui::PatientSheet>(*this);
    addSheet<Ui::PharmacySheet>(*this);
    addSheet<Ui::PrescriberSheet>(*this);
}

void MainWindow::addPopovers() {
    auto* dates = new PopoverFrame(this, PopoverFrame::Closing::ActElsewhere);
    dates->setObjectName(QStringLiteral("thePopOver"));
    auto* calendar = new DayCalendar(dates);
    calendar->setObjectName(QStringLiteral("theDatePicker"));
    calendar->setAccessibleName(tr("Calendar"));
    auto* datesLayout = new QVBoxLayout(dates);
    datesLayout->setContentsMargins(8, 8, 8, 8);
    datesLayout->addWidget(calendar);

    auto* receipt = new PopoverFrame(this, PopoverFrame::Closing::ActInThisProgram);
    receipt->setObjectName(QStringLiteral("receiptPopover"));
    auto* view = new ReceiptView(receipt);
    view->setObjectName(QStringLiteral("dropView"));
    view->setFixedSize(480, 560);
    auto* receiptLayout = new QVBoxLayout(receipt);
    receiptLayout->setContentsMargins(8, 8, 8, 8);
    receiptLayout->addWidget(view);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

bool MainWindow::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::Paint && !m_painted) {
        m_painted = true;
        // After the painting, or it would not reach the screen before the start-up's work is done.
        QMetaObject::invokeMethod(this, &MainWindow::firstPainted, Qt::QueuedConnection);
    }
    return handled;
}

}  // namespace kpx
