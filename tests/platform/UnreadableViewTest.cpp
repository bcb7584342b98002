#include "platform/MappedFile.h"
#include "platform/win32/Windows.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace belvor;

namespace {

// A network share that is gone cannot be had in a test; a view without access fails in the same handler.
TEST(MappedFile, ReadsZerosWhereTheViewCannotBeRead)
{
    const test::TempFile file("unreadable", std::string(100000, 'x'));
    MappedFile::takeDamage();
    {
        const MappedFile mapped(file.path()), other(file.path());
        const std::string_view bytes = mapped.bytes();
        DWORD former = 0;
        ASSERT_TRUE(VirtualProtect(const_cast<char*>(bytes.data()) + 8192, 4096, PAGE_NOACCESS, &former));
        EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\0'), 100000 - 8192) << "from the fault on";
        EXPECT_TRUE(mapped.damaged());
        EXPECT_EQ(other.bytes(), std::string(100000, 'x'));
        EXPECT_FALSE(other.damaged());
    }
    EXPECT_TRUE(MappedFile::takeDamage());
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

}   // namespace
