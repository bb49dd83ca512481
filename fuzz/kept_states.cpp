// The folder of earlier states as somebody may have filled it: a list of names, each with the time of its file, behind
// an empty line what is noted of the beginnings, and behind a zero byte the content of a file. The invariants: a name
// and a note that are taken for ours are given back, the present is never removed, what is offered is there, and where
// the program made no file none is offered as missing.

#include "earlier/Difference.h"
#include "earlier/OfferedStates.h"
#include "earlier/Retention.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

using namespace kpx;

const Environment& noon() {
    static const Environment environment{Date::fromSecondsSince1970(1709640000), Region("en_US", "America/New_York")};
    return environment;
}

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

HouseholdContents contentsOf(const std::string& listing) {
    HouseholdContents contents;
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find(' '));
        auto content = keptContentOfName(name);
        if (!content) {
            continue;
        }
        require(nameOfKeptContent(*content) == name);
        const std::int64_t time = name.size() < line.size() ? std::atoll(line.c_str() + name.size()) : 0;
        if (time > content->since) {
            content->until = time;
        }
        auto& file = contents[content->file];
        if (std::ranges::find(file, *content) == file.end()) {
            file.push_back(*content);
        }
    }
    for (auto& file : contents) {
        std::ranges::sort(file, {}, &FileContent::order);
        if (!file.empty()) {
            file.back().isPresent = true;
        }
    }
    return contents;
}

/// What follows the first empty line.
std::optional<Beginnings> beginningsOf(const std::string& listing) {
    const std::size_t end = listing.find("\n\n");
    const std::string note = end == std::string::npos ? "" : listing.substr(end + 2);
    const auto beginnings = Beginnings::fromText(note);
    require(!beginnings || beginnings->text() == note);
    return beginnings;
}

bool isIn(const HouseholdContents& contents, const FileContent& content) {
    return std::ranges::find(contents[content.file], content) != contents[content.file].end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    const std::string listing = bytes.substr(0, end);
    const HouseholdContents contents = contentsOf(listing.substr(0, listing.find("\n\n")));
    for (const FileContent& content : superfluousContents(contents, noon())) {
        require(!content.isPresent && isIn(contents, content));
    }
    for (const auto& beginnings : {std::optional<Beginnings>(), std::optional(Beginnings()), beginningsOf(listing)}) {
        const bool noneWasMade = beginnings == Beginnings();
        for (const EarlierState& state : offeredStates(contents, beginnings, noon())) {
            for (std::size_t file = 0; file < householdFileCount; ++file) {
                const auto& content = state.contents[file];
                require(!content || (isIn(contents, *content) && content->since <= state.when));
                require(content || !noneWasMade || contents[file].empty());
            }
        }
    }
    if (const auto records = recordsFromBytes(std::string_view(bytes).substr(std::min(end + 1, bytes.size())))) {
        for (const HouseholdFile& file : householdFiles()) {
            require(PresentRecords(file, *records).differenceTo(*records) == FileDifference{});
            require(PresentRecords(file, {}).differenceTo(*records) == (FileDifference{records->size(), 0, 0}));
        }
    }
    return 0;
}
