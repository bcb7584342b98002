#include "app/state/RecentPaths.h"

#include <gtest/gtest.h>

namespace belvor {

TEST(RecentPaths, KeepTheEightOpenedLast)
{
    RecentPaths recent;
    for (const char* path : {"a", "b", "c", "d", "e", "f", "g", "h"}) recent.add(path);
    recent.add("c");
    EXPECT_EQ(recent.entries(), (std::vector<std::string>{"c", "h", "g", "f", "e", "d", "b", "a"})) << "moved, not repeated";
    recent.add("C");
    EXPECT_EQ(recent.entries(), (std::vector<std::string>{"C", "c", "h", "g", "f", "e", "d", "b"})) << "the oldest dropped";
}

TEST(RecentPaths, ShortenNamesAtASeparator)
{
    const struct { const char *why, *path, *shown; } cases[] = {
        {"short", "C:\\a\\b.thf", "C:\\a\\b.thf"},
        {"19 characters", "C:\\models\\tower.thf", "C:\\models\\tower.thf"},
        {"one folder too many", "C:\\models\\bridges\\tower.thf", "C:\\...\\tower.thf"},
        {"several folders", "C:\\m\\x\\y\\bridges\\tower.thf", "C:\\...\\tower.thf"},
        {"server and share stay", "\\\\server\\share\\models\\tower.thf", "\\\\server\\share\\...\\tower.thf"},
        {"nothing to cut", "C:\\a_very_long_file_name_indeed.dxf", "C:\\a_very_long_file_name_indeed.dxf"},
        {"the file name is never cut", "C:\\d\\a_very_long_file_name_indeed.dxf", "C:\\...\\a_very_long_file_name_indeed.dxf"},
        {"a relative path", "models/sub/other/tower.thf", ".../other/tower.thf"},
        {"as much of the end as fits", "/models/a/b/tower.thf", "/.../a/b/tower.thf"},
        {"no separator at all", "a_very_long_file_name_indeed.dxf", "a_very_long_file_name_indeed.dxf"},
        {"a share without a file", "\\\\a_long_server_name\\share", "\\\\a_long_server_name\\share"},
    };
    for (const auto& c : cases) EXPECT_EQ(displayName(c.path), c.shown) << c.why;
    const std::string twenty = "C:\\\u00e4\u00f6\u00fc\u00e4\u00f6\u00fc\u00e4\\tower.thf";
    EXPECT_EQ(displayName(twenty), twenty) << "characters count, not bytes";
    EXPECT_EQ(displayName("C:\\\U0001F600\U0001F600\U0001F600\U0001F600\\tower.thf"), "C:\\...\\tower.thf")
        << "a character beyond 16 bits counts twice";
}

TEST(RecentPaths, MenuTextsHaveADigitToPress)
{
    RecentPaths recent;
    recent.add("C:\\R&D\\b.thf");
    recent.add(std::string(600, 'x'));
    EXPECT_EQ(recent.menuText(0), "&1 " + std::string(500, 'x'));
    EXPECT_EQ(recent.menuText(1), "&2 C:\\R&&D\\b.thf");
}

}   // namespace belvor
