#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/style/Appearance.h"
#include "ui/views/AlertBox.h"
#include "ui/views/LongNames.h"
#include "ui/views/SheetDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// Alerts: order, keys, texts, and where they hang.
class AlertTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_answers.clear();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void cleanup() { m_program.reset(); }

    void aLineEndsWhereItsLanguageLetsIt() {
        const QString zeroWidth(QChar(0x200B));
        // In Japanese it may do so nearly anywhere, but not before a full stop or a long vowel.
        const QString japanese =
            QStringLiteral("錠剤カプセル").repeated(6) + QStringLiteral("フォルダー。").repeated(6);
        QCOMPARE(withBreaks(japanese), japanese);
        const QString name(95, QLatin1Char('x'));
        QCOMPARE(withBreaks(QStringLiteral("a ") + name + QStringLiteral(" b")),
                 QStringLiteral("a ") + name.left(40) + zeroWidth + name.left(40) + zeroWidth + name.left(15) +
                     QStringLiteral(" b"));
    }

    void twoInARowShowOneAfterTheOther() {
        begin("First");
        begin("Second");
        AlertBox* first = waitForAlert();
        QCOMPARE(first->text(), QStringLiteral("First"));
        QTest::keyClick(first, Qt::Key_Return);
        QTRY_VERIFY(waitForAlert() && waitForAlert()->text() == QStringLiteral("Second"));
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
        QCOMPARE(m_answers, std::vector<int>({1000, 1000}));
    }

    void theSameMessageIsCountedWhileItStands() {
        Alert message = alert("Missing");
        message.informativeText = "First line.\rA value is missing";
        for (int count = 0; count < 1000; ++count) {
            begin(message);
        }
        begin("Another");
        begin(message);
        AlertBox* box = waitForAlert();
        QTRY_COMPARE(box->informativeText(), QStringLiteral("First line.\nA value is missing (1,001 times)"));
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(m_answers.size(), std::size_t{1001});
        QTRY_VERIFY(waitForAlert() && waitForAlert()->text() == QStringLiteral("Another"));
        QVERIFY(!waitForAlert()->informativeText().contains(QStringLiteral("times")));
        // What was answered no longer counts.
        begin(message);
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_VERIFY(waitForAlert() && waitForAlert()->text() == QStringLiteral("Missing"));
        QCOMPARE(waitForAlert()->informativeText(), QStringLiteral("First line.\nA value is missing"));
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
    }

    void aQuestionIsAskedEachTime() {
        Alert question = alert("Sure?");
        question.buttons = {{"Yes", "", AlertKey::Return}, {"No", "", AlertKey::Escape}};
        begin(question);
        begin(question);
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_COMPARE(m_answers, std::vector<int>({1000}));
        QTest::keyClick(waitForAlert(), Qt::Key_Escape);
        QTRY_COMPARE(m_answers, std::vector<int>({1000, 1001}));
    }

    void anAlertAskedForByAnAnswerShowsAfterThoseThatWait() {
        QStringList shown;
        ports().alerts.beginSheet(mainWindow, alert("First"), [this](int) { begin("Third"); }, {});
        begin("Second");
        for (int count = 0; count < 3; ++count) {
            AlertBox* box = waitForAlert();
            QVERIFY(box);
            shown += box->text();
            QTest::keyClick(box, Qt::Key_Return);
        }
        QCOMPARE(shown, QStringList({"First", "Second", "Third"}));
        QVERIFY(noAlertShows());
    }

    void escapePressesTheButtonThatHasTheKey() {
        Alert question = alert("Sure?");
        question.buttons = {{"OK", "", AlertKey::Return}, {"Cancel", "", AlertKey::Escape}};
        begin(question);
        QTest::keyClick(waitForAlert(), Qt::Key_Escape);
        QTRY_COMPARE(m_answers, std::vector<int>({1001}));
    }

    void escapeNeverConfirmsADeletion() {
        Alert question = alert("Delete?");
        question.style = AlertStyle::Critical;
        question.buttons = {{"No", "", AlertKey::None}, {"Yes", "", AlertKey::None}};
        begin(question);
        AlertBox* box = waitForAlert();
        QCOMPARE(box->defaultButton()->text(), QStringLiteral("No"));
        QTest::keyClick(box, Qt::Key_Escape);
        QTRY_COMPARE(m_answers, std::vector<int>({1000}));
        begin(question);
        waitForAlert()->close();
        QTRY_COMPARE(m_answers, std::vector<int>({1000, 1000}));
    }

    void helpIsAskedForWithoutAnAnswer() {
        Alert question = alert("Delete?");
        question.showsHelp = true;
        int helped = 0;
        ports().alerts.beginSheet(
            mainWindow, question, [this](int code) { m_answers.push_back(code); }, [&helped] { ++helped; });
        AlertBox* box = waitForAlert();
        QAbstractButton* help = box->buttons().constLast();
        // The text of a deletion speaks of "the '?' button".
        QCOMPARE(help->text(), QStringLiteral("?"));
        QCOMPARE(help->accessibleName(), QStringLiteral("Help"));
        QTest::mouseClick(help, Qt::LeftButton);
        QCOMPARE(helped, 1);
        QVERIFY(box->isVisible());
        QVERIFY(m_answers.empty());
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE(m_answers, std::vector<int>({1000}));
    }

    void textsArePlainAndParagraphsStandApart() {
        Alert plain = alert("<b>Ann</b> & Bob");
        plain.informativeText = "One <i>drug</i>\r\rTwo";
        begin(plain);
        AlertBox* box = waitForAlert();
        auto* message = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        auto* body = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        QVERIFY(message && body);
        QCOMPARE(message->textFormat(), Qt::PlainText);
        QVERIFY(message->font().bold());
        QCOMPARE(body->textFormat(), Qt::PlainText);
        QCOMPARE(body->text(), QStringLiteral("One <i>drug</i>\n\nTwo"));
        QTest::keyClick(box, Qt::Key_Return);
    }

    void indentedLinesAreNotBroken() {
        Alert indented = alert("Refused");
        indented.informativeText =
            "What to do next:\r\t1. " + std::string(22, 'w') + " " + std::string(22, 'w') + "\rEnd";
        begin(indented);
        auto* body = waitForAlert()->findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
        QTRY_VERIFY(body->isVisible());
        constexpr int ampleWidth = 4000;
        QCOMPARE(body->heightForWidth(body->width()), body->heightForWidth(ampleWidth));
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
    }

    void aNameWithoutBlanksIsReadWhole() {
        const std::string name(150, 'M');
        begin(alert(("Rx Number: \"" + name + "\"\rexists already").c_str()));
        AlertBox* box = waitForAlert();
        auto* message = box->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        const QRect needed =
            message->fontMetrics().boundingRect(QRect(0, 0, message->width(), 2000), Qt::TextWordWrap, message->text());
        QVERIFY2(needed.width() <= message->width(), qPrintable(QString::number(needed.width())));
        QVERIFY(needed.height() <= message->height());
        QTest::keyClick(box, Qt::Key_Return);
    }

    void noTextMakesABoxLargerThanTheScreen() {
        std::string lines;
        for (int line = 0; line < 500; ++line) {
            lines += "\tline " + std::to_string(line) + "\r";
        }
        const struct {
            std::string message;
            std::string informative;
        } rows[] = {{"Refused", lines},
                    {lines, ""},
                    {std::string(9000, 'M'), std::string(9000, 'i')},
                    {"Refused", std::string(9000, ' ') + std::string(3000, '\r') + "end"},
                    {"Refused", std::string(100'000, 'x')},
                    {std::string(100'000, 'x'), std::string(1000, '\n') + "\t" + std::string(2000, 'y')}};
        bool dark = false;
        for (const auto& row : rows) {
            Alert large = alert("");
            large.messageText = row.message;
            large.informativeText = row.informative;
            large.buttons.push_back({"Cancel", "", AlertKey::Escape});
            // As when the desktop turns dark this very moment: other events then come between those of the box.
            dark = !dark;
            showAppearance(*qApp, {.dark = dark});
            begin(large);
            AlertBox* box = waitForAlert();
            QVERIFY(box);
            const QRect room = box->screen()->availableGeometry();
            QTRY_VERIFY2(room.width() >= box->frameGeometry().width() && room.height() >= box->frameGeometry().height(),
                         qPrintable(QString::number(box->height())));
            auto* scroll = box->findChild<QScrollArea*>();
            QVERIFY(scroll);
            const auto placeOf = [box](const QWidget* widget) {
                return QRect(widget->mapTo(box, QPoint()), widget->size());
            };
            QTRY_VERIFY(box->rect().contains(placeOf(scroll)));
            for (const QAbstractButton* button : box->buttons()) {
                QVERIFY(box->rect().contains(placeOf(button)));
                QVERIFY2(!placeOf(scroll).intersects(placeOf(button)), "the text covers the button");
            }
            QTRY_VERIFY2(room.contains(box->frameGeometry()), "a part is outside the screen");
            // All of it can be read.
            QScrollBar* bar = scroll->verticalScrollBar();
            QTRY_VERIFY(bar->maximum() > 0);
            QVERIFY(bar->maximum() + scroll->viewport()->height() >=
                    scroll->widget()->heightForWidth(scroll->viewport()->width()));
            QTest::keyClick(box, Qt::Key_PageDown);
            QTRY_VERIFY(bar->value() > 0);
            QTest::keyClick(box, Qt::Key_Escape);
            QTRY_VERIFY(noAlertShows());
        }
        begin(alert("Short"));
        QVERIFY(!waitForAlert()->findChild<QScrollArea*>());
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
    }

    void anAlertIsADialogAndSoHasAFrame() {
        begin("First");
        AlertBox* box = waitForAlert();
        QVERIFY(box && box->windowType() == Qt::Dialog && box->windowModality() == Qt::WindowModal);
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
    }

    void anAlertOfASheetHangsFromIt() {
        m_program->delegate().outlets.theDrugSheet.setOpen(true);
        auto* sheet = widgetNamed<SheetDialog>(m_program->window(), "theDrugSheet");
        QTRY_VERIFY(sheet->isVisible());
        QVERIFY(waitUntilActive(sheet));
        ports().alerts.beginSheet("theDrugSheet", alert("Name missing"), {}, {});
        QCOMPARE(waitForAlert()->parentWidget(), sheet);
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
        // One for the main window would lie below the sheet that covers it.
        begin("Date Input Error");
        QCOMPARE(waitForAlert()->parentWidget(), sheet);
        QTest::keyClick(waitForAlert(), Qt::Key_Return);
        QTRY_VERIFY(noAlertShows());
    }

    void aModalAlertAnswersAtOnce() {
        Alert question = alert("A new version is available.");
        question.buttons = {{"Go to web site", "", AlertKey::None}, {"Cancel", "", AlertKey::None}};
        QTimer::singleShot(0, this, [] { QTest::mouseClick(waitForAlert()->buttons().at(1), Qt::LeftButton); });
        const int code = ports().alerts.runModal(question);
        QCOMPARE(code, 1001);
    }

private:
    static Alert alert(const char* message) {
        Alert made;
        made.messageText = message;
        made.buttons = {{"OK", "", AlertKey::None}};
        return made;
    }
    void begin(const Alert& made) {
        ports().alerts.beginSheet(mainWindow, made, [this](int code) { m_answers.push_back(code); }, {});
    }
    void begin(const char* message) { begin(alert(message)); }
    QtPorts& ports() { return m_program->ports(); }

    std::unique_ptr<Application> m_program;
    std::vector<int> m_answers;
};

QTEST_MAIN(AlertTest)
#include "AlertTest.moc"
