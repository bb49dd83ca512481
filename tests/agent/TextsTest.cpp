#include "agent/Autostart.h"
#include "agent/NotificationServer.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace kpx {
namespace {

TEST(NotificationBody, IsShownPlainly) {
    struct Row {
        std::string text;
        bool markup;
        std::string body;
    };
    const std::vector<Row> rows = {
        {"Prescription: A\r for patient: B\r is due", true, "Prescription: A\n for patient: B\n is due"},
        {"one\r\ntwo\nthree", true, "one\ntwo\nthree"},
        {"<b>a & b</b> \"q\"", true, "&lt;b&gt;a &amp; b&lt;/b&gt; &quot;q&quot;"},
        {"<b>a & b</b>", false, "<b>a & b</b>"},
        {"&amp;", true, "&amp;amp;"},
        {std::string("a\0b\x1b[c\td", 8), false,
         "a\xEF\xBF\xBD"
         "b\xEF\xBF\xBD[c\xEF\xBF\xBD"
         "d"},
        {"\xD7\xA9\xD7\x9C\xE2\x80\xAE", true, "\xD7\xA9\xD7\x9C\xE2\x80\xAE"},
        {std::string(10240, 'x'), true, std::string(10240, 'x')},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text.substr(0, 40));
        EXPECT_EQ(notificationBody(row.text, row.markup).toStdString(), row.body);
    }
    EXPECT_EQ(notificationBody("Zinc\r due", true, true).toStdString(), "\xE2\x80\x8FZinc\n\xE2\x80\x8F due");
    EXPECT_TRUE(notificationBody("a\xED\xA0\x80z", true).isValidUtf16()) << "half a surrogate pair";
}

TEST(AutostartEntry, StartsTheProgramWhateverItsFolderIsCalled) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"/usr/bin/v", "\nTryExec=/usr/bin/v\nExec=\"/usr/bin/v\" --if-any\n"},
        {"/home/an na/b/v", "\nTryExec=/home/an na/b/v\nExec=\"/home/an na/b/v\" --if-any\n"},
        {"/opt/100%/v", "\nTryExec=/opt/100%/v\nExec=/usr/bin/env \"/opt/100%%/v\" --if-any\n"},
        {"/opt/$a`'/v", "\nTryExec=/opt/$a`'/v\nExec=\"/opt/\\\\$a\\\\`'/v\" --if-any\n"},
        {"/opt/a\\\"/v", "\nTryExec=/opt/a\\\\\"/v\nExec=\"/opt/a\\\\\\\\\\\\\"/v\" --if-any\n"},
    };
    for (const auto& [program, lines] : rows) {
        SCOPED_TRACE(program);
        EXPECT_NE(autostartEntry(program, "").find(lines), std::string::npos) << autostartEntry(program, "");
    }
}

TEST(AutostartEntry, HasItsNameInEachLanguage) {
    const test::TemporaryFolder resources;
    const auto write = [&](const char* folder, const char* table) {
        std::filesystem::create_directories(resources.path() / folder);
        test::writeFile(resources.path() / folder / "Localizable.strings", table);
    };
    write("de.lproj", "\"Velmora Reminders\" = \"Velmora-Erinnerungen\";");
    write("ar.lproj", "\"Velmora Reminders\" = \"تذكيرات\";");
    write("nl.lproj", "\"All\" = \"Alle\";");
    write("old.backup", "\"Velmora Reminders\" = \"Velmora 0\";");
    const std::string entry = autostartEntry("/usr/bin/v", resources.path());
    const std::string names = "\nName=Velmora Reminders\nName[ar]=تذكيرات\nName[de]=Velmora-Erinnerungen\nTryExec=";
    EXPECT_NE(entry.find(names), std::string::npos) << entry;
}

}  // namespace
}  // namespace kpx
