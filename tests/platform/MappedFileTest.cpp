#include "platform/MappedFile.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace belvor;

namespace {

TEST(MappedFile, ReadsZerosWhereTheFileWasCutOff)
{
    const test::TempFile file("shrinks", std::string(100000, 'x'));
    MappedFile::takeDamage();
    {
        const MappedFile mapped(file.path());
        EXPECT_FALSE(mapped.damaged());
        std::error_code refused;
        std::filesystem::resize_file(file.path(), 5000, refused);
        if (refused) GTEST_SKIP() << "this system keeps a mapped file from being shortened";
        const std::string_view bytes = mapped.bytes();
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), 'x') % 5000, 0) << "what is left, or zeros only";
        EXPECT_EQ(bytes.back(), '\0');
        EXPECT_TRUE(mapped.damaged());
    }
    EXPECT_TRUE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile(file.path()).damaged()) << "the next mapping is a new one";
}

}   // namespace
