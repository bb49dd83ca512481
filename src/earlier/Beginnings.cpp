#include "earlier/Beginnings.h"

#include <algorithm>

namespace kpx {
namespace {

constexpr std::int64_t beginningOfTime = INT64_MIN;

/// The file's place and its beginning; of a file that was there when it was first seen the name alone.
std::optional<FileContent> noteOfLine(std::string_view line) {
    if (const std::size_t file = householdFileNamed(line); file < householdFileCount) {
        return FileContent{.file = file, .since = beginningOfTime};
    }
    return keptContentOfName(line);
}

}  // namespace

std::optional<Beginnings> Beginnings::fromText(std::string_view text) {
    Beginnings beginnings;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (const auto note = noteOfLine(line)) {
            beginnings.m_missingUntil[note->file] = note->since;
        }
    }
    return beginnings.text() == text ? std::optional(beginnings) : std::nullopt;
}

std::string Beginnings::text() const {
    std::string text;
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        if (const auto until = m_missingUntil[file]) {
            text += *until == beginningOfTime ? std::string(householdFiles()[file].name)
                                              : nameOfKeptContent({.file = file, .since = *until});
            text += '\n';
        }
    }
    return text;
}

void Beginnings::noteFound(const HouseholdContents& contents) {
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        if (!contents[file].empty() && !m_missingUntil[file]) {
            m_missingUntil[file] = beginningOfTime;
        }
    }
}

void Beginnings::noteMade(std::size_t file, std::int64_t instant) {
    if (!m_missingUntil[file]) {
        m_missingUntil[file] = instant;
    }
}

bool Beginnings::wasMissing(std::size_t file, const std::vector<FileContent>& known, std::int64_t instant) const {
    return known.empty() || instant < m_missingUntil[file].value_or(beginningOfTime);
}

}  // namespace kpx
