#pragma once

#include "files/WholeFile.h"
#include "values/Record.h"

#include <filesystem>
#include <optional>
#include <string>
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

/// What one data file was found to be.
struct DataFile {
    enum class State { Missing, Unreadable, Damaged, Read };
    State state = State::Missing;
    Records records;  ///< empty unless read
};

/// Makes the folder (only its last component, mode 0700); a failure to do so is ignored.
void makeDataFolder(const std::filesystem::path& folder);

/// Reads one data file afresh. Makes the folder first.
///
/// | the file                                          | state                          |
/// |---------------------------------------------------|--------------------------------|
/// | not there                                         | missing: a new household       |
/// | there, but it cannot be read now                  | unreadable: leave it alone     |
/// | a property list whose root is an array of records | read                           |
/// | anything else, also zero bytes                    | damaged: leave it alone        |
[[nodiscard]] DataFile readDataFile(const std::filesystem::path& folder, std::string_view fileName);

/// What the file was, whatever it held: a damaged one was read.
[[nodiscard]] WholeFile::State fileStateOf(DataFile::State state);

/// The records in the bytes of a data file; null when they are damaged.
[[nodiscard]] std::optional<Records> recordsFromBytes(std::string_view bytes);
/// The bytes of a data file with these records; null when one of them nests too deep to be read back.
[[nodiscard]] std::optional<std::string> bytesFromRecords(const Records& records);

/// The records of a file afresh: null when it is damaged, empty when it is missing or unreadable.
[[nodiscard]] std::optional<Records> copyArrayFromDataFile(const std::filesystem::path& folder,
                                                           std::string_view fileName);

/// Writes the whole array in place of the file, atomically and durably: a reader, or a start after a
/// crash, sees the old file or the new one, whole. The file's mode is 0600. A symbolic link is followed,
/// not replaced.
///
/// A null array (one that was read from a damaged file) writes nothing: a damaged file is never
/// overwritten. False when nothing was written; the old file then stands as it was.
///
/// For tests and benchmarks, which make households: the program replaces a file through earlier/, which keeps what it
/// held.
[[nodiscard]] bool writeArray(const std::optional<Records>& array, const std::filesystem::path& folder,
                              std::string_view fileName);

}  // namespace kpx
