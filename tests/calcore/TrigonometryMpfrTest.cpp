// Every result against the correctly rounded one of the library MPFR, where it is installed.
#include "calcore/Trigonometry.h"
#include "tests/calcore/HardAngles.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <mpfr.h>
#include <numbers>

using namespace belvor;

namespace {

class TrigonometryMpfr : public testing::Test {
protected:
    TrigonometryMpfr()
    {
        // The exponents of a double, the smallest ones included.
        mpfr_set_emin(-1073);
        mpfr_set_emax(1024);
        mpfr_inits2(53, a, b, result, static_cast<mpfr_ptr>(nullptr));
    }
    ~TrigonometryMpfr() override { mpfr_clears(a, b, result, static_cast<mpfr_ptr>(nullptr)); }

    void compareAngles(double argument)
    {
        mpfr_set_d(a, argument, MPFR_RNDN);
        mpfr_subnormalize(result, mpfr_sin(result, a, MPFR_RNDN), MPFR_RNDN);
        expect("sine", argument, 0.0, sine(argument));
        mpfr_subnormalize(result, mpfr_cos(result, a, MPFR_RNDN), MPFR_RNDN);
        expect("cosine", argument, 0.0, cosine(argument));
    }
    void compareDirection(double y, double x)
    {
        mpfr_set_d(a, y, MPFR_RNDN);
        mpfr_set_d(b, x, MPFR_RNDN);
        mpfr_subnormalize(result, mpfr_atan2(result, a, b, MPFR_RNDN), MPFR_RNDN);
        expect("arctangent", y, x, arctangent(y, x));
    }

    std::uint64_t random()
    {
        state ^= state << 13;
        state ^= state >> 7;
        return state ^= state << 17;
    }
    /// In [−range, range).
    double within(double range) { return (static_cast<double>(random() >> 11) * 0x1p-52 - 1.0) * range; }
    double anyDouble() { return std::bit_cast<double>(random()); }

    int wrong = 0;

private:
    void expect(const char* name, double first, double second, double got)
    {
        const double wanted = mpfr_get_d(result, MPFR_RNDN);
        if (got == wanted && std::signbit(got) == std::signbit(wanted)) return;
        if (std::isnan(got) && std::isnan(wanted)) return;
        if (++wrong <= 20)
            ADD_FAILURE() << std::hexfloat << name << "(" << first << ", " << second << ") is " << got
                          << ", rounded correctly " << wanted;
    }

    mpfr_t a, b, result;
    std::uint64_t state = 0x9e3779b97f4a7c15u;
};

}   // namespace

TEST_F(TrigonometryMpfr, AMillionArgumentsRoundCorrectly)
{
    for (int i = 0; i < 100000; ++i) {   // ten arguments each
        compareAngles(within(8.0));
        compareAngles(within(1e6));
        compareAngles(std::ldexp(within(1.0), -static_cast<int>(random() % 40)));
        compareAngles(anyDouble());
        compareDirection(within(4.0), 1.0);
        compareDirection(within(1.0), within(1.0));
        const double y = anyDouble();
        compareDirection(y, anyDouble());
        compareDirection(y, y * within(64.0));
        compareDirection(std::ldexp(within(1.0), -static_cast<int>(random() % 70)), within(1.0));
        // Quotients among the smallest doubles, many of them in the middle of two.
        compareDirection(std::ldexp(static_cast<double>(random() % 200), -1074),
                         std::ldexp(static_cast<double>(random() % 64 + 1), static_cast<int>(random() % 4)));
    }
    EXPECT_EQ(wrong, 0);
}

TEST_F(TrigonometryMpfr, WholeDegreesAndTheHardestArgumentsRoundCorrectly)
{
    for (int degrees = -3600; degrees <= 3600; ++degrees) {
        const double radians = degrees * (std::numbers::pi / 180.0);
        compareAngles(radians);
        compareDirection(sine(radians), cosine(radians));
        compareDirection(degrees / 16.0, 10.0);
    }
    for (const double angle : test::hardAngles)
        for (const double signedAngle : {angle, -angle}) {
            compareAngles(signedAngle);
            for (const double other : {0.0, -0.0, 1.0, -1.0, 2.0, 16 * 0x1p-1074}) {
                compareDirection(signedAngle, other);
                compareDirection(other, signedAngle);
            }
        }
    EXPECT_EQ(wrong, 0);
}
