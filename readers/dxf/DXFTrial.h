#pragma once

#include "readers/dxf/DXFBlock.h"
#include "readers/dxf/DXFDrawing.h"

namespace belvor {

/// A drawing that keeps nothing: an entity that is hidden is built into it to find out whether it is damaged.
class DXFTrial final : public DXFDrawing {
public:
    explicit DXFTrial(DXFDrawing& hidden)
        : DXFDrawing(hidden.stream(), noLog, hidden.rules(), hidden.drawsCurves(), false),
          drawing(hidden)
    {}

    void assume(std::string_view mark, bool atEnd) override { drawing.assume(mark, atEnd); }
    DXFPaint paint() const noexcept override { return {}; }
    void nameMaterial(std::string_view, std::string_view) override {}
    void readEntities(const DXFInsertion&) override {}
    DXFBlock* findBlock(std::string_view) override { return &block; }
    void skip(std::string_view, SkippedEntities::Why, std::string_view) override {}

private:
    const DXFLayer& lookUpLayer(std::string_view) override { return layer; }
    Material& lookUpMaterial(std::string_view) override { return material; }
    Material& paintSurface() override { return material; }
    void placeFacet(const Material&, std::span<const Point<3>>, const DXFAxes*,
                    std::span<const std::uint32_t>, bool) override
    {}
    void placeCurve(std::string_view, std::string_view, std::span<const Point<3>>, DXFCurveKind) override {}

    DXFDrawing& drawing;
    DXFLog noLog;
    DXFLayer layer;
    DXFBlock block;
    Material material;
};

}   // namespace belvor
