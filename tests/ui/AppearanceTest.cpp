#include "tests/ui/MadeHousehold.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/style/Colors.h"

#include <QApplication>
#include <QFontInfo>
#include <QProcess>
#include <QTest>

#include <memory>

using namespace kpx;
using namespace kpx::test;

/// The desktop's colour scheme and contrast, followed while the program runs.
class AppearanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        m_portal.start(QCoreApplication::applicationDirPath() + QStringLiteral("/settings_portal"), QStringList());
        QVERIFY(m_portal.waitForStarted());
        setScheme("dark");
    }
    void cleanupTestCase() {
        m_portal.closeWriteChannel();
        QVERIFY(m_portal.waitForFinished());
    }

    void startsDarkAndTurnsLightAndBack() {
        writeSmallHousehold();
        Application program;
        QVERIFY(isDarkPalette(program.window().palette()));
        QVERIFY(startUp(program));
        QCOMPARE(icon(program), std::string("calIcon_dark.png"));
        setScheme("light");
        QTRY_COMPARE(icon(program), std::string("calIcon.png"));
        QTRY_VERIFY(!isDarkPalette(program.window().palette()));
        setScheme("dark");
        QTRY_COMPARE(icon(program), std::string("calIcon_dark.png"));
        QTRY_VERIFY(isDarkPalette(program.window().palette()));
    }

    void followsTheContrastInBothSchemes() {
        writeSmallHousehold();
        setScheme("high");
        Application program;
        QVERIFY(startUp(program));
        const auto shows = [&program](bool dark, bool highContrast) {
            return program.window().palette() == paletteOf({.dark = dark, .highContrast = highContrast});
        };
        QVERIFY(shows(true, true));
        setScheme("light");
        QTRY_VERIFY(shows(false, true));
        setScheme("normal");
        QTRY_VERIFY(shows(false, false));
    }

    /// As one that the desktop starts only now.
    void followsAPortalThatAnswersLate() {
        writeSmallHousehold();
        setScheme("dark");
        setScheme("high");
        {
            Application before;
            QVERIFY(before.window().palette() == paletteOf({.dark = true, .highContrast = true}));
        }
        setScheme("keep silent");
        Application program;
        QVERIFY(startUp(program));
        QVERIFY(program.window().palette() == paletteOf({.dark = false, .highContrast = false}));
        setScheme("answer");
        QTRY_VERIFY(program.window().palette() == paletteOf({.dark = true, .highContrast = true}));
        QCOMPARE(icon(program), std::string("calIcon_dark.png"));
    }

    void followsTheContrastWhereThereIsNoColorScheme() {
        writeSmallHousehold();
        setScheme("high");
        setScheme("no scheme");
        Application program;
        QVERIFY(program.window().palette() == paletteOf({.dark = false, .highContrast = true}));
    }

    void theFontIsCalledByItsNameSoThatItIsLookedUpOnce() {
        const Application program;
        const QFont font = QApplication::font();
        QCOMPARE(font.family(), QFontInfo(font).family());
    }

private:
    void setScheme(const QByteArray& scheme) {
        m_portal.write(scheme + '\n');
        QVERIFY(m_portal.waitForReadyRead());
        QCOMPARE(m_portal.readLine().trimmed(), scheme);
    }
    static const std::string& icon(Application& program) {
        return program.delegate().outlets.toDateFilterCalIcon.image();
    }

    QProcess m_portal;
};

QTEST_MAIN(AppearanceTest)
#include "AppearanceTest.moc"
