#include "agent/Autostart.h"

#include "files/FileReplacement.h"
#include "region/LocalizedStrings.h"
#include "reminders/Names.h"

#include <QFile>
#include <QStandardPaths>

#include <system_error>

namespace kpx {

namespace {

/// As a desktop entry's Exec key wants it: in double quotes, with a backslash before the four characters that
/// mean something there, and every backslash doubled once more because the value is a string.
std::string quoted(const std::string& program) {
    std::string text = "\"";
    for (const char character : program) {
        switch (character) {
            case '"':
            case '`':
            case '$':
                text += "\\\\";
                break;
            case '\\':
                text += "\\\\\\";
                break;
            case '%':
                text += '%';
                break;
            default:
                break;
        }
        text += character;
    }
    return text + '"';
}

}  // namespace

std::string autostartEntry(const std::filesystem::path& program, const std::filesystem::path& resources) {
    constexpr auto name = localizable("Velmora Reminders");
    std::string names = std::string("Name=") + name + "\n";
    for (const auto& [language, translation] : translationsOf(name, resources)) {
        names.append("Name[").append(language).append("]=").append(translation).append("\n");
    }
    return "[Desktop Entry]\nType=Application\n" + names + "TryExec=" + program.string() +
           "\nExec=" + quoted(program.string()) + " --if-any\nIcon=" + applicationName +
           "\nNoDisplay=true\nTerminal=false\n";
}

void startAtLogin(const std::filesystem::path& program, const std::filesystem::path& resources,
                  const std::filesystem::path& scheduleFolder) {
    const QString name = QStringLiteral("autostart/") + QLatin1String(agentName) + QStringLiteral(".desktop");
    const std::filesystem::path own =
        std::filesystem::path(QStandardPaths::writableLocation(QStandardPaths::ConfigLocation).toStdString()) /
        name.toStdString();
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
