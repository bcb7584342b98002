#include "platform/Processors.h"
#include "platform/ControlGroups.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(Processors, TheQuotaOfAControlGroupIsRoundedUp)
{
    using Row = std::pair<const char*, unsigned>;
    for (const auto& [text, processors] : {Row{"200000 100000", 2}, Row{"50000 100000", 1},
                                           Row{"1 1000000", 1}, Row{"18446744073709551615 1", 1u << 20}})
        EXPECT_EQ(processorsGranted(text), processors) << text;
    // No limit, the first two as the newer and the older files write it.
    for (const char* const text :
         {"max 100000", "-1 100000", "0 100000", "100000 0", "100000", "100000 1000x", " ", ""})
        EXPECT_EQ(processorsGranted(text), 0u) << text;
}

TEST(ControlGroups, FoldersAreListedFromTheOwnGroupUpToTheRoot)
{
    const std::string root = "/sys/fs/cgroup";
    const char* const several = "5:memory:/box\n4:cpu,cpuacct:/a/b\n0::/c\n";
    const std::tuple<const char*, const char*, std::vector<std::string>> cases[] = {
        {"0::/user/job.scope\n", "", {root + "/user/job.scope", root + "/user", root}},
        {several, "cpu", {root + "/cpu/a/b", root + "/cpu/a", root + "/cpu"}},
        {several, "memory", {root + "/memory/box", root + "/memory"}},
        {"5:memory:/box\n", "", {root}},
        {"4:cpuset:/x", "cpu", {root + "/cpu"}},
        {"", "memory", {root + "/memory"}},
    };
    for (const auto& [groups, controller, folders] : cases)
        EXPECT_EQ(controlGroupFolders(groups, controller), folders) << groups;
}
