#pragma once

#include "values/Record.h"

#include <string_view>
#include <unordered_map>

namespace kpx {

/// The record of a dictionary's fields, appended as they stand in a file. A key that occurs twice keeps its
/// first place and its last value.
Record recordKeepingLastValues(Record fields);

/// Gives equal texts the same bytes, for formats that spell a repeated text out each time.
class TextPool {
public:
    Text shared(std::string_view text);

private:
    std::unordered_map<std::string_view, Text> m_texts;  // the keys are the texts' own bytes
};

}  // namespace kpx
