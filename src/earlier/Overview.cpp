#include "earlier/Overview.h"

#include "earlier/Difference.h"
#include "earlier/EarlierFolder.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace kpx {
namespace {

/// What one content is beside the one in the data folder now. A damaged one counts as empty, as everywhere.
struct FileOverview {
    bool canBeRead = true;
    std::size_t count = 0;
    bool equalsPresent = true;
    FileDifference difference;
};

/// A file's records, and the bytes where they are none.
struct Listed {
    Records records;
    std::string damagedBytes;
};

Listed listedFrom(std::string bytes) {
    if (auto records = recordsFromBytes(bytes)) {
        return {*std::move(records), {}};
    }
    return {{}, "damaged " + std::move(bytes)};
}

/// The file in the data folder, read once.
struct PresentFile {
    PresentRecords records;
    std::string damagedBytes;
};

class Overview {
public:
    Overview(EarlierFolder earlier, const HouseholdContents& contents) : m_earlier(std::move(earlier)) {
        m_present.reserve(householdFileCount);
        for (std::size_t file = 0; file < householdFileCount; ++file) {
            const auto present = std::ranges::find(contents[file], true, &FileContent::isPresent);
            Listed listed;
            if (present != contents[file].end()) {
                listed = listedFrom(m_earlier.read(*present).bytes);
            }
            m_present.push_back({{householdFiles()[file], std::move(listed.records)}, std::move(listed.damagedBytes)});
        }
    }

    const FileOverview& of(std::size_t file, const std::optional<FileContent>& content) {
        const auto key = std::tuple(file, content ? std::optional(content->order()) : std::nullopt);
        const auto known = m_known.find(key);
        return known != m_known.end() ? known->second : m_known.emplace(key, lookAt(file, content)).first->second;
    }

private:
    FileOverview lookAt(std::size_t file, const std::optional<FileContent>& content) const {
        FileOverview overview;
        if (content && content->isPresent) {
            overview.count = m_present[file].records.count();
            return overview;  // it has been read, and equals itself
        }
        Listed listed;
        if (content) {
            WholeFile read = m_earlier.read(*content);
            overview.canBeRead = read.state == WholeFile::State::Read;
            listed = listedFrom(std::move(read.bytes));
        }
        overview.count = listed.records.size();
        overview.difference = m_present[file].records.differenceTo(listed.records);
        overview.equalsPresent =
            overview.difference == FileDifference{} && listed.damagedBytes == m_present[file].damagedBytes;
        return overview;
    }

    EarlierFolder m_earlier;
    std::vector<PresentFile> m_present;  // in the order of householdFiles()
    std::map<std::tuple<std::size_t, std::optional<std::tuple<std::int64_t, bool, int>>>, FileOverview> m_known;
};

}  // namespace

EarlierStates earlierStatesOf(const std::filesystem::path& dataFolder, const Environment& environment,
                              const LocalizedStrings& localized) {
    const EarlierFolder earlier(dataFolder);
    const HouseholdContents contents = earlier.contents(environment.now);
    Overview overview(earlier, contents);
    EarlierStates offered;
    for (const EarlierState& state : offeredStates(contents, earlier.beginnings(contents), environment)) {
        Record row{{"when", Date::fromSecondsSince1970(static_cast<double>(state.when))}};
        std::array<FileDifference, householdFileCount> differences;
        bool canBeRead = true;
        bool equalsPresent = true;
        for (std::size_t file = 0; file < householdFileCount; ++file) {
            const FileOverview& one = overview.of(file, state.contents[file]);
            row.set(householdFiles()[file].count, static_cast<std::int64_t>(one.count));
            differences[file] = one.difference;
            canBeRead = canBeRead && one.canBeRead;
            equalsPresent = equalsPresent && one.equalsPresent;
        }
        if (canBeRead && !equalsPresent) {
            row.set("difference", differenceText(differences, localized));
            offered.states.push_back(state);
            offered.rows.push_back(std::move(row));
        }
    }
    return offered;
}

}  // namespace kpx
