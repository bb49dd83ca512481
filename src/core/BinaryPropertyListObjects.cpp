#include "core/BinaryPropertyListObjects.h"

#include "core/BinaryPropertyListMemory.h"
#include "core/BinaryPropertyListTable.h"
#include "core/PropertyListLimits.h"
#include "core/PropertyListUnicode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <span>
#include <string_view>
#include <unordered_map>

namespace kpx {
namespace {

using Kind = BinaryObject::Kind;

constexpr std::size_t maximumCount = std::numeric_limits<std::uint32_t>::max();

/// Texts longer than this are looked up by their addresses first: one shared by very many places would
/// otherwise be hashed at each of them.
constexpr std::size_t fewBytes = 64;

/// What is known of the texts met lately, by their addresses: most records repeat the keys and the names
/// of the records around them.
class RecentTexts {
public:
    struct Entry {
        const void* address = nullptr;
        std::uint32_t number = HashedNumbers::none;  // none: so far only the hash is known
        std::uint64_t hash = 0;                      // of a text of few bytes
    };

    Entry& at(const void* address) {
        const auto bits = reinterpret_cast<std::uintptr_t>(address);
        return m_entries[(bits >> 4 ^ bits >> 14) % m_entries.size()];
    }

private:
    std::array<Entry, 1024> m_entries;
};

class Collector {
public:
    std::optional<BinaryObjects> collect(const Value& value) {
        Shape shape;
        if (!add(value, 1, shape)) {
            return std::nullopt;
        }
        m_result.places = shape.places;
        return std::move(m_result);
    }

private:
    struct Shape {
        std::uint32_t object = 0;
        std::uint32_t height = 0;
        std::uint64_t places = 1;
    };

    /// Mixed page by page only: what was made one after the other shall stand near to each other in the table
    /// too, and pages that lie a round distance apart shall not.
    static std::uint64_t hashOfAddress(const void* address) {
        constexpr unsigned spaceOfAContainer = 7;
        constexpr unsigned spaceOfAPage = 12;
        constexpr std::uint64_t inPage = (1U << (spaceOfAPage - spaceOfAContainer)) - 1;
        const auto bits = reinterpret_cast<std::uintptr_t>(address);
        return (hashOfNumber(bits >> spaceOfAPage) & ~inPage) | (bits >> spaceOfAContainer & inPage);
    }

    bool isFull() const { return m_result.objects.size() >= maximumCount; }
    std::uint32_t nextNumber() const { return static_cast<std::uint32_t>(m_result.objects.size()); }

    /// Numbers the value, which stands `depth` containers deep when it is one. False when it cannot be
    /// written.
    bool add(const Value& value, std::uint32_t depth, Shape& shape) {
        if (const Text* text = value.as<Text>()) {
            return addContent(*text, depth, shape);  // by far the most
        }
        return std::visit([&](const auto& content) { return addContent(content, depth, shape); }, value.variant());
    }

    bool addContent(const Text& text, std::uint32_t, Shape& shape) {
        const std::string& string = text.string();
        RecentTexts::Entry& recent = m_recent.at(&string);
        if (recent.address != &string) {
            recent = {&string, HashedNumbers::none, string.size() <= fewBytes ? hashOfBytes(string) : 0};
        } else if (recent.number != HashedNumbers::none) {
            shape.object = recent.number;
            return true;
        }
        const bool isAdded = string.size() <= fewBytes ? addBytes(string, &string, Kind::asciiText, recent.hash, shape)
                                                       : addLongBytes(string, &string, Kind::asciiText, shape);
        recent.number = shape.object;
        return isAdded;
    }

    // Records, texts and table places lie anywhere in memory. Waiting for one after the other would be
    // most of the time that writing a long list takes, so what the next records need is asked for while
    // one is added.

    void fetchRecord(const Record& record) const {
        __builtin_prefetch(record.identity());
        m_containers.fetchAhead(hashOfAddress(record.identity()));
    }

    static void fetchFields(const Record& record) {
        constexpr std::size_t cacheLine = 64;
        const auto bytes = std::as_bytes(firstFields(record));
        for (std::size_t index = 0; index < bytes.size(); index += cacheLine) {
            __builtin_prefetch(bytes.data() + index);
        }
    }

    static std::span<const Record::Field> firstFields(const Record& record) {
        constexpr std::size_t enough = 32;
        return {record.begin(), std::min(record.size(), enough)};
    }

    static void fetchTexts(const Record& record) {
        for (const Record::Field& field : firstFields(record)) {
            if (const Text* text = field.second.as<Text>()) {
                __builtin_prefetch(&text->string());
            }
        }
    }

    void fetchPlaces(const Record& record) {
        for (const Record::Field& field : firstFields(record)) {
            const Text* text = field.second.as<Text>();
            if (!text || m_recent.at(&text->string()).address == &text->string() || text->view().size() > fewBytes) {
                continue;
            }
            const std::uint64_t hash = hashOfBytes(text->view());
            m_recent.at(&text->string()) = {&text->string(), HashedNumbers::none, hash};
            m_bytes.fetchAhead(hash);
        }
    }

    void fetchObjects(const Record& record) {
        for (const Record::Field& field : firstFields(record)) {
            const Text* text = field.second.as<Text>();
            const RecentTexts::Entry* recent = text ? &m_recent.at(&text->string()) : nullptr;
            if (recent && recent->address == &text->string() && recent->number == HashedNumbers::none) {
                const std::uint32_t number = m_bytes.guess(recent->hash);
                __builtin_prefetch(m_result.objects.data() + std::min(number, nextNumber()));
            }
        }
    }

    void fetchAhead(const std::vector<Value>& values, std::size_t index) {
        const auto recordAt = [&](std::size_t distance) {
            return index + distance < values.size() ? values[index + distance].as<Record>() : nullptr;
        };
        if (const Record* record = recordAt(8)) {
            fetchRecord(*record);
        }
        if (const Record* record = recordAt(5)) {
            fetchFields(*record);
        }
        if (const Record* record = recordAt(3)) {
            fetchTexts(*record);
        }
        if (const Record* record = recordAt(2)) {
            fetchPlaces(*record);
        }
        if (const Record* record = recordAt(1)) {
            fetchObjects(*record);
        }
    }

    bool addContent(const Data& data, std::uint32_t, Shape& shape) {
        const Data::Bytes& bytes = data.bytes();
        return addLongBytes({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, &bytes, Kind::data, shape);
    }
    bool addContent(std::int64_t number, std::uint32_t, Shape& shape) {
        return addScalar(static_cast<std::uint64_t>(number), Kind::integer, shape);
    }
    bool addContent(std::uint64_t number, std::uint32_t, Shape& shape) {
        return addScalar(number, Kind::largeInteger, shape);
    }
    bool addContent(double number, std::uint32_t, Shape& shape) {
        return addScalar(std::bit_cast<std::uint64_t>(number), Kind::real, shape);
    }
    bool addContent(bool truth, std::uint32_t, Shape& shape) { return addScalar(truth ? 1 : 0, Kind::boolean, shape); }
    bool addContent(Date date, std::uint32_t, Shape& shape) {
        return addScalar(std::bit_cast<std::uint64_t>(date.secondsSinceReference), Kind::date, shape);
    }
    bool addContent(UniqueIdentifier identifier, std::uint32_t, Shape& shape) {
        return addScalar(identifier.number, Kind::uniqueIdentifier, shape);
    }

    bool addScalar(std::uint64_t bits, Kind kind, Shape& shape) {
        const bool isSmall = kind == Kind::integer && bits < m_smallIntegers.size();
        if (isSmall && m_smallIntegers[bits] != 0) {
            shape.object = m_smallIntegers[bits];
            return true;
        }
        const std::uint64_t hash = hashOfNumber(bits + (static_cast<std::uint64_t>(kind) << 56));
        shape.object = m_scalars.find(hash, [&](std::uint32_t number) {
            const BinaryObject& object = m_result.objects[number];
            return object.content == bits && object.kind == kind;
        });
        if (shape.object == HashedNumbers::none && !addObject(m_scalars, hash, {bits, 0, kind}, shape)) {
            return false;
        }
        if (isSmall) {
            m_smallIntegers[bits] = shape.object;
        }
        return true;
    }

    bool addObject(HashedNumbers& numbers, std::uint64_t hash, BinaryObject object, Shape& shape) {
        if (isFull()) {
            return false;
        }
        shape.object = nextNumber();
        numbers.add(hash, shape.object);
        m_result.objects.push_back(object);
        return true;
    }

    static std::string_view bytesOf(const BinaryObject& object) {
        if (object.kind == Kind::data) {
            const auto* bytes = reinterpret_cast<const Data::Bytes*>(object.content);
            return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
        }
        return *reinterpret_cast<const std::string*>(object.content);
    }

    bool addLongBytes(std::string_view bytes, const void* owner, Kind kind, Shape& shape) {
        if (const auto known = m_longBytes.find(owner); known != m_longBytes.end()) {
            shape.object = known->second;
            return true;
        }
        const std::uint64_t hash = hashOfBytes(bytes) + (kind == Kind::data ? 1 : 0);
        if (!addBytes(bytes, owner, kind, hash, shape)) {
            return false;
        }
        m_longBytes.emplace(owner, shape.object);
        return true;
    }

    bool addBytes(std::string_view bytes, const void* owner, Kind kind, std::uint64_t hash, Shape& shape) {
        if (bytes.size() > maximumCount) {
            return false;
        }
        const auto address = reinterpret_cast<std::uintptr_t>(owner);
        const bool isData = kind == Kind::data;
        shape.object = m_bytes.find(hash, [&](std::uint32_t number) {
            const BinaryObject& object = m_result.objects[number];
            return (object.kind == Kind::data) == isData && (object.content == address || bytesOf(object) == bytes);
        });
        if (shape.object != HashedNumbers::none) {
            return true;
        }
        auto count = static_cast<std::uint32_t>(bytes.size());
        if (!isData && !isAscii(bytes)) {
            kind = Kind::utf16Text;
            count = static_cast<std::uint32_t>(utf16Length(bytes));
        }
        return addObject(m_bytes, hash, {address, count, kind}, shape);
    }

    bool addContent(const Array& array, std::uint32_t depth, Shape& shape) {
        const std::vector<Value>& values = array.values();
        return addContainer(array.identity(), values.size(), values.size(), Kind::array, depth, shape, [&](Shape& own) {
            const std::uint64_t first = m_result.objects[own.object].content;
            if (own.object == 0) {
                reserveReferences(values);
            }
            for (std::size_t index = 0; index < values.size(); ++index) {
                fetchAhead(values, index);
                if (!addElement(values[index], first + index, depth, own)) {
                    return false;
                }
            }
            return true;
        });
    }

    /// A long list, which is the whole file, mostly holds records of one kind.
    void reserveReferences(const std::vector<Value>& values) {
        constexpr std::size_t longList = 1000;
        constexpr std::size_t enough = std::size_t{1} << 24;
        const Record* record = values.size() >= longList ? values.front().as<Record>() : nullptr;
        if (record && record->size() < enough / values.size()) {
            std::vector<std::uint32_t>& references = m_result.references;
            references.reserve(references.size() + values.size() * (2 * record->size() + 4));
            expectToFill(references.data(), references.capacity() * sizeof(std::uint32_t));
        }
    }

    bool addContent(const Record& record, std::uint32_t depth, Shape& shape) {
        const std::size_t size = record.size();
        return addContainer(record.identity(), size, 2 * size, Kind::dictionary, depth, shape, [&](Shape& own) {
            std::uint64_t place = m_result.objects[own.object].content;
            for (const Record::Field& field : record) {
                Shape key;
                if (!addContent(field.first, depth, key)) {
                    return false;
                }
                m_result.references[place++] = key.object;
            }
            own.places += size;
            for (const Record::Field& field : record) {
                if (!addElement(field.second, place++, depth, own)) {
                    return false;
                }
            }
            return true;
        });
    }

    template <typename AddElements>
    bool addContainer(const void* identity, std::size_t size, std::size_t references, Kind kind, std::uint32_t depth,
                      Shape& shape, const AddElements& addElements) {
        const std::uint64_t hash = hashOfAddress(identity);
        const std::uint32_t known = m_containers.find(
            hash, [&](std::uint32_t index) { return m_shapes[index].identity == identity && identity; });
        if (known != HashedNumbers::none) {
            shape = m_shapes[known].shape;
            return true;
        }
        if (depth > maximumNesting || size > maximumCount || isFull()) {
            return false;
        }
        shape = {nextNumber(), 1, 1};
        m_result.objects.push_back({m_result.references.size(), static_cast<std::uint32_t>(size), kind});
        m_result.references.resize(m_result.references.size() + references);
        if (!addElements(shape) || shape.height > maximumNesting) {
            return false;
        }
        if (identity) {
            m_containers.add(hash, static_cast<std::uint32_t>(m_shapes.size()));
            m_shapes.push_back({identity, shape});
        }
        return true;
    }

    bool addElement(const Value& value, std::uint64_t place, std::uint32_t depth, Shape& container) {
        Shape element;
        if (!add(value, depth + 1, element)) {
            return false;
        }
        m_result.references[place] = element.object;
        container.height = std::max(container.height, element.height + 1);
        // Stops well before the sum could overflow.
        container.places = std::min(container.places + element.places, std::uint64_t{1} << 62);
        return true;
    }

    struct KnownContainer {
        const void* identity;
        Shape shape;
    };

    BinaryObjects m_result;
    std::array<std::uint32_t, 1024> m_smallIntegers{};  // 0, the root's number, for those not met yet
    RecentTexts m_recent;
    HashedNumbers m_scalars;
    HashedNumbers m_bytes;
    HashedNumbers m_containers;  // indices of m_shapes
    std::vector<KnownContainer> m_shapes;
    std::unordered_map<const void*, std::uint32_t> m_longBytes;
};

}  // namespace

std::optional<BinaryObjects> collectBinaryObjects(const Value& value) { return Collector().collect(value); }

}  // namespace kpx
