#include "tests/runner/Commands.h"

#include <array>
#include <sstream>

namespace kpx::runner {

namespace {

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

/// Whether a quoted word can stand where the command says a certain word. It counts as a text first:
/// `site "down"` is what the site answers, while `appearance "dark"` can only mean `appearance dark`.
enum class Quoted { IsText, IsWord };

bool isFixed(const std::string& placeholder) { return placeholder.front() >= 'a' && placeholder.front() <= 'z'; }

bool fits(const Word& word, const std::string& placeholder, Quoted quoted, const test::LocalTime& localTime) {
    if (placeholder == "INTEGER") {
        return integerFromWord(word.text).has_value();
    }
    if (placeholder == "SECONDS") {
        return numberFromWord(word.text).value_or(-1) >= 0;
    }
    if (placeholder == "DATE") {
        return localTime.parse(word.text).has_value();
    }
    if (isFixed(placeholder)) {
        for (const std::string& fixed : split(placeholder, '|')) {
            if ((!word.quoted || quoted == Quoted::IsWord) && word.text == fixed) {
                return true;
            }
        }
        return false;
    }
    return true;
}

bool fits(const Words& words, const std::vector<std::string>& placeholders, Quoted quoted,
          const test::LocalTime& localTime) {
    const bool open = placeholders.back() == "...";
    const std::size_t count = placeholders.size() - (open ? 1 : 0);
    if (words.size() < count || (words.size() > count && !open)) {
        return false;
    }
    for (std::size_t index = 0; index < count; ++index) {
        if (!fits(words[index], placeholders[index], quoted, localTime)) {
            return false;
        }
    }
    return true;
}

/// The forms of the command that the words begin with.
std::vector<const CommandForm*> formsOf(const Word& name) {
    std::vector<const CommandForm*> found;
    for (const auto* forms : {&platformCommands(), &controlCommands(), &tableCommands(), &questionCommands()}) {
        for (const CommandForm& form : *forms) {
            if (split(form.usage, ' ').front() == name.text) {
                found.push_back(&form);
            }
        }
    }
    return found;
}

}  // namespace

std::variant<Command, ScriptError> parseCommand(const Words& words, const test::LocalTime& localTime) {
    const std::vector<const CommandForm*> forms = formsOf(words.front());
    for (const Quoted quoted : {Quoted::IsText, Quoted::IsWord}) {
        for (const CommandForm* form : forms) {
            if (fits(words, split(form->usage, ' '), quoted, localTime)) {
                return Command{form, Words(words.begin() + 1, words.end())};
            }
        }
    }
    std::string usages;
    for (const CommandForm* form : forms) {
        usages += (usages.empty() ? "expected: " : " or: ") + form->usage;
    }
    return ScriptError{usages.empty() ? "unknown command: " + words.front().text : usages};
}

Json runCommand(Session& session, const Command& command) {
    const When when = command.form->when;
    if (session.hasTerminated() && when != When::Always) {
        return refused("the application has terminated");
    }
    if (!session.hasStarted() && when == When::Running) {
        return refused("the application has not started");
    }
    Json result = command.form->run(session, command.arguments);
    if (session.hasTerminated()) {
        session.platform.clock.stop();
    } else {
        session.platform.clock.runDue();
    }
    return result;
}

}  // namespace kpx::runner
