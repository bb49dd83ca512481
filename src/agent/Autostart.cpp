#include "agent/Autostart.h"

#include "files/FileReplacement.h"
#include "files/WholeFile.h"
#include "region/LocalizedStrings.h"
#include "reminders/Names.h"

#include <QFile>
#include <QStandardPaths>

#include <system_error>

namespace kpx {

namespace {

/// As a string of a desktop entry.
std::string asString(std::string_view value) {
    std::string text;
    for (const char character : value) {
        text.append(character == '\\' ? 2 : 1, character);
    }
    return text;
}

/// What such a string says.
std::string meantBy(std::string_view text) {
    std::string value;
    for (std::size_t place = 0; place < text.size(); ++place) {
        place += text.substr(place, 2) == "\\\\" ? 1 : 0;
        value += text[place];
    }
    return value;
}

/// As a desktop entry's Exec key wants it: in double quotes, with a backslash before the four characters that
/// mean something there. Desktops look for the program before they read a doubled percent sign as one, but leave an
/// argument alone.
std::string inExec(std::string_view program) {
    std::string text = program.find('%') == std::string_view::npos ? "\"" : "/usr/bin/env \"";
    for (const char character : program) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) {
            text += '\\';
        }
        text.append(character == '%' ? 2 : 1, character);
    }
    return text + '"';
}

constexpr std::string_view ifThere = "\nTryExec=";

std::string linesOf(const std::filesystem::path& program) {
    return std::string(ifThere) + asString(program.string()) + "\nExec=" + asString(inExec(program.string())) +
           " --if-any\n";
}

bool isGone(const std::filesystem::path& program) {
    std::error_code error;
    return !std::filesystem::exists(program, error) && !error;
}

/// The entry of an agent that has gone since, with the folder where it was built or with its package, starts nothing,
/// nor does it let an installed entry do so.
void renew(const std::filesystem::path& own, const std::filesystem::path& program) {
    constexpr std::size_t longest = 100'000;
    std::string entry = readWholeFile(own, longest).bytes;
    const std::size_t place = entry.find(ifThere);
    if (place == std::string::npos) {
        return;
    }
    const std::size_t start = place + ifThere.size();
    const std::filesystem::path former = meantBy(entry.substr(start, entry.find('\n', start) - start));
    const std::string lines = linesOf(former);
    if (entry.compare(place, lines.size(), lines) == 0 && former.filename() == program.filename() && isGone(former)) {
        static_cast<void>(replaceFile(own, entry.replace(place, lines.size(), linesOf(program))));
    }
}

}  // namespace

std::string autostartEntry(const std::filesystem::path& program, const std::filesystem::path& resources) {
    constexpr auto name = localizable("Velmora Reminders");
    std::string names = std::string("Name=") + name;
    for (const auto& [language, translation] : translationsOf(name, resources)) {
        names.append("\nName[").append(language).append("]=").append(translation);
    }
    return "[Desktop Entry]\nType=Application\n" + names + linesOf(program) + "Icon=" + applicationName +
           "\nNoDisplay=true\nTerminal=false\n";
}

void startAtLogin(const std::filesystem::path& program, const std::filesystem::path& resources,
                  const std::filesystem::path& scheduleFolder) {
    const QString name = QStringLiteral("autostart/") + QLatin1String(agentName) + QStringLiteral(".desktop");
    const std::filesystem::path own =
        std::filesystem::path(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation).toStdString()) /
        name.toStdString();
    renew(own, program);
    const std::filesystem::path mark = scheduleFolder / "autostart";
    std::error_code error;
    if (std::filesystem::exists(mark, error)) {
        return;  // nor is the mark made anew: who watches the folder would be woken
    }
    // A mark that cannot be written now is written at the next look into the folder.
    if (std::filesystem::exists(std::filesystem::symlink_status(own, error))) {
        static_cast<void>(replaceFile(mark, ""));
        return;
    }
    if (!QStandardPaths::locate(QStandardPaths::ConfigLocation, name).isEmpty()) {
        return;
    }
    std::filesystem::create_directories(own.parent_path(), error);
    if (replaceFile(own, autostartEntry(program, resources))) {
        static_cast<void>(replaceFile(mark, ""));
    }
}

}  // namespace kpx
