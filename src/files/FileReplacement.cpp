#include "files/FileReplacement.h"

#include "files/FileDescriptor.h"
#include "files/FolderLock.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace kpx {
namespace {

constexpr std::string_view temporaryEnd = ".tmp";
constexpr std::size_t randomDigits = 16;

std::string temporaryStart(const std::string& name) { return "." + name + "."; }

/// The start of a temporary file's name, of whatever file; "" for any other name.
std::string_view startOfTemporary(std::string_view entry) {
    if (!entry.starts_with('.') || !entry.ends_with(temporaryEnd) ||
        entry.size() < temporaryStart("").size() + randomDigits + temporaryEnd.size()) {
        return {};
    }
    const std::string_view start = entry.substr(0, entry.size() - randomDigits - temporaryEnd.size());
    const std::string_view digits = entry.substr(start.size(), randomDigits);
    return digits.find_first_not_of("0123456789abcdef") == std::string_view::npos ? start : std::string_view();
}

FileDescriptor openFolder(const std::filesystem::path& path) {
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

/// The end of a chain of symbolic links, which need not exist. Null when the chain is too long.
std::optional<std::filesystem::path> followingLinks(std::filesystem::path path) {
    constexpr int longestChain = 40;
    for (int links = 0; links < longestChain; ++links) {
        std::error_code error;
        if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, error))) {
            return path;
        }
        const std::filesystem::path target = std::filesystem::read_symlink(path, error);
        if (error) {
            return std::nullopt;
        }
        path = path.parent_path() / target;  // an absolute target stands for itself
    }
    return std::nullopt;
}

/// Of the file of that name; of all files where it is empty. Whoever still writes holds a lock on his.
void removeLeftOverTemporaries(const FileDescriptor& folder, const std::string& name) {
    const int listing = ::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (listing < 0) {
        return;
    }
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(listing), ::closedir);
    if (!stream) {
        ::close(listing);
        return;
    }
    std::vector<std::string> leftOver;
    while (const dirent* entry = ::readdir(stream.get())) {
        const std::string_view start = startOfTemporary(entry->d_name);
        if (!start.empty() && (name.empty() || start == temporaryStart(name))) {
            leftOver.emplace_back(entry->d_name);
        }
    }
    for (const std::string& temporary : leftOver) {
        const FileDescriptor file(
            ::openat(folder.get(), temporary.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file && tryToLock(file)) {
            ::unlinkat(folder.get(), temporary.c_str(), 0);
        }
    }
}

/// A new file in the folder, locked, removed again unless it takes the place of another.
class TemporaryFile {
public:
    TemporaryFile(const FileDescriptor& folder, const std::string& name)
        : m_folder(folder),
          m_name(temporaryStart(name) + randomText() + std::string(temporaryEnd)),
          m_file(::openat(folder.get(), m_name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR)),
          m_stands(m_file) {}
    ~TemporaryFile() {
        if (m_stands) {
            ::unlinkat(m_folder.get(), m_name.c_str(), 0);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    /// False also when another writer, between the making and the locking, took it for left over.
    bool lock() const {
        if (!m_file) {
            return false;
        }
        if (!tryToLock(m_file)) {
            return false;
        }
        struct stat status {};
        return ::fstat(m_file.get(), &status) == 0 && status.st_nlink > 0;
    }

    bool write(const NewContent& content) const {
        ::fchmod(m_file.get(), S_IRUSR | S_IWUSR);  // the mask may have taken a bit away
        std::string_view bytes = content.bytes;
        while (!bytes.empty()) {
            const ssize_t count = ::write(m_file.get(), bytes.data(), bytes.size());
            if (count < 0 && errno != EINTR) {
                return false;
            }
            bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
        }
        if (content.time) {
            const std::timespec times[] = {{0, UTIME_OMIT}, *content.time};
            ::futimens(m_file.get(), times);
        }
        return ::fsync(m_file.get()) == 0;
    }

    bool replace(const std::string& name) {
        m_stands = ::renameat(m_folder.get(), m_name.c_str(), m_folder.get(), name.c_str()) != 0;
        return !m_stands;
    }

private:
    static std::string randomText() {
        std::uint64_t number = 0;
        // Enough entropy is there long before anybody logs in; if not, O_EXCL keeps names apart.
        static_cast<void>(::getrandom(&number, sizeof number, GRND_NONBLOCK) == sizeof number);
        char text[randomDigits + 1];
        std::snprintf(text, sizeof text, "%016jx", static_cast<std::uintmax_t>(number));
        return text;
    }

    const FileDescriptor& m_folder;
    std::string m_name;
    FileDescriptor m_file;
    bool m_stands;
};

/// Whether what stands there, if anything does, may be replaced.
bool mayBeReplaced(const std::filesystem::path& target, WholeFile::State madeFrom) {
    struct stat status {};
    if (::lstat(target.c_str(), &status) != 0) {
        return errno == ENOENT;
    }
    return S_ISREG(status.st_mode) && madeFrom != WholeFile::State::Unreadable;
}

bool replaceTarget(const std::filesystem::path& path, const NewContent& content) {
    const std::optional<std::filesystem::path> target = followingLinks(path);
    if (!target || !target->has_filename() || !mayBeReplaced(*target, content.madeFrom)) {
        return false;
    }
    const FileDescriptor folder = openFolder(target->has_parent_path() ? target->parent_path() : ".");
    if (!folder) {
        return false;
    }
    const std::string name = target->filename();
    removeLeftOverTemporaries(folder, name);
    constexpr int attempts = 8;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        TemporaryFile temporary(folder, name);
        if (!temporary.lock()) {
            continue;
        }
        if (!temporary.write(content) || !temporary.replace(name)) {
            return false;
        }
        // The new file is in its place already; a folder that cannot be synchronised changes nothing.
        ::fsync(folder.get());
        return true;
    }
    return false;
}

}  // namespace

bool replaceFile(const std::filesystem::path& path, const NewContent& content) noexcept {
    try {
        return replaceTarget(path, content);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void removeLeftOvers(const std::filesystem::path& folder) {
    if (const FileDescriptor opened = openFolder(folder)) {
        removeLeftOverTemporaries(opened, {});
    }
}

bool synchronizeFolder(const std::filesystem::path& folder) {
    const FileDescriptor opened = openFolder(folder);
    return opened && ::fsync(opened.get()) == 0;
}

}  // namespace kpx
