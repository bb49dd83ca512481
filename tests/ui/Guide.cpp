#include "tests/ui/Guide.h"

#include "tests/ui/Waiting.h"
#include "ui/views/AlertBox.h"
#include "ui/views/PopUpCombo.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCursor>
#include <QDebug>
#include <QLineEdit>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <cstdlib>

namespace kpx::test {

namespace {

constexpr int settleMilliseconds = 120;

QWidget* topmostWindow(QWidget& main) {
    QWidget* active = QApplication::activeWindow();
    return QApplication::activePopupWidget() ? QApplication::activePopupWidget() : active ? active : &main;
}

}  // namespace

Guide::Guide(QString folder, QString suffix) : m_folder(std::move(folder)), m_suffix(std::move(suffix)) {}

Guide::~Guide() = default;

void Guide::require(bool condition, const QString& step) {
    if (!condition) {
        qCritical().noquote() << "The tour cannot go on:" << step;
        std::exit(1);
    }
}

template <class Widget>
Widget& Guide::find(const char* name) {
    auto* widget = widgetNamed<Widget>(m_program->window(), name);
    require(widget, QStringLiteral("there is no ") + QLatin1String(name));
    return *widget;
}

void Guide::start(bool withSplash) {
    m_program = std::make_unique<Application>();
    require(startUp(*m_program), QStringLiteral("the program does not start"));
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    if (!withSplash) {
        m_program->ports().windows.closeSplash();
    }
}

void Guide::close() {
    m_program->window().close();
    m_program.reset();
    QCoreApplication::removePostedEvents(qApp);
}

void Guide::picture(const QString& name) {
    // No control is to look pointed at.
    QTest::mouseMove(&m_program->window(), QPoint(1, 1));
    QTest::qWait(settleMilliseconds);
    QRect area = m_program->window().frameGeometry();
    for (const QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible()) {
            area |= widget->frameGeometry();
        }
    }
    area &= QGuiApplication::primaryScreen()->geometry();
    const QPixmap grabbed =
        QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height());
    require(grabbed.save(file(name, QStringLiteral(".png"))), QStringLiteral("cannot write ") + name);
}

void Guide::pictureOf(QWidget& window, const QString& name) {
    QTest::qWait(settleMilliseconds);
    require(window.grab().save(file(name, QStringLiteral(".png"))), QStringLiteral("cannot write ") + name);
}

void Guide::pictureOfScreen(const QString& name, const QRect& area) {
    QTest::qWait(settleMilliseconds);
    require(QGuiApplication::primaryScreen()->grabWindow(0).copy(area).save(file(name, QStringLiteral(".png"))),
            QStringLiteral("cannot write ") + name);
}

QString Guide::file(const QString& name, const QString& ending) const {
    return m_folder + QLatin1Char('/') + name + m_suffix + ending;
}

void Guide::selectTab(int index) {
    QTabBar* bar = find<QTabWidget>("theTabView").tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(index).center());
    require(find<QTabWidget>("theTabView").currentIndex() == index, QStringLiteral("a tab does not open"));
}

void Guide::click(const char* button) {
    auto& widget = find<QAbstractButton>(button);
    require(widget.isEnabled() && widget.isVisible(), QLatin1String(button) + QStringLiteral(" cannot be clicked"));
    QTest::mouseClick(&widget, Qt::LeftButton);
    QTest::qWait(settleMilliseconds);
}

void Guide::choose(const char* popUp, const QString& title) {
    auto& combo = find<PopUpCombo>(popUp);
    const int index = combo.findText(title);
    require(index >= 0 && combo.isEnabled(), title + QStringLiteral(" cannot be chosen"));
    combo.showPopup();
    QAbstractItemView* view = combo.view();
    require(QTest::qWaitForWindowExposed(view->window()), QStringLiteral("a menu does not open"));
    view->scrollTo(combo.model()->index(index, 0));
    QTest::mouseMove(view->viewport(), view->visualRect(combo.model()->index(index, 0)).center());
    view->setCurrentIndex(combo.model()->index(index, 0));
    QTest::keyClick(view, Qt::Key_Return);
    QTest::qWait(settleMilliseconds);
}

void Guide::type(const char* field, const QString& text) {
    auto& edit = find<QLineEdit>(field);
    QTest::mouseClick(&edit, Qt::LeftButton);
    test::type(edit, text);
}

void Guide::pressKey(Qt::Key key) {
    QTest::keyClick(topmostWindow(m_program->window()), key);
    QTest::qWait(settleMilliseconds);
}

void Guide::answerAlert(int button) {
    AlertBox* alert = waitForAlert();
    require(alert, QStringLiteral("no alert shows"));
    const auto buttons = alert->buttons();
    require(button < buttons.size(), QStringLiteral("the alert has no such button"));
    QTest::mouseClick(buttons.at(button), Qt::LeftButton);
    QTest::qWait(settleMilliseconds);
}

void Guide::doubleClickRow(const char* table, int row) {
    clickRow(find<QWidget>(table), row, true);
    QTest::qWait(settleMilliseconds);
}

void Guide::setSize(int width, int height) {
    m_program->window().resize(width, height);
    QTest::qWait(settleMilliseconds);
}

void Guide::wait(int milliseconds) { QTest::qWait(milliseconds); }

}  // namespace kpx::test
