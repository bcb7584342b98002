#include "calcore/Trigonometry.h"
#include "calcore/WideTrigonometry.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>

using namespace belvor;

TEST(Trigonometry, SineAndCosineRoundToTheNearestDouble)
{
    // Columns: why, angle, sine, cosine.
    const std::tuple<const char*, double, double, double> cases[] = {
        {"almost π: only the third part of π/2 is left", 0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53, -1.0},
        {"the cosine's zero", 0x1.921fb54442d18p+0, 1.0, 0x1.1a62633145c07p-54},
        {"45 degrees", 0x1.921fb54442d18p-1, 0x1.6a09e667f3bccp-1, 0x1.6a09e667f3bcdp-1},
        {"30 degrees", 0x1.0c152382d7365p-1, 0x1.fffffffffffffp-2, 0x1.bb67ae8584cabp-1},
        {"small", 0x1.12e0be826d695p-30, 0x1.12e0be826d695p-30, 1.0},
        {"the farthest that two doubles reduce", -0x1.e847f00000000p+19, 0x1.833357b1489f3p-1,
         0x1.4efdfc640fc4dp-1},
        // Published arguments whose results lie closest to the middle of two doubles.
        {"a sine 2^-59 of its last bit from the middle of two doubles", 0x1.598bae9e632f6p-7,
         0x1.598a0aea48996p-7, 0x1.fff8b65d498e0p-1},
        {"a cosine 2^-58 from a middle", 0x1.34ec2f9fc9c00p+1, 0x1.54b99c577e0e9p-1, -0x1.7e2a5c30e1d6dp-1},
        {"a cosine almost a double", 0x1.8000000000009p-23, 0x1.7ffffffffffe5p-23, 0x1.fffffffffff70p-1},
        {"the double closest to a multiple of π/2", 0x1.6ac5b262ca1ffp+849, 1.0, -0x1.14ae72e6ba22fp-61},
        {"the closest one that two doubles reduce", 0x1.6c6cbc45dc8dep+5, 1.0, -0x1.6d61b58c99c43p-61},
        {"725 degrees", 0x1.94ea984d9fba1p+3, 0x1.64fd6b8c280d8p-4, 0x1.fe0d3b41815a2p-1},
    };
    for (const auto& [why, angle, wantedSine, wantedCosine] : cases) {
        EXPECT_EQ(sine(angle), wantedSine) << why;
        EXPECT_EQ(cosine(angle), wantedCosine) << why;
    }
    EXPECT_TRUE(std::signbit(sine(-0.0)));
    EXPECT_TRUE(std::isnan(sine(std::numeric_limits<double>::infinity())));
    EXPECT_TRUE(std::isnan(cosine(std::numeric_limits<double>::quiet_NaN())));
}

TEST(Trigonometry, ArctangentIsExactInEveryQuadrantAndForEverySize)
{
    const std::tuple<double, double, double> cases[] = {
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
        {0x1.c721fd48f4418p+19, 1.0, 0x1.921fa3447af56p+0},   // 2^-58 of the last bit from a middle
        {3 * 0x1p-1074, 16 * 0x1p-1074, 0x1.7b97b4bce5b02p-3},
        {3 * 0x1p-1074, 2.0, 0x1p-1074},   // the quotient is the middle of two doubles, the angle just below
        {7 * 0x1p-1074, 2.0, 3 * 0x1p-1074},
        {0x1p-1074, 2.0, 0.0},
    };
    for (const auto& [y, x, angle] : cases) {
        EXPECT_EQ(arctangent(y, x), angle) << y << ", " << x;
        EXPECT_EQ(std::signbit(arctangent(y, x)), std::signbit(y)) << y << ", " << x;
    }
    EXPECT_EQ(arctangent(std::numeric_limits<double>::infinity()), 0x1.921fb54442d18p+0);
}

// Two ways to the same double: the sum of two doubles for most arguments, and the wide numbers.
TEST(Trigonometry, WideNumbersGiveTheSameDoubles)
{
    std::uint64_t state = 2;
    const auto random = [&state](double range) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return (static_cast<double>(state >> 11) * 0x1p-52 - 1.0) * range;
    };
    for (int i = 0; i < 20000; ++i) {
        const double angle = random(i % 3 == 0 ? 1.0 : i % 3 == 1 ? 30.0 : 1e6);
        if (std::abs(angle) < 0x1p-27) continue;
        EXPECT_EQ(sine(angle), wideSine(angle, 0)) << angle;
        EXPECT_EQ(cosine(angle), wideSine(angle, 1)) << angle;
        const double part = 0.25 * (1.0 + random(0.999)), whole = 0.75 + random(0.2499);
        const bool steep = i & 1, left = i & 2;
        const double nearby = std::atan(part / whole), x = steep ? part : whole;
        EXPECT_EQ(arctangent(steep ? whole : part, left ? -x : x),
                  wideArctangent(part, whole, nearby, steep, left))
            << part << ", " << whole;
    }
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
    EXPECT_EQ(digest, 0x87f360375421f585u);
}
