#include "account/Account.h"

#include <gtest/gtest.h>

using namespace belvor;

namespace {

TEST(Account, UnreadableTypesShareOneRow)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"a plain type", "3DFACE", "3DFACE"},
        {"with an underscore", "ACAD_TABLE", "ACAD_TABLE"},
        {"lower case", "line", "?"},
        {"one character", "A", "?"},
        {"empty", "", "?"},
        {"a blank inside", "3D FACE", "?"},
        {"bytes of a number", std::string("\x40\x10\0\x7f", 4), "?"},
        {"64 characters", std::string(64, 'A'), std::string(64, 'A')},
        {"65 characters", std::string(65, 'A'), "?"},
    };
    for (const auto& [why, type, row] : cases) {
        Account account;
        account.entity(type).read = 7;
        EXPECT_EQ(account.entities.begin()->first, row) << why;
        EXPECT_EQ(account.read(), 7u) << why;
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
