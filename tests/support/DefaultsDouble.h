#pragma once

#include "app/Ports.h"

#include <filesystem>
#include <map>
#include <string>

namespace kpx::test {

/// Preferences in a small file of their own, so that the next run finds what was flushed, and nothing else.
class DefaultsDouble : public UserDefaults {
public:
    /// An empty path keeps them in memory only.
    explicit DefaultsDouble(std::filesystem::path file);

    std::int64_t integer(const std::string& key) override;
    void setInteger(const std::string& key, std::int64_t value) override;
    void registerDefault(const std::string& key, std::int64_t value) override;
    void synchronize() override;

    const std::map<std::string, std::int64_t>& stored() const { return m_stored; }

private:
    std::filesystem::path m_file;
    std::map<std::string, std::int64_t> m_stored;
    std::map<std::string, std::int64_t> m_registered;
};

}  // namespace kpx::test
