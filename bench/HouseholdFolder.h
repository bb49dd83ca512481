#pragma once

#include "core/DataFiles.h"
#include "tests/support/HouseholdGenerator.h"

#include <stdlib.h>
#include <filesystem>
#include <string>

namespace kpx::bench {

/// A made household's data folder in a throw-away place.
class HouseholdFolder {
public:
    explicit HouseholdFolder(std::size_t fillCount) : m_household(test::makeHousehold(fillCount)) {
        std::string pattern = (std::filesystem::temp_directory_path() / "householdXXXXXX").string();
        m_dataHome = mkdtemp(pattern.data());
        std::filesystem::create_directory(folder());
        writeArray(m_household.patients, folder(), patientFile);
        writeArray(m_household.pharmacies, folder(), pharmacyFile);
        writeArray(m_household.prescribers, folder(), prescriberFile);
        writeArray(m_household.drugs, folder(), drugFile);
        writeHistory();
    }
    ~HouseholdFolder() { std::filesystem::remove_all(m_dataHome); }
    HouseholdFolder(const HouseholdFolder&) = delete;
    HouseholdFolder& operator=(const HouseholdFolder&) = delete;

    const std::filesystem::path& dataHome() const { return m_dataHome; }
    std::filesystem::path folder() const { return m_dataHome / dataFolderName; }
    const Records& history() const { return m_household.history; }
    /// The history file as it was at first.
    void writeHistory() const { writeArray(m_household.history, folder(), prescriptionHistoryFile); }

private:
    test::Household m_household;
    std::filesystem::path m_dataHome;
};

}  // namespace kpx::bench
