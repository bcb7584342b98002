#pragma once

#include "render/SimpleFacet.h"

#include <cstddef>
#include <cstdint>

namespace belvor {

/// A row of depths and owners that facets are drawn into. Up to fillPadding elements behind the
/// last pixel are read and written back: a run is taken four pixels at a time, and one of no pixels may
/// begin behind the last.
struct FillRow {
    double* depths;
    std::uint32_t* owners;
};
constexpr std::size_t fillPadding = 4;

/// Rows of a picture that lie one below the other.
struct FillRows {
    const FillRow* rows;   ///< The first one is row `first` of the picture.
    int first, end;        ///< Rows `first` to `end` − 1.
    int width;             ///< Of the picture, pixels.
};

/// Draws facets into the rows that they cross, in any order: the nearer surface keeps a pixel, and of
/// two equally near ones the later in the store. `points` are the vertices on the screen, three
/// numbers each.
using FacetFill = void (*)(const SimpleFacet* facets, std::size_t count, const double* points,
                           const FillRows& target);

/// For any processor of this build.
void fillFacets(const SimpleFacet* facets, std::size_t count, const double* points,
                const FillRows& target) noexcept;
/// The same rows by vectors of 32 bytes, for processors with AVX2; only builds for x86 have it.
void fillFacetsByWideVectors(const SimpleFacet* facets, std::size_t count, const double* points,
                             const FillRows& target) noexcept;
/// The same, for processors with AVX-512 (F, VL, DQ, BW).
void fillFacetsByWidestVectors(const SimpleFacet* facets, std::size_t count, const double* points,
                               const FillRows& target) noexcept;
/// Those of them that this processor runs, the fastest last.
struct FacetFills {
    FacetFill all[3];
    std::size_t count;
};
FacetFills runnableFacetFills() noexcept;
/// The fastest.
FacetFill fastestFacetFill() noexcept;

}   // namespace belvor
