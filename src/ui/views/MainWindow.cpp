#include "ui/views/MainWindow.h"

#include "ui/style/Headings.h"
#include "ui/views/AccessibleWindow.h"
#include "ui/views/DayCalendar.h"
#include "ui/views/FoldingForm.h"
#include "ui/views/MenuBarKey.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/ReceiptView.h"
#include "ui/views/ReturnKey.h"
#include "ui/views/ScreenRoom.h"
#include "ui/views/SheetDialog.h"
#include "ui_CostTab.h"
#include "ui_DrugSheet.h"
#include "ui_EarlierStatesSheet.h"
#include "ui_FilterSheet.h"
#include "ui_HistoryTab.h"
#include "ui_MainWindow.h"
#include "ui_PatientSheet.h"
#include "ui_PharmacySheet.h"
#include "ui_PrescriberSheet.h"
#include "ui_RemindersSheet.h"
#include "ui_ReportTab.h"
#include "ui_ScheduleTab.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace kpx {

namespace {

/// A field of few digits is drawn for text of the usual size.
void makeRoomForDigits(const QWidget& page) {
    constexpr int margins = 20;
    for (QLineEdit* field : page.findChildren<QLineEdit*>()) {
        if (const int digits = field->property("digits").toInt(); digits > 0) {
            const int needed = field->fontMetrics().horizontalAdvance(QString(digits, QLatin1Char('0'))) + margins;
            field->setMinimumWidth(qMax(needed, field->minimumWidth()));
            field->setMaximumWidth(qMax(needed, field->maximumWidth()));
        }
    }
}

/// In the smallest window, and in a language of long words, what has no room is scrolled to instead of being cut. The
/// page comes into it when it is first seen: until then none of its texts need be measured.
class ScrolledPage : public QScrollArea {
public:
    explicit ScrolledPage(QWidget* page) : m_page(page) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        page->setParent(this);
        page->hide();
        viewport()->setAutoFillBackground(false);
    }

protected:
    void showEvent(QShowEvent* event) override {
        if (!widget()) {
            QWidget* first = m_page->focusWidget();
            setWidget(m_page);
            if (first) {
                first->setFocus();  // it lost the focus with the change of its parent
            }
            m_page->setAutoFillBackground(false);
        }
        QScrollArea::showEvent(event);
    }

private:
    QWidget* m_page;
};

template <class Form>
void addTab(QTabWidget& tabs) {
    auto* page = new QWidget;
    Form().setupUi(page);
    showHeadings(*page);
    makeRoomForDigits(*page);
    tabs.addTab(new ScrolledPage(page), page->windowTitle());
}

template <class Form>
void addSheet(QWidget& window) {
    auto* sheet = new SheetDialog(&window);
    Form().setupUi(sheet);
    showHeadings(*sheet);
    sheet->setMinimumSize(sheet->minimumSize().boundedTo(roomOnScreen(*sheet)));
}

}  // namespace

MainWindow::MainWindow() {
    installAccessibleWindows();
    Ui::MainWindow().setupUi(this);
    resize(size().boundedTo(roomOnScreen(*this)));
    addTabs();
    addSheets();
    addPopovers();
    new FoldingForm(*findChild<QWidget*>(QStringLiteral("entryCard")),
                    *findChild<QToolButton*>(QStringLiteral("foldFormBtn")));
    findChild<QWidget*>(QStringLiteral("patientPopTab1"))->setFocus();
    for (const char* name : {"contextMenuTab1", "contextMenuTab2", "contextMenuReceipt"}) {
        auto* menu = new QMenu(this);
        menu->setObjectName(QLatin1String(name));
    }
    openMenuBarByKey(*this);
    auto* quit = findChild<QAction*>(QStringLiteral("quitMenuItem"));
    // From the previews of reports, too.
    quit->setShortcutContext(Qt::ApplicationShortcut);
    connect(quit, &QAction::triggered, this, &MainWindow::quitWanted);
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
    addSheet<Ui::RemindersSheet>(*this);
    addSheet<Ui::EarlierStatesSheet>(*this);
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
    // Return, or a double click: the day is picked, and there is nothing more to do.
    connect(calendar, &QCalendarWidget::activated, dates, &QWidget::hide);

    auto* receipt = new PopoverFrame(this, PopoverFrame::Closing::ActInThisProgram);
    receipt->setObjectName(QStringLiteral("receiptPopover"));
    auto* view = new ReceiptView(receipt);
    view->setObjectName(QStringLiteral("dropView"));
    // Around it lie the frame and the button below.
    view->setFixedSize(QSize(480, 560).boundedTo(roomOnScreen(*this) - QSize(32, 48)));
    auto* receiptLayout = new QVBoxLayout(receipt);
    receiptLayout->setContentsMargins(8, 8, 8, 8);
    receiptLayout->addWidget(view);
    auto* find = new QPushButton(tr("&Find It…"), receipt);
    find->setObjectName(QStringLiteral("findReceiptBtn"));
    find->setProperty("hiddenWhileDisabled", true);
    receiptLayout->addWidget(find);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    Q_EMIT closed();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    QAbstractButton* pressed = isReturnKey(*event) ? buttonForReturn(focusWidget()) : nullptr;
    if (pressed) {
        pressed->click();
    } else {
        QMainWindow::keyPressEvent(event);
    }
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
