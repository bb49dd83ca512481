#pragma once

#include "core/DataFiles.h"
#include "tests/support/HouseholdGenerator.h"

#include <stdlib.h>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace kpx::bench {

/// A made household's data folder in a throw-away place.
class HouseholdFolder {
public:
    explicit HouseholdFolder(std::size_t fillCount) : m_household(test::makeHousehold(fillCount)) {
        std::string pattern = (std::filesystem::temp_directory_path() / "householdXXXXXX").string();
        m_dataHome = mkdtemp(pattern.data());
        std::filesystem::create_directory(folder());
        write(m_household.patients, patientFile);
        write(m_household.pharmacies, pharmacyFile);
        write(m_household.prescribers, prescriberFile);
        write(m_household.drugs, drugFile);
        writeHistory();
    }
    ~HouseholdFolder() { std::filesystem::remove_all(m_dataHome); }
    HouseholdFolder(const HouseholdFolder&) = delete;
    HouseholdFolder& operator=(const HouseholdFolder&) = delete;

    const std::filesystem::path& dataHome() const { return m_dataHome; }
    std::filesystem::path folder() const { return m_dataHome / dataFolderName; }
    const Records& history() const { return m_household.history; }
    /// The history file as it was at first.
    void writeHistory() const { write(m_household.history, prescriptionHistoryFile); }

private:
    void write(const Records& records, std::string_view file) const {
        if (!writeArray(records, folder(), file)) {
            throw std::runtime_error("the household cannot be written");
        }
    }

    test::Household m_household;
    std::filesystem::path m_dataHome;
};

}  // namespace kpx::bench
