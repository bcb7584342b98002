#include "render/LineVisibility.h"

namespace belvor {
namespace {

double finiteOrZero(double slope) noexcept { return std::isfinite(slope) ? slope : 0.0; }

}   // namespace

LineVisibility::LineVisibility(const Model& scene, const Camera& view, const LineTable& lines,
                               const Outlines* edges)
    : model(scene),
      camera(view),
      table(lines),
      outlines(edges),
      perspective(view.describe().kind == 0),
      parallelTolerance(0x1p-20 * view.scale * (view.far - view.near)),
      known(knownFacets)
{}

inline LineVisibility::Owners LineVisibility::ownersOf(const LinePixel& pixel) const noexcept
{
    const bool isThere = (pixel.toOther[0] != 0) | (pixel.toOther[1] != 0),
               hasOther = isThere & holds(otherSample(pixel, true)),
               outline = pixel.rule == LineRule::outline, crease = pixel.rule == LineRule::crease;
    const std::uint32_t drawn = ownerAt(drawnSample(pixel)), other = ownerAt(otherSample(pixel, hasOther));
    const bool drawnForeign = isForeign(pixel, drawn), otherForeign = isForeign(pixel, other);
    const bool asksOther = hasOther & outline & otherForeign,
               mayShowBeside =
                   hasOther & (outline | (crease & (other != noFacet))) & (asksOther == otherForeign);
    return {drawn, other, drawnForeign, asksOther, mayShowBeside};
}

/// Few branches: what a pixel is like tells nothing of the next one.
void LineVisibility::find(const LinePixel* const* pixels, std::size_t count, bool* shows) noexcept
{
    // 1. The owners, and whose planes are needed and not known.
    Owners owners[mostPixels];
    std::size_t unknownCount = 0;
    const auto need = [&](std::uint32_t facet, bool needed) {
        unknown[unknownCount] = facet;
        unknownCount += needed & (known[facet % knownFacets].facet != facet);
    };
    for (std::size_t i = 0; i < count; ++i) {
        const LinePixel& pixel = *pixels[i];
        owners[i] = ownersOf(pixel);
        need(owners[i].drawn, owners[i].asksDrawn);
        need(owners[i].other, owners[i].asksOther);
    }
    // 2. These planes.
    fetch(unknownCount);
    // 3. What they hide.
    for (std::size_t i = 0; i < count; ++i) {
        const LinePixel& pixel = *pixels[i];
        const auto [drawn, other, asksDrawn, asksOther, mayShowBeside] = owners[i];
        const bool free = !hides(pixel, drawnSample(pixel), drawn, asksDrawn),
                   freeBeside = !hides(pixel, otherSample(pixel, asksOther), other, asksOther);
        shows[i] = free | (mayShowBeside & freeBeside);
    }
}

/// The slopes of unknown facets, whose planes come from memory all at the same time.
void LineVisibility::fetch(std::size_t count) noexcept
{
    for (std::size_t i = 0; i < count; ++i) {
        const Plane& plane = model.facet(unknown[i]).plane;
        const double first = plane.normal()[0], last = plane.offset();   // may lie on two lines of the cache
        asm volatile("" : : "m"(first), "m"(last));
    }
    for (std::size_t i = 0; i < count; ++i)
        if (Slopes& slopes = slopesAt(unknown[i]); slopes.facet != unknown[i]) slopes = slopesOf(unknown[i]);
}

LineVisibility::Slopes LineVisibility::slopesOf(std::uint32_t facet) const noexcept
{
    const Vector<3> normal = camera.screenPlane(model.facet(facet).plane).normal();
    return {finiteOrZero(-normal[0] / normal[2]), finiteOrZero(-normal[1] / normal[2]), facet};
}

}   // namespace belvor
