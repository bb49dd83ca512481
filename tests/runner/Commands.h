#pragma once

#include "tests/runner/Session.h"

#include <string>
#include <variant>
#include <vector>

namespace kpx::runner {

/// When a command can be given.
enum class When {
    Always,       ///< also before the start and after the end
    UntilTheEnd,  ///< also before the start
    Running,
};

/// One way to write a command, and what it does.
struct CommandForm {
    /// The command's name, then its words:
    ///
    ///     NAME TEXT BUTTON …    any word      INTEGER   a whole number      on|off   one of these, not quoted
    ///     SECONDS   a number, not negative    DATE      a date of scripts   ...      any further words
    std::string usage;
    When when;
    Json (*run)(Session& session, const Words& arguments);
};

/// A line that could be parsed.
struct Command {
    const CommandForm* form = nullptr;
    /// Without the command's name; of fixed words, the one written.
    Words arguments;
};

/// REQUIRES: words is not empty.
std::variant<Command, ScriptError> parseCommand(const Words& words, const test::LocalTime& localTime);

/// Carries the command out, with what is due right after it, and answers with its result line.
Json runCommand(Session& session, const Command& command);

// The forms, by what they act on. Of two forms that a line fits, the first counts.
const std::vector<CommandForm>& platformCommands();
const std::vector<CommandForm>& controlCommands();
const std::vector<CommandForm>& tableCommands();
const std::vector<CommandForm>& questionCommands();

/// The state of the control of that name, as `show` answers.
Json showControl(Session& session, const std::string& name);
/// A stateless operation by name.
Json callOperation(Session& session, const Words& words);

}  // namespace kpx::runner
