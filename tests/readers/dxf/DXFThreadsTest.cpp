#include "readers/common/PagesAhead.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace belvor::test {
namespace {

/// Faces and meshes of several megabytes.
std::string largeDrawing(const std::string& odd)
{
    std::string faces, mesh = dxfText("0 POLYLINE|8 B|70 64");
    for (int i = 0; i < 32000; ++i) {
        const std::string n = std::to_string(i * 0.37);
        faces += dxfText("0 3DFACE|8 A|10 " + n + "|20 0|30 1|11 " + std::to_string(i) + "|21 0|31 -" + n
                         + "|12 5|22 " + n + "|32 3|13 0|23 0|33 9");
        mesh += dxfText("0 VERTEX|8 B|10 " + n + "|20 0|30 " + std::to_string(i % 7) + "|70 192");
    }
    for (int i = 0; i < 32000; ++i)
        mesh += dxfText("0 VERTEX|8 B|70 128|71 " + std::to_string(i + 1) + "|72 1|73 2|74 3");
    return dxfText("0 SECTION|2 ENTITIES") + faces + mesh + dxfText("0 SEQEND|" + odd + "|0 ENDSEC|0 EOF");
}

}   // namespace

TEST(DXFThreads, ALargeDrawingIsTheSameForAnyNumberOfThreads)
{
    const struct {
        const char* why;
        std::string bytes;
        std::size_t stopAt;
    } cases[] = {
        {"whole", largeDrawing(""), 1u << 30},
        {"with a fault", largeDrawing("0 3DFACE|8 A|10 x"), 1u << 30},
        {"stopped at the start", largeDrawing(""), 0},
        {"stopped at a face", largeDrawing(""), 9000},
        {"stopped in a mesh", largeDrawing(""), 50000},
    };
    for (const auto& [why, bytes, stopAt] : cases)
        for (const ReadingRules rules : {ReadingRules::strict, ReadingRules::modern}) {
            ASSERT_TRUE(PagesAhead::isWorthIt(bytes, 2) || !canProvidePages());
            const std::string one = everythingOf(bytes, {.rules = rules, .threads = 1}, stopAt);
            EXPECT_GT(one.size(), 20u) << why;
            for (const unsigned threads : {2u, 3u})
                EXPECT_TRUE(everythingOf(bytes, {.rules = rules, .threads = threads}, stopAt) == one)
                    << why << threads;
        }
}

TEST(DXFThreads, TheOtherThreadEndsWithTheReading)   // else this test never does
{
    const std::string bytes(std::size_t{8} << 20, ' ');
    for (std::size_t i = 0; i < 300; ++i) {
        ModelBuilder model;
        PagesAhead pages(bytes, model);
        bool read = false;
        const auto use = [&] {
            for (std::size_t at = 0; at < i * 40000 && at < bytes.size(); at += PagesAhead::step)
                pages.reached(bytes.data() + at);
            std::this_thread::sleep_for(std::chrono::microseconds(i));   // the other thread comes
            read = true;
            if (i % 3 == 0) throw std::runtime_error("fault");
        };
        if (i % 3 == 0) EXPECT_THROW(pages.during(use), std::runtime_error);
        else pages.during(use);
        EXPECT_TRUE(read);
    }
}

}   // namespace belvor::test
