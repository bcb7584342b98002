#include "platform/Processors.h"
#include "platform/ControlGroups.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(Processors, TheQuotaOfAControlGroupIsRoundedUp)
{
    const std::tuple<const char*, unsigned> cases[] = {
        {"max 100000", 0},
        {"200000 100000", 2},
        {"150000 100000\n", 2},
        {"50000 100000", 1},
        {"1 1000000", 1},
        {"-1 100000", 0},   // no limit, as the older files write it
        {"0 100000", 0},
        {"100000 0", 0},
        {"100000", 0},
        {"100000 1000x", 0},
        {" ", 0},
        {"", 0},
        {"18446744073709551615 1", 1u << 20},
    };
    for (const auto& [text, processors] : cases) EXPECT_EQ(processorsGranted(text), processors) << text;
}

TEST(Processors, AtLeastOneIsUsable) { EXPECT_GE(usableProcessors(), 1u); }

TEST(ControlGroups, FoldersAreListedFromTheOwnGroupUpToTheRoot)
{
    using Folders = std::vector<std::string>;
    const std::tuple<const char*, const char*, Folders> cases[] = {
        {"0::/", "", {"/sys/fs/cgroup"}},
        {"0::/user/job.scope\n",
         "",
         {"/sys/fs/cgroup/user/job.scope", "/sys/fs/cgroup/user", "/sys/fs/cgroup"}},
        {"5:memory:/box\n4:cpu,cpuacct:/a/b\n0::/c\n",
         "cpu",
         {"/sys/fs/cgroup/cpu/a/b", "/sys/fs/cgroup/cpu/a", "/sys/fs/cgroup/cpu"}},
        {"5:memory:/box\n4:cpu,cpuacct:/a/b\n0::/c\n",
         "memory",
         {"/sys/fs/cgroup/memory/box", "/sys/fs/cgroup/memory"}},
        {"5:memory:/box\n", "", {"/sys/fs/cgroup"}},
        {"4:cpuset:/x", "cpu", {"/sys/fs/cgroup/cpu"}},
        {"nonsense", "", {"/sys/fs/cgroup"}},
        {"", "memory", {"/sys/fs/cgroup/memory"}},
    };
    for (const auto& [groups, controller, folders] : cases)
        EXPECT_EQ(controlGroupFolders(groups, controller), folders) << groups;
}
