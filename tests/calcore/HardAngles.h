#pragma once

namespace belvor::test {

/// Arguments published as the hardest to round, multiples of π/2 that doubles come closest to, and the ends
/// of the ranges that are computed in different ways.
inline constexpr double hardAngles[] = {
    0x1.598bae9e632f6p-7,    0x1.34ec2f9fc9c00p+1,   0x1.fe767739d0f6dp-2,  0x1.06b505550e6b2p-9,
    0x1.e0000000001c2p-20,   0x1.8000000000009p-23,  0x1.8000000000003p-23, 0x1.dffffffffff1fp-22,
    0x1.6ac5b262ca1ffp+849,  0x1.6ac5b262ca1ffp+850, 0x1.6c6cbc45dc8dep+5,  0x1.b951f1572eba5p+23,
    0x1.921fb54442d18p+0,    0x1.921fb54442d18p+1,   0x1.921fb54442d18p-1,  0x1.0c152382d7365p-1,
    0x1.e847f00000000p+19,   0x1.c721fd48f4418p+19,  0x1.fffffffffffffp-27, 0x1.fffffffffffffp-28,
    0x1.fffffffffffffp+1023, 0x1.0000000000000p-26,  0x1.0000000000000p-27, 0x1.0000000000000p-1074,
    0x7.0000000000000p-1074, 0x0.0000000000000p+0,
};

}   // namespace belvor::test
