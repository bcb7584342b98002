#pragma once

#include <cstddef>

namespace belvor {

/// Points or vectors component by component, so that a processor works on several at a time.
struct CoordinateBlock {
    static constexpr std::size_t size = 64;
    double x[size], y[size], z[size];
};

}   // namespace belvor
