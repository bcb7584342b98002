#include "view/RecentPaths.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(RecentPaths, KeepTheLastEightPaths)
{
    RecentPaths recent;
    for (const char* path : {"a", "b", "c", "d", "e", "f", "g", "h", "c", "C"}) recent.add(path);
    const std::vector<std::string> kept{"C", "c", "h", "g",
                                        "f", "e", "d", "b"};   // moved, not repeated; the oldest dropped
    EXPECT_EQ(recent.entries(), kept);
}

TEST(RecentPaths, LongNamesAreShortenedAtASeparator)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"server and share stay", "\\\\server\\share\\models\\tower.thf",
         "\\\\server\\share\\...\\tower.thf"},
        {"the file name is never cut", "C:\\d\\a_very_long_file_name_indeed.dxf",
         "C:\\...\\a_very_long_file_name_indeed.dxf"},
        {"as much of the end as fits", "/models/a/b/tower.thf", "/.../a/b/tower.thf"},
        {"characters count, not bytes", "C:\\äöüäöüä\\tower.thf", "C:\\äöüäöüä\\tower.thf"},
        {"those beyond 16 bits twice", "C:\\\U0001F600\U0001F600\U0001F600\U0001F600\\tower.thf",
         "C:\\...\\tower.thf"},
    };
    for (const auto& [why, path, shown] : cases) EXPECT_EQ(displayName(path), shown) << why;
}

TEST(RecentPaths, MenuTextsBeginWithAnAccessDigit)
{
    RecentPaths recent;
    recent.add("C:\\R&D\\b.thf");
    recent.add(std::string(600, 'x'));
    EXPECT_EQ(recent.menuText(0), "&1 " + std::string(500, 'x'));
    EXPECT_EQ(recent.menuText(1), "&2 C:\\R&&D\\b.thf");
}
