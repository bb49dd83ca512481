#pragma once

#include "values/Record.h"

#include <cstddef>
#include <string_view>

namespace kpx {

/// Finds one key in many records: records of one file hold their fields in the same places and share the texts of
/// their keys, so it looks first where the last record had it. Showing a filtered history of 10,000 fills takes 8.2 ms
/// with it and 8.8 ms with Record::find(), sorting it by a text 0.56 and 0.62 ms (bench/history).
///
/// Not for two threads at once: it remembers that place.
class FieldFinder {
public:
    explicit FieldFinder(std::string_view key) : m_key(key) {}

    /// As Record::find(): null when absent.
    const Value* in(const Record& record) const {
        const Record::Field* const fields = record.begin();
        if (m_place < record.size() && fields[m_place].first == m_key) {
            return &fields[m_place].second;
        }
        return search(record);
    }

    /// The value when it is a text, as Record::text() but without a copy.
    const Text* textIn(const Record& record) const {
        const Value* value = in(record);
        return value ? value->as<Text>() : nullptr;
    }

private:
    const Value* search(const Record& record) const;

    mutable Text m_key;  // the very text of the latest record, so that most comparisons are of its address
    mutable std::size_t m_place = 0;
};

}  // namespace kpx
