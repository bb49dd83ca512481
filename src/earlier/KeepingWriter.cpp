#include "earlier/KeepingWriter.h"

#include "earlier/Retention.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace kpx {
namespace {

bool isThere(const std::vector<FileContent>& contents) {
    return std::ranges::any_of(contents, &FileContent::isPresent);
}

/// What another program put in place is an instant of its own, not of the second in which it is replaced.
HouseholdContents settled(const EarlierFolder& earlier, Date now) {
    return earlier.settledContents(now, now.addingSeconds(-1));
}

void removeSuperfluous(const EarlierFolder& earlier, const HouseholdContents& contents,
                       const Environment& environment) {
    for (const FileContent& content : superfluousContents(contents, environment)) {
        earlier.remove(content);
    }
}

/// As the folder stands after a file was replaced, without looking again.
void noteReplacement(HouseholdContents& contents, std::size_t file, const std::optional<FileContent>& kept, Date now) {
    const auto since = static_cast<std::int64_t>(fileTimeOf(now).tv_sec);
    auto& known = contents[file];
    std::erase_if(known, [&](const FileContent& content) { return content.isPresent || (kept && content == *kept); });
    if (kept) {
        known.push_back(*kept);
        known.back().until = std::max(since, kept->since);
    }
    known.push_back({.file = file, .since = since, .isPresent = true});
    std::ranges::sort(known, {}, &FileContent::order);
}

/// Keeps the note of the beginnings up to date. Where there can be none, nothing is done.
class NotedBeginnings {
public:
    /// Before anything is kept: what stands there was there before.
    NotedBeginnings(const EarlierFolder& earlier, const HouseholdContents& contents)
        : m_earlier(earlier), m_noted(earlier.beginnings(contents)) {
        change([&](Beginnings& beginnings) { beginnings.noteFound(contents); });
    }

    /// Once a file stands that was missing.
    void noteMade(std::size_t file, Date now) {
        change([&](Beginnings& beginnings) { beginnings.noteMade(file, fileTimeOf(now).tv_sec); });
    }

private:
    template <typename Change>
    void change(const Change& change) {
        const auto before = m_noted;
        if (m_noted) {
            change(*m_noted);
        }
        if (m_noted != before) {
            m_earlier.note(*m_noted);
        }
    }

    const EarlierFolder& m_earlier;
    std::optional<Beginnings> m_noted;
};

/// A file that is to be replaced, and by what.
struct Exchange {
    std::size_t file = 0;
    std::string bytes;
    std::optional<FileContent> kept = std::nullopt;
};

/// Null when an earlier content cannot be read, or a present one cannot be found out about.
std::optional<std::vector<Exchange>> exchangesFor(const EarlierFolder& earlier, const HouseholdContents& contents,
                                                  const EarlierState& state) {
    const std::string emptyList = bytesFromRecords({}).value_or("");
    std::vector<Exchange> exchanges;
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        const auto present = std::ranges::find(contents[file], true, &FileContent::isPresent);
        const bool exists = present != contents[file].end();
        if (!exists && earlier.read({.file = file, .isPresent = true}).state != WholeFile::State::Missing) {
            return std::nullopt;  // it would be replaced and not kept
        }
        if (!exists && !state.contents[file]) {
            continue;
        }
        const WholeFile wanted =
            state.contents[file] ? earlier.read(*state.contents[file]) : WholeFile{WholeFile::State::Read, emptyList};
        if (wanted.state != WholeFile::State::Read) {
            return std::nullopt;
        }
        const WholeFile now = exists ? earlier.read(*present) : WholeFile{};
        if (now.state != WholeFile::State::Read || now.bytes != wanted.bytes) {
            exchanges.push_back({file, wanted.bytes});
        }
    }
    return exchanges;
}

}  // namespace

bool replaceKeepingEarlier(const std::filesystem::path& dataFolder, std::string_view fileName,
                           const NewContent& content, Replacing replacing, const Environment& environment) {
    if (content.madeFrom == WholeFile::State::Unreadable) {
        return replaceFile(dataFolder / fileName, content);  // which refuses what must not be replaced
    }
    const std::size_t file = householdFileNamed(fileName);
    const EarlierFolder earlier(dataFolder);
    HouseholdContents contents = settled(earlier, environment.now);
    NotedBeginnings beginnings(earlier, contents);
    const bool isNew = content.madeFrom == WholeFile::State::Missing && !isThere(contents[file]);
    std::optional<FileContent> kept;
    if (isThere(contents[file])) {
        kept = earlier.keep(file, replacing == Replacing::Deletion, contents);
    }
    if (kept && replacing == Replacing::Deletion) {
        earlier.synchronize();  // what anything else replaces is not all that there was of it
    }
    NewContent timed = content;
    timed.time = fileTimeOf(environment.now);
    if (!replaceFile(dataFolder / fileName, timed)) {
        return false;
    }
    if (kept) {
        earlier.setUntil(*kept, environment.now);
    }
    if (isNew) {
        beginnings.noteMade(file, environment.now);
    }
    noteReplacement(contents, file, kept, environment.now);
    removeSuperfluous(earlier, contents, environment);
    return true;
}

BroughtBack bringBack(const std::filesystem::path& dataFolder, const EarlierState& state,
                      const Environment& environment) {
    const EarlierFolder earlier(dataFolder);
    HouseholdContents contents = settled(earlier, environment.now);
    auto exchanges = exchangesFor(earlier, contents, state);
    if (!exchanges) {
        return BroughtBack::NotAtAll;
    }
    NotedBeginnings beginnings(earlier, contents);
    for (Exchange& exchange : *exchanges) {
        if (isThere(contents[exchange.file])) {
            exchange.kept = earlier.keep(exchange.file, false, contents);
            if (!exchange.kept) {
                return BroughtBack::NotAtAll;
            }
        }
    }
    earlier.synchronize();
    bool whole = true;
    for (const Exchange& exchange : *exchanges) {
        const NewContent content{.bytes = exchange.bytes, .time = fileTimeOf(environment.now)};
        if (!replaceFile(dataFolder / householdFiles()[exchange.file].name, content)) {
            whole = false;
            continue;
        }
        if (exchange.kept) {
            earlier.setUntil(*exchange.kept, environment.now);
        } else {
            beginnings.noteMade(exchange.file, environment.now);
        }
        noteReplacement(contents, exchange.file, exchange.kept, environment.now);
    }
    if (whole) {
        removeSuperfluous(earlier, contents, environment);
    }
    return whole ? BroughtBack::Whole : BroughtBack::InPart;
}

}  // namespace kpx
