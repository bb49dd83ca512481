#include "core/DataFiles.h"

#include "files/FileReplacement.h"
#include "plist/PropertyList.h"

#include <sys/stat.h>

#include <new>
#include <stdexcept>
#include <string>

namespace kpx {
namespace {

/// Beyond any household's; a file that long is left alone.
constexpr std::size_t longestDataFile = std::size_t{1} << 30;

std::optional<Records> recordsFromRoot(const std::optional<Value>& root) {
    const Array* array = root ? root->as<Array>() : nullptr;
    if (!array) {
        return std::nullopt;
    }
    Records records;
    records.reserve(array->values().size());
    for (const Value& value : array->values()) {
        const Record* record = value.as<Record>();
        if (!record) {
            return std::nullopt;
        }
        records.push_back(*record);
    }
    return records;
}

}  // namespace

void makeDataFolder(const std::filesystem::path& folder) { ::mkdir(folder.c_str(), S_IRWXU); }

DataFile readDataFile(const std::filesystem::path& folder, std::string_view fileName) {
    makeDataFolder(folder);
    const WholeFile file = readWholeFile(folder / fileName, longestDataFile);
    switch (file.state) {
        case WholeFile::State::Missing:
            return {DataFile::State::Missing, {}};
        case WholeFile::State::Unreadable:
            return {DataFile::State::Unreadable, {}};
        case WholeFile::State::Read:
            break;
    }
    auto records = recordsFromBytes(file.bytes);
    return records ? DataFile{DataFile::State::Read, *std::move(records)} : DataFile{DataFile::State::Damaged, {}};
}

WholeFile::State fileStateOf(DataFile::State state) {
    switch (state) {
        case DataFile::State::Missing:
            return WholeFile::State::Missing;
        case DataFile::State::Unreadable:
            return WholeFile::State::Unreadable;
        case DataFile::State::Damaged:
        case DataFile::State::Read:
            break;
    }
    return WholeFile::State::Read;
}

std::optional<Records> recordsFromBytes(std::string_view bytes) {
    try {
        return recordsFromRoot(readPropertyList(bytes));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    } catch (const std::length_error&) {
        return std::nullopt;
    }
}

std::optional<std::string> bytesFromRecords(const Records& records) {
    try {
        return writePropertyList(Array(std::vector<Value>(records.begin(), records.end())));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    } catch (const std::length_error&) {
        return std::nullopt;
    }
}

std::optional<Records> copyArrayFromDataFile(const std::filesystem::path& folder, std::string_view fileName) {
    DataFile file = readDataFile(folder, fileName);
    return file.state == DataFile::State::Damaged ? std::nullopt : std::optional(std::move(file.records));
}

bool writeArray(const std::optional<Records>& array, const std::filesystem::path& folder, std::string_view fileName) {
    const auto bytes = array ? bytesFromRecords(*array) : std::nullopt;
    return bytes && replaceFile(folder / fileName, *bytes);
}

}  // namespace kpx
