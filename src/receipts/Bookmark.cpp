#include "receipts/Bookmark.h"

#include "core/PropertyList.h"

#include <sys/stat.h>
#include <string_view>

namespace kpx {

namespace {

// A bookmark is this mark followed by a binary property list of the fields below.
constexpr std::string_view mark = "KPXBookmark1";
constexpr char pathField[] = "path";
constexpr char deviceField[] = "device";
constexpr char inodeField[] = "inode";
constexpr char sizeField[] = "size";

struct Identity {
    std::int64_t device = 0;
    std::int64_t inode = 0;
    std::int64_t size = 0;
    bool operator==(const Identity&) const = default;
};

std::optional<Identity> identityOf(const std::filesystem::path& file) {
    struct stat status = {};
    if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return Identity{static_cast<std::int64_t>(status.st_dev), static_cast<std::int64_t>(status.st_ino),
                    static_cast<std::int64_t>(status.st_size)};
}

std::optional<Record> fieldsOf(const Data& bookmark) {
    const std::string_view bytes(reinterpret_cast<const char*>(bookmark.bytes().data()), bookmark.bytes().size());
    if (!bytes.starts_with(mark)) {
        return std::nullopt;
    }
    const auto root = readPropertyList(bytes.substr(mark.size()));
    const Record* fields = root ? root->as<Record>() : nullptr;
    return fields ? std::optional(*fields) : std::nullopt;
}

/// The first file below the folder that the test accepts.
template <typename Test>
std::optional<std::filesystem::path> findBelow(const std::filesystem::path& folder, Test test) {
    std::error_code error;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    for (std::filesystem::recursive_directory_iterator entry(folder, options, error), end; !error && entry != end;
         entry.increment(error)) {
        if (test(entry->path())) {
            return entry->path();
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<Data> createBookmark(const std::filesystem::path& file, const std::filesystem::path& dataFolder) {
    const auto identity = identityOf(file);
    if (!identity) {
        return std::nullopt;
    }
    const auto relative = file.lexically_relative(dataFolder);
    const bool inside = !relative.empty() && *relative.begin() != "..";
    const Record fields{{pathField, (inside ? relative : file).string()},
                        {deviceField, identity->device},
                        {inodeField, identity->inode},
                        {sizeField, identity->size}};
    const auto list = writePropertyList(fields);
    if (!list) {
        return std::nullopt;
    }
    Data::Bytes bytes(mark.begin(), mark.end());
    bytes.insert(bytes.end(), list->begin(), list->end());
    return Data(std::move(bytes));
}

std::optional<std::filesystem::path> resolveBookmark(const Data& bookmark, const std::filesystem::path& dataFolder) {
    const auto fields = fieldsOf(bookmark);
    if (!fields) {
        return std::nullopt;
    }
    const std::filesystem::path stored = fields->text(pathField).value_or("").string();
    const std::filesystem::path expected = stored.is_absolute() ? stored : dataFolder / stored;
    const Identity wanted{fields->integer(deviceField), fields->integer(inodeField), fields->integer(sizeField)};
    const auto found = identityOf(expected);
    if (found && found->device == wanted.device && found->inode == wanted.inode) {
        return expected;
    }
    // Moved or renamed: the same file elsewhere in the folder. The size guards against a reused number.
    if (auto moved = findBelow(dataFolder, [&](const auto& file) { return identityOf(file) == wanted; })) {
        return moved;
    }
    // Replaced or restored: another file where the receipt was.
    return found ? std::optional(expected) : std::nullopt;
}

}  // namespace kpx
