#include "app/Addresses.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/AlertBox.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <memory>

using namespace kpx;
using namespace kpx::test;

namespace {

/// The fetch port, led to a server on loopback instead of the maker's.
class LedElsewhere : public WebFetch {
public:
    explicit LedElsewhere(WebFetch& fetch) : m_fetch(fetch) {}

    std::optional<Response> fetch(const std::string& address) override {
        asked = address;
        return m_fetch.fetch(target);
    }

    std::string target;
    std::string asked;

private:
    WebFetch& m_fetch;
};

struct Told {
    QString text;
    QString informative;
    QStringList buttons;
    bool operator==(const Told&) const = default;
};

const Told failed{QStringLiteral("Version check failed."),
                  QStringLiteral("The KPX web site could not be contacted."),
                  {QStringLiteral("OK")}};
const Told current{QStringLiteral("This version of KPX (1.0) is the current version."), {}, {QStringLiteral("OK")}};

Told newer(const QString& version) {
    return {QStringLiteral("A new version of KPX (") + version + QStringLiteral(") is available."),
            QStringLiteral("It can be downloaded from the CQB web site."),
            {QStringLiteral("Go to web site"), QStringLiteral("Cancel")}};
}

}  // namespace

/// The version check over a real connection, and what the Help menu opens.
class VersionCheckTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        m_server.start(QCoreApplication::applicationDirPath() + QStringLiteral("/page_server"), QStringList());
        QVERIFY(QTest::qWaitFor([this] { return m_server.canReadLine(); }));
        m_base = QStringLiteral("http://127.0.0.1:%1").arg(QString::fromLatin1(m_server.readLine().trimmed()));
        for (const char* scheme : {"file", "https"}) {
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "opened");
        }
    }
    void cleanupTestCase() {
        m_server.kill();
        m_server.waitForFinished();
        for (const char* scheme : {"file", "https"}) {
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        }
    }
    void init() {
        m_opened.clear();
        qputenv("LC_ALL", "en_US.UTF-8");
    }

    void tellsWhatTheServerSays() {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString closedPort = QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort());
        closed.close();
        const struct {
            QString address;
            Told told;
        } rows[] = {{m_base + QStringLiteral("/text/1.1"), newer(QStringLiteral("1.1"))},
                    {m_base + QStringLiteral("/text/1.0"), current},
                    {m_base + QStringLiteral("/text/1.0%0A"), newer(QStringLiteral("1.0\n"))},
                    {m_base + QStringLiteral("/text/0.9"), current},
                    // Compared character by character.
                    {m_base + QStringLiteral("/text/10"), newer(QStringLiteral("10"))},
                    {m_base + QStringLiteral("/text/%200"), current},
                    // Mac OS Roman: 0x8E is é.
                    {m_base + QStringLiteral("/text/2%8E"), newer(QStringLiteral("2é"))},
                    {m_base + QStringLiteral("/text/"), failed},
                    {m_base + QStringLiteral("/status/404"), failed},
                    {m_base + QStringLiteral("/status/500"), failed},
                    {m_base + QStringLiteral("/cut"), failed},
                    {closedPort, failed}};
        for (const auto& row : rows) {
            QCOMPARE(m_web.target = row.address.toStdString(), row.address.toStdString());
            const Told told = check();
            QVERIFY2(told == row.told, qPrintable(row.address + QStringLiteral(": ") + told.text));
            QCOMPARE(m_web.asked, std::string(versionFileAddress));
        }
        QVERIFY(m_opened.isEmpty());
    }

    void waitsForASlowServerNoLongerThanTheTimeOut() {
        m_web.target = (m_base + QStringLiteral("/slow/20")).toStdString();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(check() == failed);
        QVERIFY2(timer.elapsed() >= 1400 && timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
        m_web.target = (m_base + QStringLiteral("/slow/1")).toStdString();
        QVERIFY(check() == newer(QStringLiteral("9.9")));
    }

    void goesToTheWebSite() {
        m_web.target = (m_base + QStringLiteral("/text/1.1")).toStdString();
        check(0);
        QCOMPARE(m_opened, QList<QUrl>{QUrl(QLatin1String(productPageAddress))});
    }

    void theHelpMenuOpensTheManualTheFolderAndTheWebPage() {
        writeSmallHousehold();
        Application program;
        QVERIFY(startUp(program));
        program.ports().windows.closeSplash();
        const auto choose = [&program](const char* item) {
            program.window().findChild<QAction*>(QLatin1String(item))->trigger();
        };
        auto* menu = program.window().findChild<QMenu*>(QStringLiteral("menuHelp"));
        for (const char* item : {"helpMenuItem", "showDataFilesMenuItem", "versionCheckMenuItem", "webPageMenuItem"}) {
            QVERIFY2(menu->actions().contains(program.window().findChild<QAction*>(QLatin1String(item))), item);
        }
        choose("helpMenuItem");
        QCOMPARE(m_opened.size(), 1);
        const QString manual = m_opened.constFirst().toLocalFile();
        QVERIFY(manual.endsWith(QStringLiteral("/share/velmora/en.lproj/KPXHelp/KPXHelp.htm")));
        QFile page(manual);
        QVERIFY(page.open(QIODevice::ReadOnly));
        QVERIFY(page.readAll().contains("Entering/Viewing/Deleting Prescriptions"));

        choose("showDataFilesMenuItem");
        QCOMPARE(m_opened.size(), 2);
        QCOMPARE(QDir::cleanPath(m_opened.constLast().toLocalFile()), QString::fromStdString(dataFolder().string()));
        choose("webPageMenuItem");
        QCOMPARE(m_opened.size(), 3);
        QCOMPARE(m_opened.constLast(), QUrl(QLatin1String(productPageAddress)));

        // A language without a manual: nothing opens, and nothing is said.
        qputenv("LC_ALL", "de_DE.UTF-8");
        choose("helpMenuItem");
        QCOMPARE(m_opened.size(), 3);
        QVERIFY(noAlertShows());
        program.window().close();
    }

    void thePicturesOfTheManualAreThere() {
        const QDir folder(QString::fromStdString((QtBundle().resources() / "en.lproj" / "KPXHelp").string()));
        QFile page(folder.filePath(QStringLiteral("KPXHelp.htm")));
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(page.readAll());
        const QRegularExpression picture(QStringLiteral("<img[^>]*>"));
        const QRegularExpression source(QStringLiteral("src=\"([^\"]+)\""));
        for (auto match = picture.globalMatch(text); match.hasNext();) {
            const QString tag = match.next().captured();
            const QString file = source.match(tag).captured(1);
            QVERIFY2(QFileInfo(folder.filePath(file)).isFile(), qPrintable(tag));
            QVERIFY2(tag.contains(QRegularExpression(QStringLiteral("alt=\"[^\"]{20,}\""))), qPrintable(tag));
        }
        const QRegularExpression style(QStringLiteral("<link[^>]*href=\"([^\"]+)\""));
        QVERIFY(QFileInfo(folder.filePath(style.match(text).captured(1))).isFile());
    }

public Q_SLOTS:
    void opened(const QUrl& address) { m_opened << address; }

private:
    /// Checks, and presses the button of what is told, the last one unless another is given.
    Told check(int button = -1) {
        Ports all = m_ports.ports();
        Ports ports{all.alerts, all.windows, all.workspace, all.defaults, all.notifications,
                    all.clock,  all.system,  m_web,         all.preview,  all.bundle};
        KPXAppDelegate delegate(ports);
        Told told;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* box = qobject_cast<AlertBox*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible()) {
                return;
            }
            look.stop();
            told.text = box->text();
            told.informative = box->informativeText();
            for (QAbstractButton* each : box->buttons()) {
                told.buttons << each->text().remove(QLatin1Char('&'));
            }
            box->buttons().at(button < 0 ? box->buttons().size() - 1 : button)->click();
        });
        look.start(10);
        delegate.newVersionCheck();
        return told;
    }

    QProcess m_server;
    QString m_base;
    QList<QUrl> m_opened;
    QtPorts m_ports;
    QtWebFetch m_fetch{std::chrono::milliseconds(1500)};
    LedElsewhere m_web{m_fetch};
};

QTEST_MAIN(VersionCheckTest)
#include "VersionCheckTest.moc"
