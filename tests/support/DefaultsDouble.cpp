#include "tests/support/DefaultsDouble.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <system_error>
#include <utility>

namespace kpx::test {

DefaultsDouble::DefaultsDouble(std::filesystem::path file) : m_file(std::move(file)) {
    std::ifstream stream(m_file);
    const auto json = nlohmann::json::parse(stream, nullptr, false);
    if (!json.is_object()) {
        return;
    }
    for (const auto& [key, value] : json.items()) {
        if (value.is_number_integer()) {
            m_stored[key] = value.get<std::int64_t>();
        }
    }
}

std::int64_t DefaultsDouble::integer(const std::string& key) {
    for (const auto* values : {&m_stored, &m_registered}) {
        if (const auto found = values->find(key); found != values->end()) {
            return found->second;
        }
    }
    return 0;
}

void DefaultsDouble::setInteger(const std::string& key, std::int64_t value) { m_stored[key] = value; }

void DefaultsDouble::registerDefault(const std::string& key, std::int64_t value) { m_registered[key] = value; }

void DefaultsDouble::synchronize() {
    if (m_file.empty()) {
        return;
    }
    std::error_code ignored;
    std::filesystem::create_directories(m_file.parent_path(), ignored);
    std::ofstream(m_file) << nlohmann::json(m_stored).dump(2) << '\n';
}

}  // namespace kpx::test
