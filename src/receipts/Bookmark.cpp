#include "receipts/Bookmark.h"

#include "plist/PropertyList.h"
#include "receipts/DataFolderRule.h"
#include "receipts/FileIdentity.h"

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>

namespace kpx {

namespace {

// A bookmark is this mark followed by a binary property list of the fields below. The path is data, not
// a text: a file's name may be any bytes.
constexpr std::string_view mark = "KPXBookmark1";
constexpr char pathField[] = "path";
constexpr char inodeField[] = "inode";
constexpr char sizeField[] = "size";
constexpr char fingerprintField[] = "fingerprint";

/// The longest path and some room for the rest; longer data is not looked at.
constexpr std::size_t longestBookmark = PATH_MAX + 1024;

struct Reference {
    std::filesystem::path path;
    FileIdentity identity;
    std::optional<std::int64_t> fingerprint;
};

std::optional<std::int64_t> wholeNumber(const Record& fields, const char* name) {
    const Value* value = fields.find(name);
    const auto* number = value ? value->as<std::int64_t>() : nullptr;
    return number ? std::optional(*number) : std::nullopt;
}

bool climbs(const std::filesystem::path& path) { return std::ranges::find(path, "..") != path.end(); }

bool isAllowed(const std::filesystem::path& path, const std::filesystem::path& dataFolder) {
    const std::string& text = path.native();
    if (text.empty() || text.size() >= PATH_MAX || text.find('\0') != std::string::npos) {
        return false;
    }
    return path.is_absolute() ? liesInDataFolder(path, dataFolder.filename().native()) : !climbs(path);
}

std::optional<Reference> referenceOf(const Data& bookmark, const std::filesystem::path& dataFolder) {
    const std::string_view bytes(reinterpret_cast<const char*>(bookmark.bytes().data()), bookmark.bytes().size());
    if (!bytes.starts_with(mark) || bytes.size() > longestBookmark) {
        return std::nullopt;
    }
    const auto root = readPropertyList(bytes.substr(mark.size()));
    const Record* fields = root ? root->as<Record>() : nullptr;
    const Value* path = fields ? fields->find(pathField) : nullptr;
    const Data* pathBytes = path ? path->as<Data>() : nullptr;
    if (!pathBytes) {
        return std::nullopt;
    }
    const auto inode = wholeNumber(*fields, inodeField);
    const auto size = wholeNumber(*fields, sizeField);
    const std::filesystem::path named = std::string(pathBytes->bytes().begin(), pathBytes->bytes().end());
    if (!inode || !size || !isAllowed(named, dataFolder)) {
        return std::nullopt;
    }
    return Reference{.path = named, .identity = {*inode, *size}, .fingerprint = wholeNumber(*fields, fingerprintField)};
}

/// The path as it is kept: below the data folder where the file can be named so.
std::filesystem::path keptPath(const std::filesystem::path& file, const std::filesystem::path& dataFolder) {
    auto relative = file.lexically_relative(dataFolder);
    if (!relative.empty() && !climbs(relative)) {
        return relative;
    }
    // Perhaps the folder was reached another way, as through a symbolic link. The receipt's own name
    // stays, also when it is a link itself.
    std::error_code noParent;
    std::error_code noFolder;
    const auto parent = std::filesystem::canonical(file.parent_path(), noParent);
    const auto folder = std::filesystem::canonical(dataFolder, noFolder);
    if (noParent || noFolder) {
        return file;
    }
    const auto below = parent.lexically_relative(folder);
    return climbs(below) ? file : (below / file.filename()).lexically_normal();
}

/// Whether the content is the wanted one. A file's number alone says nothing: it is given to another file when the
/// first is gone, and stays when the file is written anew.
bool isTheContent(const std::filesystem::path& file, const std::optional<FileIdentity>& found,
                  const Reference& wanted) {
    return found && found->size == wanted.identity.size && wanted.fingerprint &&
           fingerprintOf(file) == wanted.fingerprint;
}

/// The file below the folder, else the first copy of it.
std::optional<std::filesystem::path> findBelow(const std::filesystem::path& folder, const Reference& wanted) {
    std::optional<std::filesystem::path> copy;
    std::error_code error;
    const auto options = std::filesystem::directory_options::skip_permission_denied;
    for (std::filesystem::recursive_directory_iterator entry(folder, options, error), end; !error && entry != end;
         entry.increment(error)) {
        const auto found = identityOf(entry->path());
        if ((copy && found != wanted.identity) || !isTheContent(entry->path(), found, wanted)) {
            continue;
        }
        if (found == wanted.identity) {
            return entry->path();
        }
        copy = entry->path();
    }
    return copy;
}

}  // namespace

std::optional<Data> createBookmark(const std::filesystem::path& file, const std::filesystem::path& dataFolder) {
    const auto identity = identityOf(file);
    if (!identity) {
        return std::nullopt;
    }
    std::error_code error;
    const std::string path = keptPath(std::filesystem::absolute(file, error), dataFolder).native();
    if (error) {
        return std::nullopt;
    }
    Record fields{{pathField, Data(Data::Bytes(path.begin(), path.end()))},
                  {inodeField, identity->inode},
                  {sizeField, identity->size}};
    if (const auto fingerprint = fingerprintOf(file)) {
        fields.set(fingerprintField, *fingerprint);
    }
    const auto list = writePropertyList(fields);
    if (!list) {
        return std::nullopt;
    }
    Data::Bytes bytes(mark.begin(), mark.end());
    bytes.insert(bytes.end(), list->begin(), list->end());
    return Data(std::move(bytes));
}

std::optional<std::filesystem::path> resolveBookmark(const Data& bookmark, const std::filesystem::path& dataFolder) {
    const auto wanted = referenceOf(bookmark, dataFolder);
    if (!wanted) {
        return std::nullopt;
    }
    const std::filesystem::path expected = dataFolder / wanted->path;
    const auto found = identityOf(expected);
    if (isTheContent(expected, found, *wanted)) {
        return expected;
    }
    if (auto moved = findBelow(dataFolder, *wanted)) {
        return moved;
    }
    return found ? std::optional(expected) : std::nullopt;
}

std::string nameInBookmark(const Data& bookmark, const std::filesystem::path& dataFolder) {
    const auto reference = referenceOf(bookmark, dataFolder);
    return reference ? reference->path.filename().string() : std::string();
}

}  // namespace kpx
