#include "core/DataFiles.h"

#include "core/DataFilesReplacement.h"
#include "core/PropertyList.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <stdexcept>
#include <string>

namespace kpx {
namespace {

/// The file's bytes; null when it is missing, unreadable or no regular file.
std::optional<std::string> readWholeFile(const std::filesystem::path& path) {
    // Not to wait for the other end of a named pipe.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t length = 0;
    while (true) {
        if (length == bytes.size()) {
            constexpr std::size_t more = 4096;  // the file has grown, or its size is not known beforehand
            bytes.resize(length + more);
        }
        const ssize_t count = ::read(file.get(), bytes.data() + length, bytes.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return std::nullopt;
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

std::optional<Records> recordsFromBytes(std::string_view bytes) {
    const std::optional<Value> root = readPropertyList(bytes);
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

std::optional<Records> copyArrayFromDataFile(const std::filesystem::path& folder, std::string_view fileName) {
    try {
        ::mkdir(folder.c_str(), S_IRWXU);
        const std::optional<std::string> bytes = readWholeFile(folder / fileName);
        return bytes ? recordsFromBytes(*bytes) : Records();
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    } catch (const std::length_error&) {
        return std::nullopt;
    }
}

bool writeArray(const std::optional<Records>& array, const std::filesystem::path& folder, std::string_view fileName) {
    if (!array) {
        return false;
    }
    try {
        const std::optional<std::string> bytes =
            writePropertyList(Array(std::vector<Value>(array->begin(), array->end())));
        return bytes && replaceFile(folder / fileName, *bytes);
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::length_error&) {
        return false;
    }
}

}  // namespace kpx
