#include "account/Account.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

TEST(Account, AHostileFileIsCountedInBoundedMemory)
{
    Account account;
    for (int i = 0; i < 5000; ++i) {
        EntityCount& count = account.entity("TYPE" + std::to_string(i));
        ++count.read;
        ++count.skippedFor(SkipReason::typeNotDrawn);
        account.repair(i, "LINE", "left out");
        account.warn("the file ends early");
    }
    EXPECT_LE(account.entities.size(), Account::maxTypes + 1);
    EXPECT_EQ(account.read(), 5000u);
    EXPECT_EQ(account.skipped(), 5000u);
    EXPECT_EQ(account.repairCount, 5000u);
    ASSERT_EQ(account.repairs.size(), Account::maxRepairs);
    EXPECT_EQ(account.repairs.back().position, 999);
    EXPECT_EQ(account.warnings.size(), 1u);
}

}   // namespace
