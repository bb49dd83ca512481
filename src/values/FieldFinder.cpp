#include "values/FieldFinder.h"

namespace kpx {

const Value* FieldFinder::search(const Record& record) const {
    std::size_t place = 0;
    for (const auto& [key, value] : record) {
        if (key == m_key) {
            m_key = key;
            m_place = place;
            return &value;
        }
        ++place;
    }
    return nullptr;
}

}  // namespace kpx
