#pragma once

#include "app/Ports.h"

#include "ui/style/Colors.h"

#include <QDBusMessage>
#include <QObject>

#include <string>

namespace kpx {

/// Version, region and appearance. The appearance is the desktop portal's colour scheme and contrast,
/// followed live.
class QtSystemInformation : public QObject, public SystemInformation {
    Q_OBJECT

public:
    QtSystemInformation();

    Version systemVersion() override;
    Region region() override;
    std::string appearanceStyle() override;

    const Scheme& scheme() const { return m_scheme; }

Q_SIGNALS:
    /// After the setting changed, before appearanceDidChange is called.
    void schemeChanged(const Scheme& scheme);

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    void askWithoutWaiting(const QString& key, const QString& method);
    void takeAnswer(const QString& key, const QDBusMessage& reply);
    void takeSetting(const QString& key, const QVariant& answered);
    void setScheme(const Scheme& scheme);

    Scheme m_scheme;
    CurrentRegion m_region;
};

}  // namespace kpx
