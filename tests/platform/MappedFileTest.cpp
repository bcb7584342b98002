#include "platform/MappedFile.h"
#include "tests/platform/Spoilt.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace belvor;

TEST(MappedFile, ReadsZerosWhereItCannotBeRead)
{
    const std::string content(100000, 'x');
    const test::TempFile file("spoilt", content), intact("intact", content);
    MappedFile::takeDamage();
    {
        const MappedFile mapped(file.path()), other(intact.path());
        EXPECT_FALSE(mapped.damaged());
        test::spoil(file.path(), mapped.bytes());
        const auto zeros = std::count(mapped.bytes().begin(), mapped.bytes().end(), '\0');
        EXPECT_TRUE(zeros == 100000 - 8192 || zeros == 100000) << "what is left, or zeros only";
        EXPECT_TRUE(mapped.damaged());
        EXPECT_TRUE(other.bytes() == content && !other.damaged());
    }
    EXPECT_TRUE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile::takeDamage());
    EXPECT_FALSE(MappedFile(file.path()).damaged()) << "the next mapping is a new one";
}

TEST(MappedFile, ReadsAFileThatAnotherProgramHasOpenToWrite)
{
    const test::TempFile file("written", "0\nEOF\n");
    std::ofstream writer(file.path(), std::ios::app | std::ios::binary);
    const MappedFile mapped(file.path());
    EXPECT_EQ(mapped.bytes(), "0\nEOF\n");
    writer << "more" << std::flush;
    EXPECT_TRUE(mapped.damaged()) << "what was read is no longer the file";
}
