#include "readers/dxf/DXFFarCells.h"

#include "readers/dxf/DXFLoops.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace belvor {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::size_t maxCornersLookedAt = 20000;
constexpr int maxDepth = 50;

/// Whether `linear`·p + t is infinite or no number for every t of the range. Each component
/// grows with that of t, rounded or not.
bool isFar(const Point<3>& p, const DXFCellRange& range) noexcept
{
    const Vector<3> linear = range.low(p.vector());
    const Point<3> low = range.low(p), high = range.high(p);
    for (int axis = 0; axis < 3; ++axis)
        if (!std::isfinite(linear[axis]) || low[axis] == infinity || high[axis] == -infinity) return true;
    return false;
}

}   // namespace

DXFCellRange DXFCellRange::cellsOf(const DXFInsertion& insertion, const Point<3>& base, std::int32_t column,
                                   std::int32_t row, std::int32_t columns, std::int32_t rows) const noexcept
{
    // An infinite offset: that of all other cells is infinite too.
    if (!std::isfinite(column * insertion.columnSpacing) || !std::isfinite(row * insertion.rowSpacing)) {
        const Vector<3> beyond(infinity, infinity, infinity);
        return {{low.matrix(), beyond}, {high.matrix(), beyond}};
    }
    const AffineTransform<3> placement = insertion.placement(insertion.rotation()), least = low * placement,
                             most = high * placement;
    Vector<3> smallest(infinity, infinity, infinity), largest(-infinity, -infinity, -infinity);
    DXFCellRange cells;
    for (const std::int32_t c : {column, column + (columns - 1)})
        for (const std::int32_t r : {row, row + (rows - 1)}) {
            cells = {insertion.cellIn(least, c, r, base), insertion.cellIn(most, c, r, base)};
            for (int axis = 0; axis < 3; ++axis) {
                const double from = cells.low.translation()[axis], to = cells.high.translation()[axis];
                smallest[axis] = std::isnan(from) ? -infinity : std::min(smallest[axis], from);
                largest[axis] = std::isnan(to) ? infinity : std::max(largest[axis], to);
            }
        }
    return {{cells.low.matrix(), smallest}, {cells.high.matrix(), largest}};
}

bool DXFFarCells::holdsNothing(DXFBlock& block, const DXFCellRange& range, std::uint64_t cells)
{
    looked = 0;
    facets = curves = 0;
    played.clear();
    counted.clear();
    inItself.clear();
    const bool wasExpanding = std::exchange(block.expanding(), true);
    const bool nothing = visit(block, range, cells, 0);
    block.expanding() = wasExpanding;
    return nothing;
}

bool DXFFarCells::visit(DXFBlock& block, const DXFCellRange& range, std::uint64_t times, int depth)
{
    if (!block.contents || depth > maxDepth) return false;
    for (const DXFBlockContents::Item& item : block.contents->items) {
        if (++looked > maxCornersLookedAt) return false;
        if (const auto* const facet = std::get_if<DXFBlockContents::Facet>(&item)) {
            if (!isFar(*block.contents, *facet, range)) return false;
            facets = belvor::counted(facets, times, 1);
        } else if (const auto* const curve = std::get_if<DXFBlockContents::Curve>(&item)) {
            if (!isFar(block.contents->cornersOf(*curve), range)) return false;
            curves = belvor::counted(curves, times, 1);
        } else if (const auto* const insertion = std::get_if<DXFInsertion*>(&item)) {
            if (!visitInsertion(**insertion, block, range, times, depth)) return false;
        }   // a material keeps the name that the cell before gave it
    }
    played.emplace_back(&block, times);
    return true;
}

bool DXFFarCells::visitInsertion(const DXFInsertion& insertion, const DXFBlock& around,
                                 const DXFCellRange& range, std::uint64_t times, int depth)
{
    DXFBlock& inner = find(insertion, around.isOff());
    if (inner.expanding()) {
        inItself.emplace_back(&inner, times);
        return true;
    }
    const std::uint64_t cells = belvor::counted(0, times, insertion.cells());
    if (inner.summary.state == DXFBlockSummary::State::drawsNothing) {
        counted.emplace_back(&inner, cells);
        return true;
    }
    inner.expanding() = true;
    const bool nothing =
        visit(inner, range.cellsOf(insertion, inner.base, 0, 0, insertion.columns, insertion.rows), cells,
              depth + 1);
    inner.expanding() = false;
    return nothing;
}

bool DXFFarCells::isFar(const DXFBlockContents& contents, const DXFBlockContents::Facet& facet,
                        const DXFCellRange& range)
{
    const std::span<const Point<3>> corners = contents.cornersOf(facet);
    looked += corners.size();
    if (range.low.translation() == range.high.translation()) {   // all cells in one place: work it out
        placed.resize(corners.size());
        std::transform(corners.begin(), corners.end(), placed.begin(), range.low);
        Plane plane;
        const DXFAxes* const flat =
            facet.flat < 0 ? nullptr : &contents.flats[static_cast<std::size_t>(facet.flat)];
        double radiusSquare;
        return !facetPlane(placed, flat, range.low, plane, radiusSquare);
    }
    return std::any_of(corners.begin(), corners.end(),
                       [&range](const Point<3>& corner) { return belvor::isFar(corner, range); });
}

/// Of a curve: one point is enough.
bool DXFFarCells::isFar(std::span<const Point<3>> points, const DXFCellRange& range)
{
    looked += points.size();
    return std::any_of(points.begin(), points.end(),
                       [&range](const Point<3>& point) { return belvor::isFar(point, range); });
}

}   // namespace belvor
