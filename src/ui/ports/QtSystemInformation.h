#pragma once

#include "app/Ports.h"

#include <QDBusMessage>
#include <QObject>

#include <string>

namespace kpx {

/// Version, region and appearance. The appearance is the desktop portal's colour scheme, followed live.
class QtSystemInformation : public QObject, public SystemInformation {
    Q_OBJECT

public:
    QtSystemInformation();

    Version systemVersion() override;
    Region region() override;
    std::string appearanceStyle() override;

    bool isDark() const { return m_dark; }

Q_SIGNALS:
    /// After the setting changed, before appearanceDidChange is called.
    void darkChanged(bool dark);

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    void setDark(bool dark);

    bool m_dark = false;
    CurrentRegion m_region;
};

}  // namespace kpx
