// kpx_scenario [FILE]: runs the whole application without a toolkit, driven by a script.
//
// The script comes from FILE or standard input, a command a line; each prints the events that it
// caused and then one result line, as JSON, and is flushed. A FILE that cannot be parsed is not run at
// all; from standard input, the lines before the faulty one are. Either ends with status 2 and says on
// standard error what is wrong.
//
// The surroundings are taken from the environment and from nowhere else: the data folder lies in
// XDG_DATA_HOME, preferences below XDG_CONFIG_HOME (without them there are none), TZ, LC_ALL
// and the other variables of a locale say where the user is.

#include "tests/runner/Commands.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace kpx;
using namespace kpx::runner;

constexpr int cannotBeParsed = 2;

test::Surroundings surroundingsFromEnvironment() {
    return {regionSettings(variableOfProcess), variableOfProcess("XDG_DATA_HOME").value_or(""),
            variableOfProcess("XDG_CONFIG_HOME").value_or("")};
}

void print(const Json& json) { std::cout << test::toLine(json) << '\n' << std::flush; }

/// The command of a line, none for a line without one.
struct ParsedLine {
    std::optional<Command> command;
    std::optional<std::string> error;
};

ParsedLine parseLine(const std::string& line, const test::LocalTime& localTime) {
    const auto words = splitLine(line);
    if (const auto* error = std::get_if<ScriptError>(&words)) {
        return {{}, error->message};
    }
    if (std::get<Words>(words).empty()) {
        return {};
    }
    const auto command = parseCommand(std::get<Words>(words), localTime);
    if (const auto* error = std::get_if<ScriptError>(&command)) {
        return {{}, error->message};
    }
    return {std::get<Command>(command), {}};
}

int reportUnparsed(int lineNumber, const std::string& error) {
    std::cerr << "line " << lineNumber << ": " << error << '\n';
    return cannotBeParsed;
}

int runFile(Session& session, std::istream& script) {
    std::vector<Command> commands;
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        ParsedLine parsed = parseLine(line, session.platform.localTime);
        if (parsed.error) {
            return reportUnparsed(number, *parsed.error);
        }
        if (parsed.command) {
            commands.push_back(std::move(*parsed.command));
        }
    }
    for (const Command& command : commands) {
        print(runCommand(session, command));
    }
    return 0;
}

int runConversation(Session& session) {
    std::string line;
    for (int number = 1; std::getline(std::cin, line); ++number) {
        const ParsedLine parsed = parseLine(line, session.platform.localTime);
        if (parsed.error) {
            return reportUnparsed(number, *parsed.error);
        }
        if (parsed.command) {
            print(runCommand(session, *parsed.command));
        }
    }
    return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount > 2) {
        std::cerr << "usage: kpx_scenario [FILE]\n";
        return cannotBeParsed;
    }
    Session session(surroundingsFromEnvironment(), print);
    if (argumentCount < 2) {
        return runConversation(session);
    }
    std::ifstream script(arguments[1]);
    if (!script) {
        std::cerr << "cannot read " << arguments[1] << '\n';
        return cannotBeParsed;
    }
    return runFile(session, script);
}
