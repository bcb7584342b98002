#pragma once

#include "render/FacetFill.h"
#include "render/Pauses.h"
#include "render/Spans.h"
#include "scene/Model.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

class Camera;

/// A facet that is active on the current row.
struct ActiveFacet {
    std::uint32_t facet;           ///< Its index in the store.
    std::uint32_t crossingCount;   ///< At least 1; odd when the eye plane cuts the facet.
    const Crossing* crossings;     ///< By growing x.
};

/// The nearest surface of every pixel of one row.
class PixelRow {
public:
    static constexpr std::uint32_t noFacet = 0xFFFFFFFF;

    /// Throws std::bad_alloc.
    explicit PixelRow(int pixels = 0);

    /// Empties the row: the largest double and noFacet everywhere.
    void clear() noexcept;

    /// Fills the row from the facets of `model` that are active on it, in any order.
    void scanFacets(std::span<const ActiveFacet> active, const Model& model, const Camera& camera) noexcept;
    /// The same, with pauses.
    void scanFacets(std::span<const ActiveFacet> active, const Model& model, const Camera& camera,
                    Pauses& pauses);

    /// Offers a span of pixels: the nearer surface keeps a pixel, and of two equally near ones
    /// the later in the store.
    void fill(const SpanFill& span) noexcept;

    int width() const noexcept { return static_cast<int>(pixelCount); }

    /// Of each column; see Buffer.
    std::span<double> depths() noexcept { return {depthStore.data(), pixelCount}; }
    std::span<const double> depths() const noexcept { return {depthStore.data(), pixelCount}; }
    std::span<std::uint32_t> owners() noexcept { return {ownerStore.data(), pixelCount}; }
    std::span<const std::uint32_t> owners() const noexcept { return {ownerStore.data(), pixelCount}; }
    /// For drawing simple facets into the row.
    FillRow target() noexcept { return {depthStore.data(), ownerStore.data()}; }

private:
    void scanOpenFacet(const ActiveFacet& active, const Model& model, const Camera& camera) noexcept;

    std::size_t pixelCount;
    std::vector<double> depthStore;   // with fillPadding behind the last
    std::vector<std::uint32_t> ownerStore;
};

}   // namespace belvor
