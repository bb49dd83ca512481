#include "region/LocalizedStrings.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;

/// Of plain letters, with the mark of its order in front.
std::string inUtf16(std::string_view letters) {
    std::string bytes = "\xFF\xFE";
    for (const char letter : letters) {
        bytes += letter;
        bytes += '\0';
    }
    return bytes;
}

TEST(LocalizedStrings, StandInEnglishWhereNoTableCanBeRead) {
    struct Row {
        const char* name;
        std::function<void(const fs::path& table)> make;
        const char* all;
    };
    const std::vector<Row> rows = {
        {"a table", [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\";"); }, "Alle"},
        {"none", [](const fs::path&) {}, "All"},
        {"one in UTF-16", [](const fs::path& table) { writeFile(table, inUtf16("\"All\" = \"Alle\";")); }, "Alle"},
        {"one with a mark in front",
         [](const fs::path& table) { writeFile(table, "\xEF\xBB\xBF\"All\" = \"Alle\";\r\n"); }, "Alle"},
        {"a text twice", [](const fs::path& table) { writeFile(table, "\"All\" = \"Ganz\"; \"All\" = \"Alle\";"); },
         "Alle"},
        {"a comment that never ends", [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\"; /* so"); },
         "All"},
        {"the wide blank of Japanese between entries",
         [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\";\n\u3000\"a\" = \"b\";"); }, "All"},
        {"a wrong escape", [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\"; \"a\" = \"\\Uxy\";"); },
         "All"},
        {"one in Latin-1", [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\"; \"a\" = \"\xE9\";"); },
         "All"},
        {"a damaged one", [](const fs::path& table) { writeFile(table, "\"All\" = \"Al"); }, "All"},
        {"a folder", [](const fs::path& table) { fs::create_directory(table); }, "All"},
        {"a pipe", [](const fs::path& table) { mkfifo(table.c_str(), S_IRWXU); }, "All"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFolder resources;
        fs::create_directory(resources.path() / "de.lproj");
        row.make(resources.path() / "de.lproj" / "Localizable.strings");
        EXPECT_EQ(LocalizedStrings(resources.path(), "de")("All"), row.all);
    }
}

TEST(LocalizedStrings, AskForTheWholeSentenceFirst) {
    const TemporaryFolder resources;
    fs::create_directory(resources.path() / "de.lproj");
    writeFile(resources.path() / "de.lproj" / "Localizable.strings",
              "\"%@ of %ld\" = \"%2$ld mal %1$@\"; \" of \" = \" von \"; \"of %@\" = \"\";");
    const LocalizedStrings german(resources.path(), "de");
    EXPECT_EQ(german.sentence("%@ of %ld", {"Ann", "3"}, "Ann" + german(" of ") + "3"), "3 mal Ann");
    EXPECT_EQ(german.sentence("%@ or %ld", {"Ann", "3"}, "Ann" + german(" of ") + "3"), "Ann von 3");
    // An empty translation is none.
    EXPECT_EQ(german.sentence("of %@", {"Ann"}, "glued"), "glued");
    EXPECT_EQ(LocalizedStrings().sentence("%@ of %ld", {"Ann", "3"}, "glued"), "glued");
    EXPECT_FALSE(german.isEmpty());
    EXPECT_TRUE(LocalizedStrings().isEmpty());
}

}  // namespace
}  // namespace kpx::test
