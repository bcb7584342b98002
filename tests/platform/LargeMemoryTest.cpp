#include "platform/LargeMemory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>

namespace belvor {
namespace {

TEST(MemoryPool, FreshPagesAreHandedOutSoonAfter)
{
    constexpr std::size_t block = 96 * 1024, ahead = std::size_t{4} << 20;
    MemoryPool pool;
    std::map<std::uintptr_t, std::size_t> blocks;   // number by address
    std::map<std::uintptr_t, std::size_t> pages;    // blocks handed out before, by address
    EXPECT_EQ(pool.takeFreshPage(ahead), nullptr) << "of a pool without memory";
    for (std::size_t i = 0; i < 600; ++i) {
        void* const memory = pool.allocate(block);
        std::memset(memory, static_cast<int>(i % 251), block);
        blocks.emplace(reinterpret_cast<std::uintptr_t>(memory), i);
        EXPECT_EQ(pool.takeFreshPage(largePage - 1), nullptr) << "not whole";
        if (i >= 500) continue;   // the rest is to fill what has been provided
        if (void* const page = pool.takeFreshPage(ahead)) {
            provideLargePage(page);
            EXPECT_TRUE(pages.emplace(reinterpret_cast<std::uintptr_t>(page), i).second) << "twice";
        }
    }
    EXPECT_GT(pages.size(), 5u);
    for (const auto& [page, before] : pages) {
        auto last = blocks.lower_bound(page + largePage);
        ASSERT_NE(last, blocks.begin());
        --last;   // the one that holds the page's end
        EXPECT_GE(last->first + block, page + largePage - block) << "the page's end is handed out";
        EXPECT_GT(last->second, before) << "later";
        EXPECT_LE(last->second, before + ahead / block + 1) << "soon";
    }
    for (const auto& [address, number] : blocks) {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(address);
        ASSERT_TRUE(bytes[0] == number % 251 && std::memcmp(bytes, bytes + 1, block - 1) == 0) << number;
    }
}

}   // namespace
}   // namespace belvor
