#include "plist/PropertyListFields.h"

#include <algorithm>

namespace kpx {
namespace {

bool hasRepeatedKey(const Record& fields) {
    constexpr std::size_t fewFields = 24;
    if (fields.size() <= fewFields) {
        for (std::size_t index = 1; index < fields.size(); ++index) {
            const auto* const earlier = fields.begin() + index;
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

Record recordKeepingLastValues(Record fields) {
    if (!hasRepeatedKey(fields)) {
        return fields;
    }
    std::unordered_map<std::string_view, std::size_t> places;
    std::vector<const Record::Field*> last;
    for (const Record::Field& field : fields) {
        const auto [place, isNew] = places.try_emplace(field.first.view(), last.size());
        if (isNew) {
            last.push_back(&field);
        } else {
            last[place->second] = &field;
        }
    }
    Record kept;
    kept.reserve(last.size());
    for (const Record::Field* field : last) {
        kept.append(field->first, field->second);
    }
    return kept;
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
