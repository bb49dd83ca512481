#include "tests/ui/Dragging.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/Conversions.h"

#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QTableView>
#include <QTest>
#include <QUrl>

#include <memory>

using namespace kpx;
using namespace kpx::test;

namespace {

/// A window of another program, which copies and pastes by real keys. It has the keys until its end.
class Peer {
public:
    explicit Peer(const QString& text = QString()) {
        m_process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/clipboard_peer"), {text});
    }
    ~Peer() {
        m_process.terminate();
        m_process.waitForFinished(5000);
    }

    bool hasKeys() { return line() == QStringLiteral("ready"); }
    bool copies() { return pressKeys(QStringLiteral("ctrl+c")) && line() == QStringLiteral("copied"); }
    /// The plain text and the markup.
    std::pair<QString, QString> pastes() {
        pressKeys(QStringLiteral("ctrl+v"));
        const QString plain = line();
        return {plain, line()};
    }

private:
    QString line() {
        if (!QTest::qWaitFor([this] { return m_process.canReadLine(); })) {
            return QStringLiteral("silence");
        }
        return QUrl::fromPercentEncoding(m_process.readLine().trimmed());
    }

    QProcess m_process;
};

}  // namespace

/// The clipboard of the desktop, between this program and another one, by the real keyboard.
class ClipboardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
    }
    void cleanup() { m_program.reset(); }

    void aRowGoesToAnotherProgram() {
        auto* table = widgetNamed<QTableView>(m_program->window(), "tableViewTab1");
        auto* menu = widgetNamed<QMenu>(m_program->window(), "contextMenuTab1");
        table->setFocus();
        table->selectRow(1);
        QVERIFY(pressKeys(QStringLiteral("Menu")));
        QTRY_VERIFY(menu->isVisible());
        for (const char* key : {"Down", "Down", "Return"}) {
            QVERIFY(pressKeys(QLatin1String(key)));
        }
        QTRY_VERIFY(!menu->isVisible());
        QStringList cells;
        for (int column = 0; column < table->model()->columnCount(); ++column) {
            cells << table->model()->index(1, column).data().toString();
        }
        Peer peer;
        QVERIFY(peer.hasKeys());
        const auto [plain, markup] = peer.pastes();
        QCOMPARE(plain, cells.join(QLatin1Char('\t')));
        QVERIFY2(markup.contains(QStringLiteral("<td>%1</td>").arg(cells.first().toHtmlEscaped())), qPrintable(markup));
        QVERIFY(markup.contains(QStringLiteral("<th>Patient</th>")));
    }

    void aTextComesFromAnotherProgramAndGoesBack() {
        const QString text = QStringLiteral("Nachfüllung – 錠剤 & <Zoë>");
        auto* field = widgetNamed<QLineEdit>(m_program->window(), "scriptNoteTab1");
        {
            Peer peer(text);
            QVERIFY(peer.hasKeys());
            QVERIFY(peer.copies());
            QVERIFY(clickMouse(*field));
            QTRY_VERIFY(field->hasFocus() && m_program->window().isActiveWindow());
            QVERIFY(pressKeys(QStringLiteral("ctrl+v")));
            QTRY_COMPARE(field->text(), text);
        }
        QVERIFY(waitUntilActive(&m_program->window()));
        field->setText(field->text() + QStringLiteral("!"));
        QVERIFY(pressKeys(QStringLiteral("ctrl+a")));
        QTRY_COMPARE(field->selectedText(), text + QStringLiteral("!"));
        QVERIFY(pressKeys(QStringLiteral("ctrl+x")));
        QTRY_COMPARE(field->text(), QString());
        Peer other;
        QVERIFY(other.hasKeys());
        QCOMPARE(other.pastes().first, text + QStringLiteral("!"));
    }

    void aReceiptsAddressComesFromAnotherProgram() {
        const auto file = dataFolder() / "spring.png";
        QImage(8, 8, QImage::Format_RGB32).save(qstring(file.string()));
        auto* button = widgetNamed<QWidget>(m_program->window(), "dropButton");
        QVERIFY(button);
        Peer peer(QUrl::fromLocalFile(qstring(file.string())).toString());
        QVERIFY(peer.hasKeys());
        QVERIFY(peer.copies());
        QVERIFY(clickMouse(*widgetNamed<QLineEdit>(m_program->window(), "scriptNoteTab1")));
        QTRY_VERIFY(m_program->window().isActiveWindow());
        button->setFocus();
        auto* menu = widgetNamed<QMenu>(m_program->window(), "contextMenuReceipt");
        QVERIFY(pressKeys(QStringLiteral("Menu")));
        QTRY_VERIFY(menu->isVisible());
        for (const char* key : {"Down", "Down", "Return"}) {
            QVERIFY(pressKeys(QLatin1String(key)));
        }
        QTRY_COMPARE(m_program->delegate().outlets.dropButton.text(), std::string("spring.png"));
    }

private:
    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(ClipboardTest)
#include "ClipboardTest.moc"
