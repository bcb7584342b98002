#include "platform/Processors.h"
#include "platform/ControlGroups.h"

#include <gtest/gtest.h>

using namespace belvor;

TEST(Processors, QuotaOfAControlGroupIsRoundedUp)
{
    const struct {
        const char* text;
        unsigned processors;
    } cases[] = {
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
    for (const auto& c : cases) EXPECT_EQ(processorsGranted(c.text), c.processors) << c.text;
}

TEST(Processors, AtLeastOneIsUsable) { EXPECT_GE(usableProcessors(), 1u); }

TEST(ControlGroups, LeadFromTheOwnOneUpToTheRoot)
{
    using Folders = std::vector<std::string>;
    const struct {
        const char* groups;
        const char* controller;
        Folders folders;
    } cases[] = {
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
    for (const auto& c : cases) EXPECT_EQ(controlGroupFolders(c.groups, c.controller), c.folders) << c.groups;
}
