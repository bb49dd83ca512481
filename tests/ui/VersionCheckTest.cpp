#include "app/Addresses.h"
#include "tests/ui/FakeOpener.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/AlertBox.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <sys/resource.h>

#include <functional>
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

/// The most that this process ever held.
long mostMemoryInKilobytes() {
    rusage taken{};
    ::getrusage(RUSAGE_SELF, &taken);
    return taken.ru_maxrss;
}

}  // namespace

/// The version check over a real connection, and what the Help menu opens.
class VersionCheckTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const QString folder = QStringLiteral(KPX_SOURCE_FOLDER "/tests/ui/certificate/");
        m_server.start(QCoreApplication::applicationDirPath() + QStringLiteral("/page_server"),
                       {folder + QStringLiteral("loopback.crt"), folder + QStringLiteral("loopback.key")});
        QVERIFY(QTest::qWaitFor([this] { return m_server.canReadLine(); }, 20000));
        const QList<QByteArray> ports = m_server.readLine().trimmed().split(' ');
        m_base = QStringLiteral("https://127.0.0.1:%1").arg(QString::fromLatin1(ports.value(0)));
        m_unprotected = QStringLiteral("http://127.0.0.1:%1").arg(QString::fromLatin1(ports.value(1)));
        trustTheServer(true);
    }
    void cleanupTestCase() {
        m_server.kill();
        m_server.waitForFinished();
    }
    void init() {
        m_opener.forget();
        m_opener.setStatus(0);
        qputenv("LC_ALL", "en_US.UTF-8");
    }

    void tellsWhatTheServerSays() {
        QTcpServer closed;
        QVERIFY(closed.listen(QHostAddress::LocalHost));
        const QString closedPort = QStringLiteral("https://127.0.0.1:%1/").arg(closed.serverPort());
        closed.close();
        const struct {
            QString address;
            Told told;
        } rows[] = {{m_base + QStringLiteral("/text/1.1"), newer(QStringLiteral("1.1"))},
                    {m_base + QStringLiteral("/text/1.0"), current},
                    {m_base + QStringLiteral("/text/1.0%0A"), newer(QStringLiteral("1.0"))},
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
                    {closedPort, failed},
                    {moved(m_base + QStringLiteral("/text/1.1")), newer(QStringLiteral("1.1"))},
                    {moved(m_unprotected + QStringLiteral("/text/1.1")), failed},
                    {moved(moved(m_unprotected + QStringLiteral("/text/1.1"))), failed},
                    {moved(QStringLiteral("file:///etc/hostname")), failed},
                    {m_unprotected + QStringLiteral("/text/1.1"), failed},
                    {QStringLiteral("file:///etc/hostname"), failed},
                    {QStringLiteral("data:,9.9"), failed},
                    {{}, failed}};
        for (const auto& row : rows) {
            QCOMPARE(m_web.target = row.address.toStdString(), row.address.toStdString());
            const Told told = check();
            QVERIFY2(told == row.told, qPrintable(row.address + QStringLiteral(": ") + told.text));
            QCOMPARE(m_web.asked, std::string(versionFileAddress));
        }
        QVERIFY(m_opener.opened().isEmpty());
        // Of all that, nothing went over an unprotected connection.
        QCOMPARE(m_fetch.fetch((m_base + QStringLiteral("/unprotected")).toStdString())->body, std::string("0"));
    }

    void asksNobodyWhoCannotProveWhoHeIs() {
        trustTheServer(false);
        QtWebFetch fetch{std::chrono::milliseconds(10000)};
        QVERIFY(!fetch.fetch((m_base + QStringLiteral("/text/1.1")).toStdString()));
        trustTheServer(true);
    }

    void readsNoMoreThanAVersionMayBeLong() {
        constexpr std::size_t longest = 65536;
        const struct {
            QString path;
            std::size_t length;
        } rows[] = {{QStringLiteral("/long/65535"), longest - 1},
                    {QStringLiteral("/long/65536"), longest},
                    {QStringLiteral("/long/65537"), longest},
                    {QStringLiteral("/long/50000000"), longest},
                    {QStringLiteral("/endless"), longest}};
        QtWebFetch fetch{std::chrono::milliseconds(10000)};
        for (const auto& row : rows) {
            const auto response = fetch.fetch((m_base + row.path).toStdString());
            QVERIFY2(response, qPrintable(row.path));
            QCOMPARE(response->body.size(), row.length);
        }
        // The window quotes what has room in one line.
        m_web.target = (m_base + QStringLiteral("/long/50000000")).toStdString();
        QVERIFY(check() == newer(QString(79, QLatin1Char('9')) + QChar(0x2026)));
    }

    void readsNoEndlessHeaders() {
        QtWebFetch fetch{std::chrono::milliseconds(10000)};
        for (const char* path : {"/endless-line", "/endless-lines"}) {
            const long before = mostMemoryInKilobytes();
            QVERIFY2(!fetch.fetch((m_base + QLatin1String(path)).toStdString()), path);
            const long more = mostMemoryInKilobytes() - before;
            QVERIFY2(more < 160000, qPrintable(QString::fromLatin1(path) + QString::number(more)));
        }
    }

    void escapeAndTheCloseButtonOpenNoPage() {
        m_web.target = (m_base + QStringLiteral("/text/1.1")).toStdString();
        m_answer = [](AlertBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
        QVERIFY(check() == newer(QStringLiteral("1.1")));
        m_answer = [](AlertBox& box) { box.close(); };
        QVERIFY(check() == newer(QStringLiteral("1.1")));
        m_answer = nullptr;
        QVERIFY(m_opener.opened().isEmpty());
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
        QTRY_COMPARE(m_opener.opened(), QList<QUrl>{QUrl(QLatin1String(productPageAddress))});
    }

    void anOpenerThatEndsWithAnErrorIsTold() {
        writeSmallHousehold();
        const auto program = startWithoutSplash();
        QVERIFY(program);
        const auto choose = [&program](const char* item) {
            program->window().findChild<QAction*>(QLatin1String(item))->trigger();
        };
        m_opener.setStatus(4);
        // The manual stays silent, whatever becomes of it.
        choose("helpMenuItem");
        QTRY_COMPARE(m_opener.opened().size(), 1);
        choose("webPageMenuItem");
        // The alert is modal, and whoever waits for it waits until it has been answered.
        QString shown;
        QTimer answer;
        connect(&answer, &QTimer::timeout, &answer, [&shown] {
            if (auto* alert = qobject_cast<AlertBox*>(QApplication::activeModalWidget())) {
                shown = alert->text();
                alert->buttons().constFirst()->click();
            }
        });
        answer.start(10);
        QTRY_COMPARE(shown, QStringLiteral("Unable to Find KPX web page, is there a live connection to the Web?"));
        QCOMPARE(m_opener.opened().size(), 2);
        QVERIFY(noAlertShows());
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
        QTRY_COMPARE(m_opener.opened().size(), 1);
        const QString manual = m_opener.opened().constFirst().toLocalFile();
        QVERIFY(manual.endsWith(QStringLiteral("/share/velmora/en.lproj/KPXHelp/KPXHelp.htm")));
        QFile page(manual);
        QVERIFY(page.open(QIODevice::ReadOnly));
        QVERIFY(page.readAll().contains("Entering/Viewing/Deleting Prescriptions"));

        choose("showDataFilesMenuItem");
        QTRY_COMPARE(m_opener.opened().size(), 2);
        QCOMPARE(QDir::cleanPath(m_opener.opened().constLast().toLocalFile()),
                 QString::fromStdString(dataFolder().string()));
        choose("webPageMenuItem");
        QTRY_COMPARE(m_opener.opened().size(), 3);
        QCOMPARE(m_opener.opened().constLast(), QUrl(QLatin1String(productPageAddress)));
        choose("keyboardMenuItem");
        QTRY_COMPARE(m_opener.opened().size(), 4);
        QVERIFY(QFileInfo(m_opener.opened().constLast().toLocalFile()).isFile());

        // A language without a manual: nothing opens, and nothing is said.
        qputenv("LC_ALL", "fi_FI.UTF-8");
        choose("helpMenuItem");
        QVERIFY(noAlertShows());
        choose("webPageMenuItem");
        QTRY_COMPARE(m_opener.opened().size(), 5);
        QCOMPARE(m_opener.opened().constLast(), QUrl(QLatin1String(productPageAddress)));
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

private:
    /// Checks, and presses the button of what is told, the last one unless another is given.
    Told check(int button = -1) {
        Ports all = m_ports.ports();
        Ports ports{all.alerts, all.windows, all.workspace, all.defaults, all.notifications, all.clock,
                    all.system, m_web,       all.preview,   all.bundle,   all.files,         all.clipboard};
        KPXAppDelegate delegate(ports);
        Told told;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto* box = qobject_cast<AlertBox*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible()) {
                return;
            }
            look.stop();
            // Without the places at which it may break.
            told.text = box->text().remove(QChar(0x200B));
            told.informative = box->informativeText();
            for (QAbstractButton* each : box->buttons()) {
                told.buttons << each->text().remove(QLatin1Char('&'));
            }
            if (m_answer) {
                m_answer(*box);
            } else {
                box->buttons().at(button < 0 ? box->buttons().size() - 1 : button)->click();
            }
        });
        look.start(10);
        delegate.newVersionCheck();
        return told;
    }

    QString moved(const QString& address) const {
        return m_base + QStringLiteral("/moved/") + QString::fromLatin1(QUrl::toPercentEncoding(address));
    }
    static void trustTheServer(bool trusted) {
        QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
        configuration.setCaCertificates(
            trusted ? QSslCertificate::fromPath(QStringLiteral(KPX_SOURCE_FOLDER "/tests/ui/certificate/loopback.crt"))
                    : QList<QSslCertificate>());
        QSslConfiguration::setDefaultConfiguration(configuration);
    }

    QProcess m_server;
    QString m_base;
    QString m_unprotected;
    std::function<void(AlertBox&)> m_answer;
    FakeOpener m_opener;
    QtPorts m_ports;
    QtWebFetch m_fetch{std::chrono::milliseconds(1500)};
    LedElsewhere m_web{m_fetch};
};

QTEST_MAIN(VersionCheckTest)
#include "VersionCheckTest.moc"
