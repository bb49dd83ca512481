#include "region/Environment.h"

#include "region/RegionServices.h"

#include <filesystem>
#include <system_error>

namespace kpx {

Region::Region(std::string_view localeName, std::string_view timeZone)
    : m_services(std::make_shared<RegionServices>(RegionSettings{.dates = std::string(localeName),
                                                                 .numbers = std::string(localeName),
                                                                 .money = std::string(localeName),
                                                                 .order = std::string(localeName),
                                                                 .languages = {std::string(localeName)},
                                                                 .timeZone = std::string(timeZone),
                                                                 .zoneFolder = std::string(systemZoneFolder)},
                                                  RegionServices::Conventions::OwnOfTheRegion)) {}

Region::Region(const RegionSettings& settings)
    : m_services(std::make_shared<RegionServices>(settings, RegionServices::Conventions::OfTheFiles)) {}

const std::string& Region::localeName() const { return m_services->localeName; }
const std::vector<std::string>& Region::languageCodes() const { return m_services->languageCodes; }
bool Region::hasDecimalComma() const { return m_services->hasDecimalComma(); }

const Region& CurrentRegion::region() {
    RegionSettings settings = regionSettings(m_variable);
    std::string systemZone;
    if (settings.timeZone == systemZoneFile) {
        std::error_code error;
        systemZone = std::filesystem::read_symlink(systemZoneFile, error).string();  // empty for a plain file
    }
    if (!m_region || settings != m_settings || systemZone != m_systemZone) {
        m_region = std::make_unique<Region>(settings);
        m_settings = std::move(settings);
        m_systemZone = std::move(systemZone);
    }
    return *m_region;
}

}  // namespace kpx
