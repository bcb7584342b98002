#pragma once

#include "readers/dxf/DXFBlock.h"
#include "readers/dxf/DXFDrawing.h"

namespace belvor {

/// A drawing that keeps nothing: an entity that is hidden is built into it to find out whether it is damaged.
class DXFTrial final : public DXFDrawing {
public:
    explicit DXFTrial(DXFDrawing& hidden) : drawing(hidden) {}

    DXFStream& stream() override { return drawing.stream(); }
    ReadingRules rules() const noexcept override { return drawing.rules(); }
    DXFLog& log() override { return noLog; }
    bool drawsCurves() const noexcept override { return drawing.drawsCurves(); }
    void assume(std::string_view mark, bool atEnd) override { drawing.assume(mark, atEnd); }
    const DXFLayer& findLayer(std::string_view) override { return layer; }
    Material& findMaterial(std::string_view) override { return material; }
    Material& findSurface(std::string_view) override { return material; }
    DXFPaint paint() const noexcept override { return {}; }
    void nameMaterial(std::string_view, std::string_view) override {}
    void readEntities(const DXFInsertion&) override {}
    DXFBlock* findBlock(std::string_view) override { return &block; }
    void skip(std::string_view, SkippedEntities::Why, std::string_view) override {}

private:
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
