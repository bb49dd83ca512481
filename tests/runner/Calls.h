#pragma once

#include "region/Environment.h"
#include "tests/runner/Script.h"
#include "tests/support/Json.h"
#include "values/Record.h"

#include <limits>
#include <string>
#include <vector>

namespace kpx::runner {

using test::Json;

/// The arguments of a call. One that does not read as what is asked of it leaves an error behind, and
/// the call's value is then not used.
class Arguments {
public:
    Arguments(const Words& words, const test::LocalTime& localTime) : m_words(words), m_localTime(localTime) {}

    std::size_t count() const { return m_words.size(); }
    const std::string& text(std::size_t index) const { return m_words[index].text; }
    int integer(std::size_t index);
    double number(std::size_t index);
    bool yesOrNo(std::size_t index);
    Date date(std::size_t index);
    Records records(std::size_t index);
    Json json(std::size_t index);

    void fail(const std::string& error) { m_error = error; }
    const std::optional<std::string>& error() const { return m_error; }
    const test::LocalTime& localTime() const { return m_localTime; }

private:
    template <typename Kind>
    Kind required(std::optional<Kind> value, std::size_t index, const char* what);

    const Words& m_words;
    const test::LocalTime& m_localTime;
    std::optional<std::string> m_error;
};

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// A stateless operation under its name.
struct Operation {
    const char* name;
    std::size_t fewestArguments;
    std::size_t mostArguments;
    Json (*call)(Arguments& arguments, const Environment& environment);
};

const std::vector<Operation>& dateOperations();
const std::vector<Operation>& textAndNumberOperations();
const std::vector<Operation>& recordOperations();

}  // namespace kpx::runner
