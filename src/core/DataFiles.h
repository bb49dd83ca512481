#pragma once

#include "core/Record.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace kpx {

/// The data folder's name, a fixed name also in the rule for receipts.
inline constexpr std::string_view dataFolderName = "Velmora";

/// The five files of the data folder. Each holds one array of records.
inline constexpr std::string_view prescriptionHistoryFile = "prescriptionHistoryFileForKPX";
inline constexpr std::string_view patientFile = "patientFileForKPX";
inline constexpr std::string_view pharmacyFile = "pharmacyFileForKPX";
inline constexpr std::string_view prescriberFile = "prescriberFileForKPX";
inline constexpr std::string_view drugFile = "DrugFileForKPX";

/// Reads one data file afresh. Creates the folder first (only its last component, mode 0700); a failure
/// to do so is ignored.
///
/// | the file                                          | result                 |
/// |---------------------------------------------------|------------------------|
/// | missing, or unreadable                            | an empty array         |
/// | a property list whose root is an array of records | its records, in order  |
/// | anything else, also zero bytes                    | null: damaged          |
[[nodiscard]] std::optional<Records> copyArrayFromDataFile(const std::filesystem::path& folder,
                                                           std::string_view fileName);

/// Writes the whole array in place of the file, atomically and durably: a reader, or a start after a
/// crash, sees the old file or the new one, whole. The file's mode is 0600. A symbolic link is followed,
/// not replaced.
///
/// A null array (one that was read from a damaged file) writes nothing: a damaged file is never
/// overwritten. False when nothing was written; the old file then stands as it was.
bool writeArray(const std::optional<Records>& array, const std::filesystem::path& folder, std::string_view fileName);

}  // namespace kpx
