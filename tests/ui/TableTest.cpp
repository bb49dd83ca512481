#include "core/DataFiles.h"
#include "core/Keys.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/style/Colors.h"
#include "ui/views/FindField.h"
#include "ui/views/GaugeDelegate.h"
#include "ui/views/RecordTableView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTest>
#include <QToolTip>

#include <algorithm>
#include <memory>

using namespace kpx;
using namespace kpx::test;

/// Tables: rows, order, selection, and cells that warn.
class TableTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void cleanup() { m_program.reset(); }

    void nothingIsCalledEmptyBeforeItCouldBeRead() {
        QStandardItemModel none;
        RecordTableView table;
        table.setModel(&none);
        table.setEmptyTitle(QStringLiteral("Nothing here"));
        table.resize(400, 200);
        const QImage first = table.grab().toImage();
        const QImage second = table.grab().toImage();
        QVERIFY(first != second);
        QCOMPARE(table.grab().toImage(), second);
    }

    void theHistoryIsShownNewestFirst() {
        QCOMPARE(history()->model()->rowCount(), 11);
        QCOMPARE(shown(0, 0), QStringLiteral("Zoë Holloway"));
        QCOMPARE(shown(0, 9), QStringLiteral(".80"));
        QCOMPARE(shown(1, 9), QStringLiteral("1,248.50"));
    }

    void titlesAreMeasuredOnceTheyAreSeen() {
        const auto fits = [](const QTableView& table, int column) {
            const QString title = table.model()->headerData(column, Qt::Horizontal).toString();
            return table.horizontalHeader()->sectionSizeHint(column) >= table.fontMetrics().horizontalAdvance(title);
        };
        const auto& schedule = *widgetNamed<QTableView>(m_program->window(), "tableViewTab2");
        QVERIFY(!fits(schedule, 0));
        m_program->delegate().outlets.theTabView.selectTab(Outlets::scheduleTab);
        QTRY_VERIFY(schedule.isVisible());
        for (int column = 0; column < schedule.model()->columnCount(); ++column) {
            QVERIFY(fits(schedule, column));
        }
        QVERIFY(schedule.horizontalHeader()->height() > schedule.fontMetrics().height());
    }

    void aClickOnTheHeaderSortsAndTheNextOneTurnsTheOrder() {
        QHeaderView* header = history()->horizontalHeader();
        const QPoint patient(header->sectionViewportPosition(0) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, patient);
        QCOMPARE(shown(0, 0), QStringLiteral("Ann Holloway"));
        QCOMPARE(header->sortIndicatorSection(), 0);
        QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, patient);
        QCOMPARE(shown(0, 0), QStringLiteral("Zoë Holloway"));
        QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
        QCOMPARE(table().sortDescriptors().size(), std::size_t{1});
    }

    void rowsBuiltAnewLoseTheArrowOfAnOrderTheyAreNotIn() {
        QHeaderView* header = history()->horizontalHeader();
        const QPoint patient(header->sectionViewportPosition(0) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, patient);
        QCOMPARE(header->sortIndicatorSection(), 0);
        clickRow(*history(), 1);
        QCOMPARE(header->sortIndicatorSection(), 0);
        // Builds the rows in the file's order.
        Outlets& outlets = m_program->delegate().outlets;
        outlets.beginDateForShowTab1.setDate(Date::fromSecondsSince1970(0));
        outlets.endDateForShowTab1.setDate(outlets.dispenseDateTab1.date());
        outlets.showBtnTab1.userClick();
        QCOMPARE(header->sortIndicatorSection(), -1);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, patient);
        QCOMPARE(header->sortIndicatorSection(), 0);
        QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
        QCOMPARE(shown(0, 0), QStringLiteral("Ann Holloway"));
    }

    void fewerRowsLeaveNoneSelected() {
        clickRow(*history(), history()->model()->rowCount() - 1);
        Outlets& outlets = m_program->delegate().outlets;
        // A day on which nothing was dispensed, but for one.
        outlets.beginDateForShowTab1.setDate(outlets.dispenseDateTab1.date());
        outlets.endDateForShowTab1.setDate(outlets.dispenseDateTab1.date());
        int clicks = 0;
        connect(history(), &RecordTableView::rowClicked, this, [&clicks] { ++clicks; });
        outlets.showBtnTab1.userClick();
        QVERIFY(history()->model()->rowCount() < 11);
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!history()->selectionModel()->hasSelection());
        QCOMPARE(clicks, 0);
    }

    void aToolTipShowsANameAsTyped() {
        const QString name = QStringLiteral("<img src='file:///secret.png' width='900' height='900'><b>Ann</b>");
        Records records = copyArrayFromDataFile(dataFolder(), prescriptionHistoryFile).value();
        for (Record& record : records) {
            record.set(MHPatientKey, name.toStdString());
        }
        QVERIFY(writeArray(records, dataFolder(), prescriptionHistoryFile));
        m_program.reset();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        const QPoint place = history()->visualRect(history()->model()->index(0, 0)).center();
        QHelpEvent hover(QEvent::ToolTip, place, history()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(history()->viewport(), &hover);
        QTRY_COMPARE(QToolTip::text(), name);
        const auto isToolTip = [](const QWidget* widget) { return widget->inherits("QTipLabel"); };
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(windows, isToolTip);
        QVERIFY(found != windows.end());
        const auto* label = qobject_cast<QLabel*>(*found);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->sizeHint().height() < 300);
        QToolTip::hideText();
    }

    void clicksSelectAndDoubleClicksLoad() {
        clickRow(*history(), 1);
        QCOMPARE(table().selectedRow(), 1);
        QVERIFY(history()->selectionModel()->isRowSelected(1));
        QVERIFY(!button("changeBtnTab1")->isEnabled());
        clickRow(*history(), 2, true);
        QVERIFY(button("changeBtnTab1")->isEnabled());
        QVERIFY(button("deleteBtnTab1")->isEnabled());
        clickRow(*history(), -1);
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!history()->selectionModel()->hasSelection());
    }

    void rowsAreReachedByKeys() {
        clickRow(*history(), 0);
        QTest::keyClick(history(), Qt::Key_Down);
        QCOMPARE(table().selectedRow(), 1);
        QTest::keyClick(history(), Qt::Key_Return);
        QVERIFY(button("changeBtnTab1")->isEnabled());
    }

    void whatIsTypedIsFoundByKeysAlone() {
        auto* field = history()->findChild<FindField*>();
        clickRow(*history(), 4);
        // Nothing was sought yet, so nothing is missing either.
        QTest::keyClick(history(), Qt::Key_F3);
        QTest::keyClick(history(), Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(field->isVisible());
        QVERIFY(field->accessibleDescription().isEmpty());
        QTest::keyClicks(field, QStringLiteral("zoe"));
        QCOMPARE(table().selectedRow(), 5);
        QTest::keyClick(field, Qt::Key_F3);
        QCOMPARE(table().selectedRow(), 6);
        QTest::keyClick(field, Qt::Key_F3);
        QCOMPARE(table().selectedRow(), 0);
        QTest::keyClick(field, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(table().selectedRow(), 6);
        QTest::keyClicks(field, QStringLiteral("x"));
        QCOMPARE(table().selectedRow(), 6);
        QVERIFY(!field->accessibleDescription().isEmpty());
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!field->isVisible() && history()->hasFocus());
        QCOMPARE(history()->model()->rowCount(), 11);
    }

    void aRightClickSelectsItsRowAndCountsAsAClick() {
        clickRow(*history(), 1, true);
        QVERIFY(button("changeBtnTab1")->isEnabled());
        auto* menu = widgetNamed<QMenu>(m_program->window(), "contextMenuTab1");
        const QPoint place = history()->visualRect(history()->model()->index(3, 0)).center();
        QContextMenuEvent wanted(QContextMenuEvent::Mouse, place, history()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(history()->viewport(), &wanted);
        QTRY_VERIFY(menu->isVisible());
        QCOMPARE(table().selectedRow(), 3);
        QVERIFY(history()->selectionModel()->isRowSelected(3));
        QVERIFY(!button("changeBtnTab1")->isEnabled());
        menu->hide();
        // The Menu key opens it for the selected row.
        QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(history()->viewport(), &byKey);
        QTRY_VERIFY(menu->isVisible());
        QCOMPARE(table().selectedRow(), 3);
        menu->actions().constFirst()->trigger();
        QVERIFY(button("changeBtnTab1")->isEnabled());
        menu->hide();
    }

    void aSelectionMadeOtherwiseCountsAsAClick() {
        clickRow(*history(), 1, true);
        QVERIFY(button("changeBtnTab1")->isEnabled());
        // As assistive technology selects.
        history()->selectionModel()->select(history()->model()->index(4, 0),
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QCOMPARE(table().selectedRow(), 4);
        QVERIFY(!button("changeBtnTab1")->isEnabled());
    }

    void theFillJustStoredIsFramedAndInView() {
        clickRow(*history(), 0, true);
        button("changeBtnTab1")->click();
        const int stored = table().markedRow();
        QVERIFY(stored >= 0);
        QCOMPARE(table().selectedRow(), -1);
        QVERIFY(!history()->selectionModel()->hasSelection());
        const QRect row = history()->visualRect(history()->model()->index(stored, 0));
        QVERIFY(history()->viewport()->rect().contains(row.center()));
        const auto edge = [&] {
            return history()->viewport()->grab().toImage().pixelColor(row.left() + 60, row.top() + 1);
        };
        QCOMPARE(edge(), history()->palette().color(QPalette::Highlight));
        clickRow(*history(), stored == 0 ? 1 : 0);
        QVERIFY(edge() != history()->palette().color(QPalette::Highlight));
    }

    void aSortMovesTheMarkWithTheFill() {
        clickRow(*history(), 0, true);
        button("changeBtnTab1")->click();
        const auto marked = [this] {
            return m_program->delegate().maintArrayForTVTab1.at(static_cast<std::size_t>(table().markedRow()));
        };
        const int stored = table().markedRow();
        const Record fill = marked();
        for (const bool ascending : {true, false}) {
            table().userSort("dispensedate", ascending);
            QVERIFY(marked() == fill);
        }
        QVERIFY(table().markedRow() != stored);
    }

    void noCellCanBeEdited() {
        clickRow(*history(), 1);
        QVERIFY(!(history()->model()->flags(history()->model()->index(1, 0)) & Qt::ItemIsEditable));
        QTest::keyClick(history(), Qt::Key_F2);
        QVERIFY(history()->viewport()->findChildren<QLineEdit*>().isEmpty());
    }

    void aTableReachedByTabShowsItAlsoWithoutACurrentRow() {
        m_program->window().activateWindow();
        QVERIFY(waitUntilActive(&m_program->window()));
        button("filterBtnTab1")->setFocus();
        const auto edge = [this] { return history()->grab().toImage().pixelColor(0, history()->height() / 2); };
        const QColor quiet = edge();
        for (int count = 0; count < 3 && !history()->hasFocus(); ++count) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(history()->hasFocus());
        QVERIFY(!history()->currentIndex().isValid());
        QVERIFY(edge() != quiet);
    }

    void redCellsSayWhyInWords() {
        m_program->delegate().outlets.theTabView.selectTab(1);
        QTest::mouseClick(button("showBtnTab2"), Qt::LeftButton);
        auto* schedule = widgetNamed<RecordTableView>(m_program->window(), "tableViewTab2");
        const QAbstractItemModel& model = *schedule->model();
        int red = 0;
        int gauges = 0;
        for (int row = 0; row < model.rowCount(); ++row) {
            for (int column = 0; column < model.columnCount(); ++column) {
                const QModelIndex index = model.index(row, column);
                const bool isRed = index.data(Qt::ForegroundRole).isValid();
                const QString spoken = index.data(Qt::AccessibleTextRole).toString();
                const bool warns = spoken.endsWith(QStringLiteral("Due")) || spoken.endsWith(QStringLiteral("Expired"));
                QCOMPARE(isRed, warns);
                // The tool tip of a next fill says what is left on a line of its own.
                const QStringList tip = index.data(Qt::ToolTipRole).toString().split(QLatin1Char('\n'));
                QCOMPARE(tip.front() != index.data().toString(), isRed);
                const QString left = index.data(Qt::AccessibleDescriptionRole).toString();
                QCOMPARE(tip.size() == 2 ? tip.back() : QString(), left);
                QCOMPARE(left.endsWith(QStringLiteral(" days left")), index.data(gaugeRole).isValid());
                gauges += left.isEmpty() ? 0 : 1;
                red += isRed ? 1 : 0;
            }
        }
        QVERIFY(red >= 2);
        QCOMPARE(gauges, model.rowCount());
    }

    void theWarningRedIsReadable_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << paletteOf({});
        QTest::newRow("dark") << paletteOf({.dark = true});
    }
    void theWarningRedIsReadable() {
        QFETCH(QPalette, palette);
        for (const auto role : {QPalette::Base, QPalette::AlternateBase}) {
            QVERIFY(contrast(warningRed(palette), palette.color(role)) > 4.5);
            QVERIFY(contrast(palette.color(QPalette::Text), palette.color(role)) > 7);
        }
        QVERIFY(contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)) > 4.5);
        QVERIFY(contrast(palette.color(QPalette::PlaceholderText), palette.color(QPalette::Window)) > 4.5);
    }

    void manyRowsCostNothingUntilTheyAreSeen() {
        m_program.reset();
        writeLargeHousehold(100000);
        m_program = std::make_unique<Application>();
        QVERIFY(startUp(*m_program));
        QCOMPARE(history()->model()->rowCount(), 100000);
        const OwnTimer timer;
        table().reloadData();
        history()->scrollToBottom();
        history()->viewport()->repaint();
        QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
    }

private:
    static double contrast(const QColor& first, const QColor& second) {
        const auto luminance = [](const QColor& color) {
            const auto part = [](double value) {
                return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
        };
        const double one = luminance(first);
        const double other = luminance(second);
        return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
    }

    TableView& table() { return m_program->delegate().outlets.tableViewTab1; }
    RecordTableView* history() { return widgetNamed<RecordTableView>(m_program->window(), "tableViewTab1"); }
    QPushButton* button(const char* name) { return widgetNamed<QPushButton>(m_program->window(), name); }
    QString shown(int row, int column) { return history()->model()->index(row, column).data().toString(); }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(TableTest)
#include "TableTest.moc"
