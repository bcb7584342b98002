#pragma once

#include "readers/dxf/DXFBlock.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace belvor {

/// The transforms of all cells of an array, or of arrays within: one matrix, and each
/// component of the translation between that of `low` and that of `high`.
struct DXFCellRange {
    AffineTransform<3> low, high;

    /// The cells of `columns` × `rows` from (column, row) on of an insertion in these places.
    DXFCellRange cellsOf(const DXFInsertion& insertion, const Point<3>& base, std::int32_t column,
                         std::int32_t row, std::int32_t columns, std::int32_t rows) const noexcept;
};

/// Finds out whether a block draws nothing in any cell of a range because all its facets and
/// curves are beyond what a number can hold there. Looks at a limited number of things.
class DXFFarCells {
public:
    /// Gives the block of an insertion within a block that is seen from a layer that is off, or not.
    using FindBlock = std::function<DXFBlock&(const DXFInsertion& insertion, bool aroundIsOff)>;
    explicit DXFFarCells(FindBlock finder) : find(std::move(finder)) {}

    /// True when that is so for certain. The public members then say what each cell comes to,
    /// multiplied by `cells`.
    bool holdsNothing(DXFBlock& block, const DXFCellRange& range, std::uint64_t cells);

    std::uint64_t facets = 0, curves = 0;
    std::vector<std::pair<DXFBlock*, std::uint64_t>> played, counted, inItself;

private:
    bool visit(DXFBlock& block, const DXFCellRange& range, std::uint64_t times, int depth);
    bool visitInsertion(const DXFInsertion& insertion, const DXFBlock& around, const DXFCellRange& range,
                        std::uint64_t times, int depth);
    bool isFar(const DXFBlockContents& contents, const DXFBlockContents::Facet& facet,
               const DXFCellRange& range);

    bool isFar(std::span<const Point<3>> points, const DXFCellRange& range);

    FindBlock find;
    std::vector<Point<3>> placed;
    std::size_t looked = 0;
};

}   // namespace belvor
