// The settings portal of a desktop, for tests: offers the colour scheme on the session bus. Each line on
// standard input, "dark" or "light", changes it; each is answered with a line once it holds.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QSocketNotifier>
#include <QTextStream>

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

}  // namespace

class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    void set(bool dark) {
        m_dark = dark;
        QDBusMessage changed = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
        changed << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
                << QVariant::fromValue(value());
        QDBusConnection::sessionBus().send(changed);
    }

public Q_SLOTS:
    QDBusVariant ReadOne(const QString&, const QString&) { return value(); }

private:
    QDBusVariant value() const { return QDBusVariant(QVariant(m_dark ? 1U : 2U)); }

    bool m_dark = false;
};

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    SettingsPortal portal;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerObject(path, &portal, QDBusConnection::ExportAllSlots) ||
        !bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) {
        return 1;
    }
    QTextStream input(stdin);
    QTextStream output(stdout);
    QSocketNotifier notifier(0, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &application, [&] {
        const QString line = input.readLine();
        if (line.isNull()) {
            QCoreApplication::quit();
            return;
        }
        portal.set(line == QStringLiteral("dark"));
        output << line << Qt::endl;
    });
    return QCoreApplication::exec();
}

#include "SettingsPortal.moc"
