#include "platform/Processors.h"

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
