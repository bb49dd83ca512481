#include "region/LocalizedStrings.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>
#include <vector>

namespace kpx::test {
namespace {

namespace fs = std::filesystem;

TEST(LocalizedStrings, StandInEnglishWhereNoTableCanBeRead) {
    struct Row {
        const char* name;
        std::function<void(const fs::path& table)> make;
        const char* all;
    };
    const std::vector<Row> rows = {
        {"a table", [](const fs::path& table) { writeFile(table, "\"All\" = \"Alle\";"); }, "Alle"},
        {"none", [](const fs::path&) {}, "All"},
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
