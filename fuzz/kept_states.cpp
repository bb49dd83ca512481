// The folder of earlier states as somebody may have filled it: a list of names, each with the time of its file, and
// behind a zero byte the content of a file. The invariants: a name that is taken for one of ours is given back, the
// present is never removed, and what is offered is there.

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

bool isIn(const HouseholdContents& contents, const FileContent& content) {
    return std::ranges::find(contents[content.file], content) != contents[content.file].end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    const HouseholdContents contents = contentsOf(bytes.substr(0, end));
    for (const FileContent& content : superfluousContents(contents, noon())) {
        require(!content.isPresent && isIn(contents, content));
    }
    for (const EarlierState& state : offeredStates(contents, noon())) {
        for (const auto& content : state.contents) {
            require(!content || (isIn(contents, *content) && content->since <= state.when));
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
