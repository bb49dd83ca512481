#include "region/TimeZone.h"

#include "region/PosixTimeZone.h"

#include <absl/time/civil_time.h>
#include <absl/time/time.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace kpx {

namespace {

const absl::CivilSecond beginOfCount(1970, 1, 1);

class DatabaseTimeZone : public TimeZone {
public:
    explicit DatabaseTimeZone(absl::TimeZone zone) : m_zone(zone) {}

    std::int64_t offsetAt(std::int64_t instant) const override {
        return m_zone.At(absl::FromUnixSeconds(instant)).offset;
    }

    Meaning meaningOf(std::int64_t local) const override {
        const absl::TimeZone::TimeInfo info = m_zone.At(beginOfCount + local);
        Meaning meaning{absl::ToUnixSeconds(info.pre), std::nullopt};
        if (info.kind == absl::TimeZone::TimeInfo::SKIPPED) {
            meaning.change = absl::ToUnixSeconds(info.trans);
        }
        return meaning;
    }

private:
    absl::TimeZone m_zone;
};

/// Null unless the file is one of the time zone database.
std::shared_ptr<const TimeZone> timeZoneFromFile(const std::filesystem::path& file) {
    // The library keeps what it has read under its name: behind a link the name changes with the place.
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(file, error);
    if (error || !std::filesystem::is_regular_file(real, error)) {
        return nullptr;
    }
    absl::TimeZone zone;
    return absl::LoadTimeZone(real.string(), &zone) ? std::make_shared<DatabaseTimeZone>(zone) : nullptr;
}

}  // namespace

std::shared_ptr<const TimeZone> timeZoneFromName(std::string_view name, std::string_view folder) {
    if (name.starts_with(':')) {
        name.remove_prefix(1);
    }
    // No name of a file is that long; the operating system would say so at best.
    constexpr std::size_t longestName = 1000;
    std::shared_ptr<const TimeZone> zone;
    if (!name.empty() && name.size() <= longestName && name.find('\0') == std::string_view::npos) {
        // An absolute name stays itself.
        zone = timeZoneFromFile(std::filesystem::path(folder) / name);
        if (!zone) {
            zone = posixTimeZone(name);
        }
    }
    return zone ? zone : std::make_shared<DatabaseTimeZone>(absl::UTCTimeZone());
}

}  // namespace kpx
