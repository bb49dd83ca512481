#include "plist/BinaryPropertyListObjects.h"

#include "plist/BinaryPropertyListTable.h"
#include "plist/PropertyListLimits.h"
#include "plist/PropertyListUnicode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace kpx {
namespace {

using Kind = BinaryObject::Kind;

constexpr std::size_t maximumCount = std::numeric_limits<std::uint32_t>::max();

/// Texts longer than this are looked up by their addresses first: one shared by very many places would
/// otherwise be hashed at each of them.
constexpr std::size_t fewBytes = 64;

/// The numbers of the texts met lately, by their addresses: most records repeat the keys and the names of the
/// records around them. Writing 10,000 fills takes 3.4 ms with it, 4.4 ms without (bench/property_lists).
class RecentTexts {
public:
    struct Entry {
        const void* address = nullptr;
        std::uint32_t number = 0;
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
        if (recent.address == &string) {
            shape.object = recent.number;
            return true;
        }
        const bool isAdded = string.size() <= fewBytes
                                 ? addBytes(string, &string, Kind::asciiText, hashOfBytes(string), shape)
                                 : addLongBytes(string, &string, Kind::asciiText, shape);
        recent = {&string, shape.object};
        return isAdded;
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
    bool addContent(const WideInteger& wide, std::uint32_t, Shape& shape) {
        const std::uint64_t hash = hashOfNumber(static_cast<std::uint64_t>(wide.high()) ^ hashOfNumber(wide.low()));
        shape.object = m_scalars.find(hash, [&](std::uint32_t number) {
            const BinaryObject& object = m_result.objects[number];
            return object.kind == Kind::wideInteger && *reinterpret_cast<const WideInteger*>(object.content) == wide;
        });
        const auto address = reinterpret_cast<std::uintptr_t>(&wide);
        return shape.object != HashedNumbers::none ||
               addObject(m_scalars, hash, {address, 0, Kind::wideInteger}, shape);
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
            for (std::size_t index = 0; index < values.size(); ++index) {
                if (!addElement(values[index], first + index, depth, own)) {
                    return false;
                }
            }
            return true;
        });
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
        const std::uint64_t hash = hashOfNumber(reinterpret_cast<std::uintptr_t>(identity));
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
