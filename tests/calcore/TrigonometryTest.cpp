#include "calcore/Trigonometry.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

using namespace belvor;

namespace {

/// The distance in units of the last place of `expected`.
double unitsApart(double value, double expected)
{
    const double unit =
        std::nextafter(std::abs(expected), std::numeric_limits<double>::infinity()) - std::abs(expected);
    return std::abs(value - expected) / unit;
}

}   // namespace

TEST(Trigonometry, SineAndCosineAreAccurateWhereReductionIsHard)
{
    const struct {
        const char* why;
        double angle, sine, cosine;
    } cases[] = {
        {"almost π: only the third part of π/2 is left", 0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53, -1.0},
        {"the cosine's zero", 0x1.921fb54442d18p+0, 1.0, 0x1.1a62633145c07p-54},
        {"45 degrees", 0x1.921fb54442d18p-1, 0x1.6a09e667f3bccp-1, 0x1.6a09e667f3bcdp-1},
        {"30 degrees", 0x1.0c152382d7365p-1, 0x1.fffffffffffffp-2, 0x1.bb67ae8584cabp-1},
        {"small", 0x1.12e0be826d695p-30, 0x1.12e0be826d695p-30, 1.0},
        {"the farthest that is reduced exactly", -0x1.e847f00000000p+19, 0x1.833357b1489f3p-1,
         0x1.4efdfc640fc4dp-1},
        {"725 degrees", 0x1.94ea984d9fba1p+3, 0x1.64fd6b8c280d8p-4, 0x1.fe0d3b41815a2p-1},
    };
    for (const auto& c : cases) {
        EXPECT_LE(unitsApart(sine(c.angle), c.sine), 1.0) << c.why;
        EXPECT_LE(unitsApart(cosine(c.angle), c.cosine), 1.0) << c.why;
    }
    EXPECT_TRUE(std::signbit(sine(-0.0)));
    EXPECT_LE(std::abs(sine(1e300)), 1.0);
    EXPECT_TRUE(std::isnan(sine(std::numeric_limits<double>::infinity())));
    EXPECT_TRUE(std::isnan(cosine(std::numeric_limits<double>::quiet_NaN())));
}

TEST(Trigonometry, ArctangentKnowsEveryQuadrantAndSize)
{
    const struct {
        double y, x, angle;
    } cases[] = {
        {1.0, 1.0, 0x1.921fb54442d18p-1},
        {-1.75, 1.75, -0x1.921fb54442d18p-1},
        {1.0, 0.0, 0x1.921fb54442d18p+0},
        {0.0, -1.0, 0x1.921fb54442d18p+1},
        {-0.0, -1.0, -0x1.921fb54442d18p+1},
        {0.0, 1.0, 0.0},
        {0.0, 0.0, 0.0},
        {1e308, -1e308, 0x1.2d97c7f3321d2p+1},
        {5e-324, 1e-323, 0x1.dac670561bb4fp-2},
        {3.0, 16.0, 0x1.7b97b4bce5b02p-3},
        {3.0000001, 16.0, 0x1.7b97b58c5a2c9p-3},
        {1.0, 1e300, 0x1.56e1fc2f8f359p-997},
        {-2.0, 1e-300, -0x1.921fb54442d18p+0},
        {0.4, -0.7, 0x1.4fac5404fe6dbp+1},
    };
    for (const auto& c : cases) {
        EXPECT_LE(unitsApart(arctangent(c.y, c.x), c.angle), 2.0) << c.y << ", " << c.x;
        EXPECT_EQ(std::signbit(arctangent(c.y, c.x)), std::signbit(c.y)) << c.y << ", " << c.x;
    }
    EXPECT_LE(unitsApart(arctangent(std::numeric_limits<double>::infinity()), 0x1.921fb54442d18p+0), 1.0);
}

// The reason for having these functions: a build whose results differ in any bit writes other image files.
TEST(Trigonometry, GivesTheSameBitsInEveryBuild)
{
    std::uint64_t state = 1, digest = 14695981039346656037u;
    const auto random = [&state](double range) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return (static_cast<double>(state >> 11) * 0x1p-52 - 1.0) * range;
    };
    for (int i = 0; i < 20000; ++i) {
        const double angle = random(i % 2 == 0 ? 7.0 : 1e5), y = random(3.0), x = random(3.0);
        for (const double result : {sine(angle), cosine(angle), arctangent(y, x)})
            digest = (digest ^ std::bit_cast<std::uint64_t>(result)) * 1099511628211u;
    }
    EXPECT_EQ(digest, 0x3ba5e519dfe96abau);
}
