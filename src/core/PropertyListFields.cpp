#include "core/PropertyListFields.h"

#include <algorithm>

namespace kpx {
namespace {

bool hasRepeatedKey(const Record::Fields& fields) {
    constexpr std::size_t fewFields = 24;
    if (fields.size() <= fewFields) {
        for (std::size_t index = 1; index < fields.size(); ++index) {
            const auto earlier = fields.begin() + static_cast<std::ptrdiff_t>(index);
            if (std::find_if(fields.begin(), earlier,
                             [&](const Record::Field& field) { return field.first == earlier->first; }) != earlier) {
                return true;
            }
        }
        return false;
    }
    std::vector<std::string_view> keys;
    keys.reserve(fields.size());
    for (const Record::Field& field : fields) {
        keys.push_back(field.first.view());
    }
    std::sort(keys.begin(), keys.end());
    return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

}  // namespace

Record recordKeepingLastValues(Record::Fields fields) {
    if (!hasRepeatedKey(fields)) {
        return Record(std::move(fields));
    }
    std::unordered_map<std::string_view, std::size_t> places;
    Record::Fields kept;
    for (const Record::Field& field : fields) {
        const auto [place, isNew] = places.try_emplace(field.first.view(), kept.size());
        if (isNew) {
            kept.push_back(field);
        } else {
            kept[place->second].second = field.second;
        }
    }
    return Record(std::move(kept));
}

Text TextPool::shared(std::string_view text) {
    if (const auto known = m_texts.find(text); known != m_texts.end()) {
        return known->second;
    }
    Text added(text);
    m_texts.emplace(added.view(), added);
    return added;
}

}  // namespace kpx
