#include "earlier/EarlierFolder.h"

#include "files/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <system_error>

namespace kpx {
namespace {

constexpr std::size_t longestContent = std::size_t{1} << 30;

constexpr const char* beginningsAttribute = "user.velmora.beginnings";
constexpr std::size_t longestNote = 1024;  // five names and instants take a quarter of it

/// Marks a content that was replaced in the second in which it was written. No clock of ours tells it: a date does not
/// count so finely.
constexpr long lastNanosecond = 999'999'999;

std::int64_t wholeSeconds(Date date) { return static_cast<std::int64_t>(std::floor(date.secondsSince1970())); }

/// Of a regular file, links followed; null for anything else.
std::optional<struct stat> statusOf(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) ? std::optional(status) : std::nullopt;
}

bool areOneFile(const std::filesystem::path& left, const std::filesystem::path& right) {
    const auto leftStatus = statusOf(left);
    const auto rightStatus = statusOf(right);
    return leftStatus && rightStatus && leftStatus->st_dev == rightStatus->st_dev &&
           leftStatus->st_ino == rightStatus->st_ino;
}

bool holdTheSame(const std::filesystem::path& left, const std::string& bytes) {
    const WholeFile file = readWholeFile(left, longestContent);
    return file.state == WholeFile::State::Read && file.bytes == bytes;
}

void makePrivateFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) == 0) {
        ::chmod(folder.c_str(), S_IRWXU);  // the mask may have taken a bit away
    }
}

}  // namespace

std::timespec fileTimeOf(Date date) {
    const double seconds = date.secondsSince1970();
    const double whole = std::floor(seconds);
    constexpr double nanoseconds = 1e9;
    return {static_cast<std::time_t>(whole), static_cast<long>((seconds - whole) * nanoseconds)};
}

EarlierFolder::EarlierFolder(std::filesystem::path dataFolder)
    : m_dataFolder(std::move(dataFolder)), m_folder(m_dataFolder.string() + "-earlier") {}

std::filesystem::path EarlierFolder::present(std::size_t file) const {
    return m_dataFolder / householdFiles()[file].name;
}

std::filesystem::path EarlierFolder::kept(const FileContent& content) const {
    return m_folder / nameOfKeptContent(content);
}

std::filesystem::path EarlierFolder::asFolder() const { return m_folder / "."; }

HouseholdContents EarlierFolder::contents(Date now) const {
    HouseholdContents contents;
    std::error_code error;
    std::filesystem::directory_iterator entry(m_folder, error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        auto content = keptContentOfName(entry->path().filename().native());
        const auto status = content ? statusOf(entry->path()) : std::nullopt;
        if (!status) {
            continue;
        }
        const std::timespec& replaced = status->st_mtim;
        if (replaced.tv_sec > content->since ||
            (replaced.tv_sec == content->since && replaced.tv_nsec == lastNanosecond)) {
            content->until = replaced.tv_sec;
        }
        contents[content->file].push_back(*content);
    }
    for (std::size_t file = 0; file < householdFileCount; ++file) {
        if (const auto status = statusOf(present(file))) {
            contents[file].push_back({.file = file,
                                      .since = std::min<std::int64_t>(status->st_mtim.tv_sec, wholeSeconds(now)),
                                      .isPresent = true});
        }
        std::ranges::sort(contents[file], {}, &FileContent::order);
    }
    return contents;
}

HouseholdContents EarlierFolder::settledContents(Date now, Date otherTime) const {
    HouseholdContents contents = this->contents(now);
    for (auto& known : contents) {
        const auto content = std::ranges::find(known, true, &FileContent::isPresent);
        const auto status = content == known.end() ? std::nullopt : statusOf(present(content->file));
        if (!status) {
            continue;
        }
        std::int64_t latest = INT64_MIN;
        for (const FileContent& other : known) {
            if (!other.isPresent && other.since <= wholeSeconds(now)) {
                latest = std::max(latest, other.since);
            }
        }
        if (content->since < latest || status->st_mtim.tv_sec > wholeSeconds(now)) {
            const Date time = std::max(otherTime, Date::fromSecondsSince1970(static_cast<double>(latest)));
            const std::timespec times[] = {{0, UTIME_OMIT}, fileTimeOf(time)};
            ::utimensat(AT_FDCWD, present(content->file).c_str(), times, 0);
            content->since = wholeSeconds(time);
            std::ranges::sort(known, {}, &FileContent::order);
        }
    }
    return contents;
}

std::optional<Beginnings> EarlierFolder::beginnings(const HouseholdContents& contents) const {
    char text[longestNote];
    const ssize_t length = ::getxattr(asFolder().c_str(), beginningsAttribute, text, sizeof text);
    if (length >= 0) {
        return Beginnings::fromText({text, static_cast<std::size_t>(length)});
    }
    const bool nothingNoted = errno == ENODATA || errno == ENOENT;
    const bool nothingKept = std::ranges::all_of(
        contents, [](const auto& known) { return std::ranges::all_of(known, &FileContent::isPresent); });
    return nothingNoted && nothingKept ? std::optional(Beginnings()) : std::nullopt;
}

void EarlierFolder::note(const Beginnings& beginnings) const {
    makePrivateFolder(m_folder);
    const std::string text = beginnings.text();
    ::setxattr(asFolder().c_str(), beginningsAttribute, text.data(), text.size(), 0);
}

WholeFile EarlierFolder::read(const FileContent& content) const {
    return readWholeFile(content.isPresent ? present(content.file) : kept(content), longestContent);
}

std::optional<FileContent> EarlierFolder::keep(std::size_t file, bool asDeletion,
                                               const HouseholdContents& contents) const {
    const auto now = std::ranges::find(contents[file], true, &FileContent::isPresent);
    FileContent content = *now;
    content.isPresent = false;
    content.wasDeletedFrom = asDeletion;
    const std::filesystem::path source = present(file);
    const FileContent* last = nullptr;
    for (const FileContent& other : contents[file]) {
        if (!other.isPresent && other.since == content.since) {
            last = &other;
            content.number = other.number + 1;
        }
    }
    // A write that failed, or was killed, has kept this content already.
    const auto keptBefore = [&](const FileContent& before) -> std::optional<FileContent> {
        content.number = before.number;
        content.wasDeletedFrom = asDeletion || before.wasDeletedFrom;
        const bool named = content.wasDeletedFrom == before.wasDeletedFrom ||
                           ::rename(kept(before).c_str(), kept(content).c_str()) == 0;
        return named ? std::optional(content) : std::nullopt;
    };
    if (last && areOneFile(kept(*last), source)) {
        return keptBefore(*last);
    }
    makePrivateFolder(m_folder);
    const std::filesystem::path name = kept(content);
    if (::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
        return content;
    }
    const WholeFile copied = errno == EEXIST ? WholeFile{} : readWholeFile(source, longestContent);
    if (copied.state != WholeFile::State::Read) {
        return std::nullopt;
    }
    if (last && holdTheSame(kept(*last), copied.bytes)) {
        return keptBefore(*last);
    }
    const NewContent copy{.bytes = copied.bytes,
                          .time = fileTimeOf(Date::fromSecondsSince1970(static_cast<double>(content.since)))};
    return replaceFile(name, copy) ? std::optional(content) : std::nullopt;
}

void EarlierFolder::synchronize() const {
    synchronizeFolder(m_folder);
    synchronizeFolder(m_folder.parent_path());
}

void EarlierFolder::setUntil(const FileContent& content, Date replaced) const {
    const bool isInItsSecond = wholeSeconds(replaced) <= content.since;
    const std::timespec time = isInItsSecond ? std::timespec{content.since, lastNanosecond} : fileTimeOf(replaced);
    const std::timespec times[] = {{0, UTIME_OMIT}, time};
    ::utimensat(AT_FDCWD, kept(content).c_str(), times, 0);
}

void EarlierFolder::remove(const FileContent& content) const { ::unlink(kept(content).c_str()); }

}  // namespace kpx
