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
      facetAt(knownFacets, noFacet),
      slopesAt(knownFacets)
{}

/// Few branches: what a pixel is like tells nothing of the next one.
void LineVisibility::find(const Pixel* pixels, std::size_t count, bool* shows) noexcept
{
    // 1. The drawn samples.
    Question questions[mostPixels];
    std::size_t asked = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto [line, at] = pixels[i];
        const std::uint32_t owner = ownerAt(at);
        shows[i] = true;
        questions[asked] = {line, &shows[i], at, owner};
        asked += isForeign(*line, owner);
    }
    const std::size_t hidden = keepHidden(questions, asked);
    // 2. The other samples of points that are hidden there.
    std::size_t others = 0;
    for (std::size_t i = 0; i < hidden; ++i) {
        const Question question = questions[i];
        const LinePixel& pixel = *question.pixel;
        const Sample at{question.at.column + pixel.toOther[0], question.at.row + pixel.toOther[1]};
        const bool isThere = at != question.at;
        *question.shows = false;
        questions[others] = {&pixel, question.shows, at, noFacet};
        others += isThere & (pixel.rule != LineRule::curve) & holds(at);
    }
    asked = 0;
    for (std::size_t i = 0; i < others; ++i) {
        const Question question = questions[i];
        const LinePixel& pixel = *question.pixel;
        const std::uint32_t owner = ownerAt(question.at);
        const bool foreign = isForeign(pixel, owner), outline = pixel.rule == LineRule::outline;
        *question.shows = outline | ((owner != noFacet) & !foreign);
        questions[asked] = {&pixel, question.shows, question.at, owner};
        asked += outline & foreign;
    }
    const std::size_t hiddenThere = keepHidden(questions, asked);
    for (std::size_t i = 0; i < hiddenThere; ++i) *questions[i].shows = false;
}

/// Moves the questions of points that are hidden to the front, in order. Returns how many there are.
std::size_t LineVisibility::keepHidden(Question* questions, std::size_t count) noexcept
{
    std::size_t unknownCount = 0, hidden = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t owner = questions[i].owner;
        unknown[unknownCount] = owner;
        unknownCount += !isKnown(owner);
    }
    fetch(unknownCount);
    for (std::size_t i = 0; i < count; ++i) {
        const Question question = questions[i];
        questions[hidden] = question;
        hidden += hides(question);
    }
    return hidden;
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
        if (!isKnown(unknown[i])) learn(unknown[i]);
}

void LineVisibility::learn(std::uint32_t facet) noexcept
{
    const Vector<3> normal = camera.screenPlane(model.facet(facet).plane).normal();
    facetAt[facet % knownFacets] = facet;
    slopesAt[facet % knownFacets] = {finiteOrZero(-normal[0] / normal[2]),
                                     finiteOrZero(-normal[1] / normal[2])};
}

}   // namespace belvor
