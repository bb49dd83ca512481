// The settings portal of a desktop, for tests: offers the colour scheme and the contrast on the session bus.
// Each line on standard input, "dark", "light", "high" or "normal", changes one of them; "no scheme" takes the first
// away, "keep silent" leaves whoever asks without an answer until "answer" comes. Each line is answered with one once
// it holds.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QHash>
#include <QSocketNotifier>
#include <QTextStream>

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString schemeKey = QStringLiteral("color-scheme");
const QString contrastKey = QStringLiteral("contrast");

}  // namespace

class SettingsPortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    void set(const QString& wish) {
        struct Setting {
            QString key;
            uint value;
        };
        const QHash<QString, Setting> settings = {{QStringLiteral("dark"), {schemeKey, 1}},
                                                  {QStringLiteral("light"), {schemeKey, 2}},
                                                  {QStringLiteral("high"), {contrastKey, 1}},
                                                  {QStringLiteral("normal"), {contrastKey, 0}}};
        if (!settings.contains(wish)) {
            change(wish);
            return;
        }
        const auto [key, number] = settings.value(wish);
        m_values[key] = number;
        QDBusMessage changed = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
        changed << QStringLiteral("org.freedesktop.appearance") << key << QVariant::fromValue(value(key));
        QDBusConnection::sessionBus().send(changed);
    }

public Q_SLOTS:
    QDBusVariant ReadOne(const QString&, const QString& key, const QDBusMessage& call) {
        call.setDelayedReply(true);
        m_asked << Question{key, call};
        answer();
        return {};
    }

private:
    struct Question {
        QString key;
        QDBusMessage call;
    };

    void change(const QString& wish) {
        if (wish == QStringLiteral("no scheme")) {
            m_values.remove(schemeKey);
        }
        m_silent = wish == QStringLiteral("keep silent");
        answer();
    }

    void answer() {
        while (!m_silent && !m_asked.isEmpty()) {
            const auto [key, call] = m_asked.takeFirst();
            QDBusConnection::sessionBus().send(
                m_values.contains(key)
                    ? call.createReply(QVariant::fromValue(value(key)))
                    : call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), key));
        }
    }

    QDBusVariant value(const QString& key) const { return QDBusVariant(QVariant(m_values.value(key))); }

    QList<Question> m_asked;
    bool m_silent = false;
    QHash<QString, uint> m_values = {{schemeKey, 2}, {contrastKey, 0}};
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
        portal.set(line);
        output << line << Qt::endl;
    });
    return QCoreApplication::exec();
}

#include "SettingsPortal.moc"
