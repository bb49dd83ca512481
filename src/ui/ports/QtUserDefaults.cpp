#include "ui/ports/QtUserDefaults.h"

#include "ui/Conversions.h"
#include "ui/SettingsFile.h"

#include <QStandardPaths>

namespace kpx {

QtUserDefaults::QtUserDefaults()
    : m_settings(settingsFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                              QStringLiteral("/Velmora/Velmora.ini")),
                 QSettings::IniFormat) {}

std::int64_t QtUserDefaults::integer(const std::string& key) {
    bool isNumber = false;
    const qlonglong stored = m_settings.value(qstring(key)).toLongLong(&isNumber);
    if (isNumber) {
        return stored;
    }
    const auto registered = m_registered.find(key);
    return registered == m_registered.end() ? 0 : registered->second;
}

void QtUserDefaults::setInteger(const std::string& key, std::int64_t value) {
    m_settings.setValue(qstring(key), static_cast<qlonglong>(value));
}

void QtUserDefaults::registerDefault(const std::string& key, std::int64_t value) { m_registered[key] = value; }

void QtUserDefaults::synchronize() { m_settings.sync(); }

}  // namespace kpx
