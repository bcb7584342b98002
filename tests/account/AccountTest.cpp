#include "account/Account.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

TEST(Account, UnreadableTypesShareOneRow)
{
    const std::pair<std::string, bool> cases[] = {{"ACAD_TABLE", true},
                                                  {std::string(64, 'A'), true},
                                                  {"line", false},
                                                  {"A", false},
                                                  {"", false},
                                                  {"3D FACE", false},
                                                  {std::string("\x40\x10\0\x7f", 4), false},
                                                  {std::string(65, 'A'), false}};
    for (const auto& [type, readable] : cases) {
        Account account;
        account.entity(type).read = 7;
        EXPECT_EQ(account.entities.begin()->first, readable ? type : "?");
        EXPECT_EQ(account.read(), 7u) << type;
    }
}

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
