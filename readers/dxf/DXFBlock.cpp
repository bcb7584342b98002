#include "readers/dxf/DXFBlock.h"

#include <bit>

namespace belvor {

DXFBlock& DXFBlock::on(const DXFLayer* ofInsert, bool aroundIsOff)
{
    if (!(ofInsert ? ofInsert->off() : aroundIsOff)) return *this;
    if (!whenOff) {
        whenOff = std::make_unique<DXFBlock>();
        whenOff->name = name;
        whenOff->base = base;
        whenOff->entities = entities;
        whenOff->isEmpty = isEmpty;
        whenOff->isExternal = isExternal;
        whenOff->original = this;
    }
    return *whenOff;
}

const AffineTransform<3>& DXFRotations::of(const DXFInsertion& insertion)
{
    if (known.empty()) known.resize(std::size_t{1} << indexBits);
    const auto bits = std::bit_cast<std::uint64_t>(insertion.degrees);
    Entry& entry = known[static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15u) >> (64 - indexBits))];
    if (entry.degrees != bits) entry = {bits, insertion.rotation()};
    return entry.rotation;
}

void DXFBlockContents::addFacet(const Material& material, const DXFPaint* paint,
                                std::span<const Point<3>> itsCorners, const DXFAxes* itsFlat,
                                std::span<const std::uint32_t> itsLoopEnds, bool outlined)
{
    keepPaint(paint);
    std::int32_t loops = -1;
    if (!itsLoopEnds.empty()) {
        loopEnds.emplace_back(itsLoopEnds.begin(), itsLoopEnds.end());
        loops = static_cast<std::int32_t>(loopEnds.size() - 1);
    }
    std::int32_t flat = -1;
    if (itsFlat) {
        // Most blocks lie in one plane: the axes are kept once for a run of facets.
        if (flats.empty() || flats.back().x() != itsFlat->x() || flats.back().z() != itsFlat->z())
            flats.push_back(*itsFlat);
        flat = static_cast<std::int32_t>(flats.size() - 1);
    }
    items.emplace_back(Facet{paint ? nullptr : &material,
                             paint ? static_cast<std::uint32_t>(paints.size() - 1) : 0,
                             static_cast<std::uint32_t>(corners.size()),
                             static_cast<std::uint32_t>(itsCorners.size()), flat, loops, outlined});
    corners.insert(corners.end(), itsCorners.begin(), itsCorners.end());
}

void DXFBlockContents::keepPaint(const DXFPaint* paint)
{
    if (paint && (paints.empty() || paints.back() != *paint)) paints.push_back(*paint);
}

void DXFBlockContents::addCurve(const DXFCurveSurface& surface, const DXFPaint* paint,
                                std::span<const Point<3>> points, DXFCurveKind kind, std::int32_t line)
{
    keepPaint(paint);
    items.emplace_back(Curve{surface, paint ? static_cast<std::int32_t>(paints.size() - 1) : -1,
                             static_cast<std::uint32_t>(corners.size()),
                             static_cast<std::uint32_t>(points.size()), line, kind});
    corners.insert(corners.end(), points.begin(), points.end());
}

void DXFBlockContents::addInsertion(const DXFInsertion& insertion)
{
    insertions.push_back(std::make_unique<DXFInsertion>(insertion));
    items.emplace_back(insertions.back().get());
}

std::size_t DXFBlockContents::size() const noexcept
{
    return items.size() * sizeof(Item) + corners.size() * sizeof(Point<3>)
           + insertions.size() * sizeof(DXFInsertion) + flats.size() * sizeof(DXFAxes)
           + paints.size() * sizeof(DXFPaint);
}

}   // namespace belvor
