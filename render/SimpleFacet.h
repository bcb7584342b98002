#pragma once

#include <cstdint>

namespace belvor {

/// A facet of three or four corners, all in front of the eye, that has exactly two edges on every
/// row between its top and its bottom: two chains of edges run down from the one to the other.
/// Corners are indices of vertices.
struct SimpleFacet {
    static constexpr std::uint32_t noCorner = 0xFFFFFFFF;

    std::uint32_t facet;   ///< Its index in the store.
    std::uint32_t top, bottom;
    std::uint32_t first, second;   ///< One chain runs from the top over both to the bottom;
    std::uint32_t other;           ///< the other over this one. noCorner for a triangle: straight down.
};

}   // namespace belvor
