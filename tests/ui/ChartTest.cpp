#include "drawing/Chart.h"
#include "tests/ui/Dragging.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/charts/BarChartView.h"
#include "ui/charts/ChartColors.h"
#include "ui/style/Appearance.h"
#include "ui/style/Colors.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

using namespace kpx;
using namespace kpx::test;

namespace {

Chart chartOf(std::size_t bars, Chart::Shape shape, const std::string& name, double largest = 120) {
    Chart chart;
    chart.shape = shape;
    chart.title = "Cost by Month";
    chart.labelTitle = "Month";
    chart.amountTitle = "Cost";
    for (std::size_t index = 0; index < bars; ++index) {
        const double amount = index == 0 ? largest : 20 + static_cast<double>(index * 37 % 100);
        const std::string label = name + " " + std::to_string(index + 1);
        chart.bars.push_back({label, amount, "$" + std::to_string(amount), label});
    }
    for (const double mark : roundMarks(0, largest)) {
        chart.axis.push_back({mark, "$" + std::to_string(static_cast<long long>(mark))});
    }
    if (shape == Chart::Shape::Columns) {
        chart.average = ChartMark{60, "Average Monthly Cost: $60.00"};
    }
    return chart;
}

bool hasColor(const QImage& image, const QColor& color) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

/// The picture of costs: what is seen, pointed at, reached by keys and read aloud.
class ChartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QApplication::setLayoutDirection(Qt::LeftToRight); }
    void cleanup() {
        m_program.reset();
        showAppearance(*qApp, {});
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }

    void showDrawsAndTheSwitchChanges() {
        open();
        QVERIFY(!button("printCostChartBtn").isEnabled());
        QTest::mouseClick(&button("showBtnTab3"), Qt::LeftButton);
        QTRY_VERIFY(chart().model()->rowCount() > 0);
        QCOMPARE(chart().accessibleName(), QStringLiteral("Cost by Month"));
        auto* kind = widgetNamed<QComboBox>(m_program->window(), "costChartKind");
        Q_EMIT kind->activated(1);
        QCOMPARE(kind->currentText(), QStringLiteral("By Drug"));
        QTRY_COMPARE(chart().accessibleName(), QStringLiteral("Cost by Drug"));
        QVERIFY(button("printCostChartBtn").isEnabled());
        QTest::mouseClick(&button("printCostChartBtn"), Qt::LeftButton);
        QCOMPARE(m_program->ports().preview.windows().size(), std::size_t{1});
    }

    void pointingSaysTheBar() {
        QVERIFY(moveMouseAway());
        BarChartView view;
        view.setFocusPolicy(Qt::NoFocus);
        show(view, chartOf(12, Chart::Shape::Columns, "Month"));
        QCOMPARE(view.saidBar(), QString());
        const QRect third = view.visualRect(view.model()->index(2, 0));
        const auto pointAt = [&view](const QPoint& position) {
            QTest::mouseMove(view.windowHandle(), view.viewport()->mapTo(&view, position));
        };
        pointAt(third.center());
        QTRY_COMPARE(view.saidBar(), QStringLiteral("Month 3: $94.000000"));
        QVERIFY(view.indexAt(third.center()).data(Qt::ToolTipRole).toString().startsWith(QStringLiteral("Month 3")));
        pointAt(QPoint(1, 1));
        QTRY_COMPARE(view.saidBar(), QString());
    }

    void keysGoFromBarToBar() {
        for (const bool mirrored : {false, true}) {
            BarChartView view;
            view.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
            show(view, chartOf(12, Chart::Shape::Columns, "Month"));
            view.setFocus();
            QTRY_VERIFY(view.hasFocus());
            QCOMPARE(view.saidBar(), QStringLiteral("Month 1: $120.000000"));
            QTest::keyClick(&view, mirrored ? Qt::Key_Left : Qt::Key_Right);
            QVERIFY(view.saidBar().startsWith(QStringLiteral("Month 2:")));
            QTest::keyClick(&view, Qt::Key_End);
            QVERIFY(view.saidBar().startsWith(QStringLiteral("Month 12:")));
            QTest::keyClick(&view, mirrored ? Qt::Key_Left : Qt::Key_Right);
            QVERIFY(view.saidBar().startsWith(QStringLiteral("Month 12:")));
            QTest::keyClick(&view, Qt::Key_Home);
            QVERIFY(view.saidBar().startsWith(QStringLiteral("Month 1:")));
            // What comes later stands on the side to which the writing goes.
            const QRect first = view.visualRect(view.model()->index(0, 0));
            const QRect last = view.visualRect(view.model()->index(11, 0));
            QCOMPARE(first.center().x() < last.center().x(), !mirrored);
        }
    }

    void isATableToThoseWhoHaveItReadToThem() {
        BarChartView view;
        show(view, chartOf(3, Chart::Shape::Rows, "Drug"));
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&view);
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Cost by Month"));
        QAccessibleTableInterface* table = accessible->tableInterface();
        QVERIFY(table);
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(table->columnDescription(0), QStringLiteral("Month"));
        QCOMPARE(table->columnDescription(1), QStringLiteral("Cost"));
        QCOMPARE(table->cellAt(1, 0)->text(QAccessible::Name), QStringLiteral("Drug 2: $57.000000"));
        QCOMPARE(view.model()->index(1, 1).data().toString(), QStringLiteral("$57.000000"));
        Chart nameless = chartOf(1, Chart::Shape::Rows, "Drug");
        nameless.bars[0].label.clear();
        view.setChart(nameless);
        QCOMPARE(view.model()->index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("$120.000000"));
    }

    void coloursFollowTheSchemeAndDifferInLightness() {
        for (const bool dark : {false, true}) {
            showAppearance(*qApp, {.dark = dark});
            BarChartView view;
            show(view, chartOf(12, Chart::Shape::Columns, "Month"));
            const Inks inks = chartInks(view.palette());
            const QImage image = view.viewport()->grab().toImage();
            QVERIFY(hasColor(image, inks.bar));
            QVERIFY(hasColor(image, inks.average));
            const int ground = view.palette().color(QPalette::Base).lightness();
            QVERIFY(qAbs(inks.bar.lightness() - inks.average.lightness()) > 50);
            QVERIFY(qAbs(inks.bar.lightness() - ground) > 40);
            QVERIFY(qAbs(inks.average.lightness() - ground) > 90);
        }
    }

    void itsWordsAreInTheDesktopsFont() {
        const Chart year = chartOf(12, Chart::Shape::Columns, "Month");
        const auto picture = [&](const char* family) {
            BarChartView view;
            QFont font = view.font();
            font.setFamily(QLatin1String(family));
            view.setFont(font);
            show(view, year);
            return view.viewport()->grab().toImage();
        };
        QCOMPARE(picture("DejaVu Sans"), picture("DejaVu Sans"));
        QVERIFY(picture("DejaVu Sans") != picture("DejaVu Serif"));
    }

    void emptyItSaysWhatToDo() {
        BarChartView view;
        view.setEmptyTitle(QStringLiteral("Nothing yet"));
        show(view, Chart());
        const QImage image = view.viewport()->grab().toImage();
        QVERIFY(hasColor(image, view.palette().color(QPalette::Base)));
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_Right);
        QCOMPARE(view.saidBar(), QString());
    }

    void aLongTimePaintsInAFrame() {
        BarChartView view;
        show(view, chartOf(12, Chart::Shape::Columns, "Month"));
        const OwnTimer clock;
        view.viewport()->grab();
        qInfo("a year paints in %lld ms", clock.elapsed());
        QVERIFY(clock.elapsed() < 500);
    }

    void pictures() {
        const QString folder = qEnvironmentVariable("CHART_PICTURES");
        struct Row {
            const char* name;
            Chart chart;
            bool dark = false;
            bool mirrored = false;
        };
        const std::string longName = "Amoxicillin and clavulanate potassium extended-release tablets 1000 mg/62.5 mg";
        std::vector<Row> rows{
            {"one-month", chartOf(1, Chart::Shape::Columns, "Nov")},
            {"year", chartOf(12, Chart::Shape::Columns, "Nov 20")},
            {"three-years", chartOf(36, Chart::Shape::Columns, "Nov 20")},
            {"long-names", chartOf(8, Chart::Shape::Rows, longName)},
            {"one-huge", chartOf(6, Chart::Shape::Columns, "Nov 20", 98765432109.0)},
            {"huge-row", chartOf(5, Chart::Shape::Rows, "Drug", 98765432109.0)},
            {"right-to-left", chartOf(12, Chart::Shape::Columns, "Nov 20"), false, true},
            {"right-to-left-rows", chartOf(8, Chart::Shape::Rows, longName), false, true},
            {"dark", chartOf(12, Chart::Shape::Columns, "Nov 20"), true},
            {"dark-rows", chartOf(8, Chart::Shape::Rows, longName), true},
            {"empty", Chart()},
        };
        for (const Row& row : rows) {
            showAppearance(*qApp, {.dark = row.dark});
            BarChartView view;
            view.setEmptyTitle(QStringLiteral("No costs to draw yet"));
            view.setEmptyText(QStringLiteral("Choose a period and press Show."));
            view.setLayoutDirection(row.mirrored ? Qt::RightToLeft : Qt::LeftToRight);
            show(view, row.chart);
            view.setFocus();
            QTRY_VERIFY(view.hasFocus());
            const QPixmap picture = view.grab();
            QVERIFY(!picture.isNull());
            if (!folder.isEmpty()) {
                QVERIFY(picture.save(folder + QLatin1Char('/') + QLatin1String(row.name) + QStringLiteral(".png")));
            }
        }
        if (!folder.isEmpty()) {
            for (const bool dark : {false, true}) {
                open();
                showAppearance(*qApp, {.dark = dark});
                QTest::mouseClick(&button("showBtnTab3"), Qt::LeftButton);
                QTest::qWait(100);
                QVERIFY(m_program->window().grab().save(folder + (dark ? "/tab3-dark.png" : "/tab3.png")));
                widgetNamed<QTabWidget>(m_program->window(), "theTabView")->setCurrentIndex(1);
                QTest::mouseClick(&button("showBtnTab2"), Qt::LeftButton);
                QTest::qWait(100);
                QVERIFY(m_program->window().grab().save(folder + (dark ? "/tab2-dark.png" : "/tab2.png")));
                m_program.reset();
            }
        }
    }

private:
    void open() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        widgetNamed<QTabWidget>(m_program->window(), "theTabView")->setCurrentIndex(2);
        m_program->delegate().outlets.beginDateTab3.userSetDate(Date{0});
    }
    QPushButton& button(const char* name) { return *widgetNamed<QPushButton>(m_program->window(), name); }
    BarChartView& chart() { return *widgetNamed<BarChartView>(m_program->window(), "costChart"); }
    static void show(BarChartView& view, const Chart& chart) {
        view.resize(760, 320);
        view.show();
        QVERIFY(waitUntilActive(&view));
        view.setChart(chart);
    }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(ChartTest)
#include "ChartTest.moc"
