#pragma once

#include "app/Ports.h"

#include <QSettings>

#include <map>

namespace kpx {

/// "Velmora/Velmora.ini" in the user's configuration folder.
class QtUserDefaults : public UserDefaults {
public:
    QtUserDefaults();

    std::int64_t integer(const std::string& key) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void registerDefault(const std::string& key, std::int64_t value) override;
    void synchronize() override;

private:
    QSettings m_settings;
    std::map<std::string, std::int64_t> m_registered;
};

}  // namespace kpx
