#include "core/BinaryPropertyListObjects.h"

#include "core/PropertyListLimits.h"
#include "core/PropertyListUnicode.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace kpx {
namespace {

using Kind = BinaryObject::Kind;

constexpr std::size_t maximumCount = std::numeric_limits<std::uint32_t>::max();

constexpr std::uint64_t mix(std::uint64_t bits) {
    bits = (bits ^ (bits >> 32)) * 0x9E3779B97F4A7C15U;
    return bits ^ (bits >> 29);
}

/// A set of object numbers with open addressing. Equality is the caller's.
class ObjectTable {
public:
    /// The object with this hash that `isSame` accepts, or the empty place to put it.
    template <typename IsSame>
    std::uint64_t& find(std::uint64_t hash, const IsSame& isSame) {
        if (2 * m_used >= m_slots.size()) {
            grow();
        }
        const std::uint64_t tag = hash & tagMask;
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t index = hash & mask;; index = (index + 1) & mask) {
            std::uint64_t& slot = m_slots[index];
            if (slot == empty || ((slot & tagMask) == tag && isSame(static_cast<std::uint32_t>(slot >> 32)))) {
                return slot;
            }
        }
    }

    static bool isEmpty(std::uint64_t slot) { return slot == empty; }
    static std::uint32_t object(std::uint64_t slot) { return static_cast<std::uint32_t>(slot >> 32); }

    /// REQUIRES: `slot` is the place find() gave for the hash, and nothing was added since.
    void add(std::uint64_t& slot, std::uint64_t hash, std::uint32_t number) {
        slot = std::uint64_t{number} << 32 | (hash & tagMask);
        ++m_used;
    }

private:
    static constexpr std::uint64_t tagMask = 0xFFFFFFFFU;
    static constexpr std::uint64_t empty = ~std::uint64_t{0};

    void grow() {
        std::vector<std::uint64_t> old(std::max<std::size_t>(1024, 2 * m_slots.size()), empty);
        old.swap(m_slots);
        const std::size_t mask = m_slots.size() - 1;
        for (const std::uint64_t slot : old) {
            if (slot == empty) {
                continue;
            }
            // The low half of the hash is all there is: enough, for there are fewer objects than 2^32.
            std::size_t index = slot & tagMask & mask;
            while (m_slots[index] != empty) {
                index = (index + 1) & mask;
            }
            m_slots[index] = slot;
        }
    }

    std::vector<std::uint64_t> m_slots;
    std::size_t m_used = 0;
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
        return std::visit([&](const auto& content) { return addContent(content, depth, shape); }, value.variant());
    }

    bool addContent(const Text& text, std::uint32_t, Shape& shape) {
        return addBytes(text.view(), &text.string(), Kind::asciiText, shape);
    }
    bool addContent(const Data& data, std::uint32_t, Shape& shape) {
        const Data::Bytes& bytes = data.bytes();
        return addBytes({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, &bytes, Kind::data, shape);
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
        const std::uint64_t hash = mix(bits + static_cast<std::uint64_t>(kind) * 0x632BE59BD9B4E019U);
        std::uint64_t& slot = m_scalars.find(hash, [&](std::uint32_t number) {
            const BinaryObject& object = m_result.objects[number];
            return object.content == bits && object.kind == kind;
        });
        return addUnlessKnown(m_scalars, slot, hash, {bits, 0, kind}, shape);
    }

    bool addUnlessKnown(ObjectTable& table, std::uint64_t& slot, std::uint64_t hash, BinaryObject object,
                        Shape& shape) {
        if (!ObjectTable::isEmpty(slot)) {
            shape.object = ObjectTable::object(slot);
            return true;
        }
        if (isFull()) {
            return false;
        }
        shape.object = nextNumber();
        table.add(slot, hash, shape.object);
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

    /// A text or data. A long one is looked up by its address first: bytes shared by very many places
    /// would otherwise be hashed at each of them.
    bool addBytes(std::string_view bytes, const void* owner, Kind kind, Shape& shape) {
        constexpr std::size_t fewBytes = 64;
        const auto address = reinterpret_cast<std::uint64_t>(owner);
        if (bytes.size() <= fewBytes) {
            return addDistinctBytes(bytes, address, kind, shape);
        }
        if (const auto known = m_longBytes.find(owner); known != m_longBytes.end()) {
            shape.object = known->second;
            return true;
        }
        if (!addDistinctBytes(bytes, address, kind, shape)) {
            return false;
        }
        m_longBytes.emplace(owner, shape.object);
        return true;
    }

    bool addDistinctBytes(std::string_view bytes, std::uint64_t address, Kind kind, Shape& shape) {
        if (bytes.size() > maximumCount) {
            return false;
        }
        const bool isData = kind == Kind::data;
        const std::uint64_t hash = mix(std::hash<std::string_view>()(bytes) + (isData ? 1 : 0));
        std::uint64_t& slot = m_bytes.find(hash, [&](std::uint32_t number) {
            const BinaryObject& object = m_result.objects[number];
            return (object.kind == Kind::data) == isData && (object.content == address || bytesOf(object) == bytes);
        });
        if (!ObjectTable::isEmpty(slot)) {
            shape.object = ObjectTable::object(slot);
            return true;
        }
        auto count = static_cast<std::uint32_t>(bytes.size());
        if (!isData && !isAscii(bytes)) {
            kind = Kind::utf16Text;
            count = static_cast<std::uint32_t>(utf16Length(bytes));
        }
        return addUnlessKnown(m_bytes, slot, hash, {address, count, kind}, shape);
    }

    /// Containers that share their content have the same first element.
    bool addContent(const Array& array, std::uint32_t depth, Shape& shape) {
        const std::vector<Value>& values = array.values();
        return addContainer(values.data(), values.size(), values.size(), Kind::array, depth, shape, [&](Shape& own) {
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
        const void* identity = record.empty() ? nullptr : &*record.begin();
        return addContainer(identity, size, 2 * size, Kind::dictionary, depth, shape, [&](Shape& own) {
            const std::uint64_t first = m_result.objects[own.object].content;
            std::uint64_t place = first;
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
        const std::uint64_t hash = mix(reinterpret_cast<std::uint64_t>(identity) >> 4);
        if (identity) {
            const std::uint64_t slot =
                m_containers.find(hash, [&](std::uint32_t index) { return m_shapes[index].identity == identity; });
            if (!ObjectTable::isEmpty(slot)) {
                shape = m_shapes[ObjectTable::object(slot)].shape;
                return true;
            }
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
            std::uint64_t& slot = m_containers.find(hash, [](std::uint32_t) { return false; });
            m_containers.add(slot, hash, static_cast<std::uint32_t>(m_shapes.size()));
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
    ObjectTable m_scalars;
    ObjectTable m_bytes;
    ObjectTable m_containers;  // numbers of m_shapes
    std::vector<KnownContainer> m_shapes;
    std::unordered_map<const void*, std::uint32_t> m_longBytes;
};

}  // namespace

std::optional<BinaryObjects> collectBinaryObjects(const Value& value) { return Collector().collect(value); }

}  // namespace kpx
