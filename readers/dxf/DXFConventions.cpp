#include "errors/BadFile.h"
#include "readers/dxf/DXF.h"
#include "readers/dxf/DXFColours.h"
#include "readers/dxf/DXFDispatch.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFTrial.h"
#include "resources/Texts.h"
#include "text/Utf8.h"

#include <algorithm>

namespace belvor {
namespace {

constexpr int colourIndex = 62, trueColour = 420;

/// Where the colour of an entity is from. In the strict reading a bad number counts as missing.
void takeColour(DXFPaint& paint, const DXFRecord& record)
{
    const auto valueOf = [&record](int code) {
        return record.isModern() && record.has(code) ? std::optional(record.integer(code))
                                                     : integerIfAny(record, code);
    };
    const std::optional<std::int32_t> rgb = valueOf(trueColour);
    const std::int32_t index = valueOf(colourIndex).value_or(256);
    if (!rgb && index == 0) paint.from = DXFPaint::From::insertion;
    if (!rgb && (index < 1 || index > 255)) return;
    paint.from = DXFPaint::From::itself;
    paint.own = colourOfEntity({index, rgb}, 0, 0);
}

}   // namespace

/// The layer and the colour that the groups of an entity say.
DXFPaint DXF::paintOf(const DXFRecord& record)
{
    DXFPaint paint;
    const std::string_view layer = record.textOr(8, "");
    const bool handedDown = isModern() && expansions.back().block && withoutBlanksAtEnd(layer) == "0";
    if (!handedDown) paint.layer = &findLayer(layer);
    if (coloured) takeColour(paint, record);
    return paint;
}

/// What an INSERT of that paint hands on to its block.
DXFInherited DXF::handedOn(const DXFPaint& paint) const noexcept
{
    if (!usesPaint()) return {};
    const DXFInherited& around = expansions.back().inherited;
    return {&paint.layerIn(around), paint.colourIn(around)};
}

bool DXF::aroundIsOff() const noexcept
{
    return !expansions.empty() && expansions.back().block && expansions.back().block->isOff();
}

/// The block as an insertion sees it.
DXFBlock& DXF::blockOf(const DXFInsertion& insertion, bool isOff)
{
    return isModern() ? insertion.block->on(insertion.paint.layer, isOff) : *insertion.block;
}

/// The material of a layer, or of a layer and colour.
Material& DXF::painted(const DXFPaint& paint, const DXFInherited& around)
{
    return paintedIn(paint.layerIn(around), coloured ? paint.colourIn(around) : dxfWhite);
}

Material& DXF::paintedIn(const DXFLayer& layer, DXFColour colour)
{
    if (!coloured) return findMaterial(layer.name);
    const std::pair<const DXFLayer*, DXFColour> both(&layer, colour);
    if (recentPainted && both == recentPaint) return *recentPainted;
    Material*& known = paintedMaterials[both];
    if (!known) {
        const std::string name = dxfMaterialName(layer.name, both.second, layer.shown);
        // A key that is no layer's and no handle, and that puts the colours of a layer side by side.
        std::string key(layer.name);
        key += '\0';
        key += dxfMaterialName({}, both.second, ~both.second);
        known = &builder.findMaterial(key);
        known->name = validUtf8(name);
        for (std::size_t channel = 0; channel < 3; ++channel)
            known->colour[channel] = static_cast<double>((both.second >> (16 - 8 * channel)) & 0xFF) / 255.0;
        log().line("add new material ", name);
    }
    recentPaint = both;
    return *(recentPainted = known);
}

Material& DXF::paintSurface()
{
    surfaceInherits = paintOfEntity.inherits();
    return painted(paintOfEntity, expansions.back().inherited);
}

/// The material of a recorded facet that depends on the INSERT around its block.
const Material& DXF::surfaceOf(DXFExpansion& cell, const DXFBlockContents::Facet& facet)
{
    const std::vector<DXFPaint>& paints = cell.block->contents->paints;
    cell.surfaces.resize(paints.size());
    const Material*& known = cell.surfaces[facet.paint];
    if (!known) known = &painted(paints[facet.paint], cell.inherited);
    return *known;
}

DXFCurveSurface DXF::curveSurface(const DXFPaint& paint, const DXFInherited& around) const noexcept
{
    return {&paint.layerIn(around), coloured ? paint.colourIn(around) : dxfWhite, {}};
}

/// Puts the curves into the model, behind all surfaces and their materials.
void DXF::drawCurves()
{
    if (options.curvesInBounds) builder.setCurvesInBounds();
    using Why = SkippedEntities::Why;
    const DXFCurves::Endless endless = curves.finish(
        [this](const DXFCurveSurface& surface) -> const Material& {
            return surface.layer ? paintedIn(*surface.layer, surface.colour) : findMaterial(surface.key);
        },
        [this] { dxfStream->checkProgress(); });
    // Only now it is known which lines without end miss the rest of the drawing.
    for (const auto& [where, type] : endlessEntities)
        if (!endless.drawn.contains(where.second)) where.first->undrawn(type);
    if (endless.missedRays != 0) skippedEntities.add("RAY", Why::noSurface, {}, endless.missedRays);
    if (endless.missedLines != 0) skippedEntities.add("XLINE", Why::noSurface, {}, endless.missedLines);
}

/// Builds the current record by the modern rules: one that is faulty is left out, hidden or not. False for
/// one that does not count, this time.
bool DXF::buildByConventions(std::string_view type)
{
    if (is(type, "ENDBLK") || is(type, "ENDSEC")) return false;   // one too many
    const std::int32_t line = dxfStream->line();
    layerIsOff = false;
    firstTime = tallyOfEntity != nullptr;
    try {
        const DXFRecord& entityRecord = dxfStream->readRecord();
        if (isPassedOver(entityRecord)) return false;
        const DXFHandler* const handler = handlerOf(type);
        if (handler) paintOfEntity = paintOf(entityRecord);
        DXFEntity entity(*this, entityRecord);
        const std::optional<Hidden> hidden =
            handler ? whyHidden(entityRecord, handler->placesBlock) : std::nullopt;
        if (hidden) hide(type, *hidden);
        else entity.build();
    } catch (const BadFile& fault) {
        leaveOut(fault, type, line);
        if (losesPlace(fault)) {   // this record is the last
            if (tallyOfEntity && isCountedRecord(type)) tallyOfEntity->skipped(type, SkipReason::faulty);
            throw;
        }
        skip(type, SkippedEntities::Why::faulty, {});
    }
    firstTime = true;
    if (layerIsOff && reasonOfEntity) reasonOfEntity = std::min(*reasonOfEntity, SkipReason::layerOff);
    return true;
}

/// Tells records of paper space apart: they are counted by themselves, and seen twice when model space has
/// nothing to draw.
bool DXF::isPassedOver(const DXFRecord& record)
{
    onPaper = false;
    if (expansions.size() != 1) return false;
    onPaper = record.has(67) && record.readableInteger(67) == 1;
    if (!onPaper) return drawsPaper;
    tallyOfEntity = &tallyOfPaper;
    firstTime = !drawsPaper;
    if (!drawsPaper && (paperSections.empty() || paperSections.back().at != entitiesStart.at))
        paperSections.push_back(entitiesStart);
    return false;
}

std::optional<DXF::Hidden> DXF::whyHidden(const DXFRecord& record, bool placesBlock)
{
    using Why = SkippedEntities::Why;
    const DXFLayer& layer = paintOfEntity.layerIn(expansions.back().inherited);
    const bool isInvisible = record.integerOr(60, 0) == 1;
    if (onPaper && !drawsPaper) return Hidden{Why::paperSpace, {}};
    if (isInvisible) return Hidden{Why::invisible, {}};
    if (layer.frozen()) return Hidden{Why::layerFrozen, layer.name};
    layerIsOff = layer.off();
    if (!layerIsOff || placesBlock) return {};   // what a block holds may be on other layers
    if (paintOfEntity.layer) return Hidden{Why::layerOff, layer.name};
    return Hidden{Why::insertOff, {}};
}

/// The current record is hidden: it is looked at for damage alone.
void DXF::hide(std::string_view type, const Hidden& hidden)
{
    using Why = SkippedEntities::Why;
    log().line("skipping ", type, " at line ", dxfStream->line());
    const DXFInherited& around = expansions.back().inherited;
    const DXFLayer& layer = paintOfEntity.layerIn(around);
    if (tryHidden(type) && (hidden.why == Why::layerOff || hidden.why == Why::insertOff)) {
        if (offLayers.size() < 2) offLayers.emplace(layer.name);
        if (hidden.why == Why::insertOff) expansions.back().block->hidSurfaces = true;
    }
    if (hidden.why == Why::paperSpace) reasonOfEntity = SkipReason::paperSpace;   // listed if it stays so
    else skip(type, hidden.why, hidden.what);
}

/// What an INSERT on a layer that is off hides in its block is on that layer.
void DXF::hideSurfaces(const DXFInsertion& insertion)
{
    if (offLayers.size() < 2) offLayers.emplace(insertion.paint.layerIn(expansions.back().inherited).name);
}

/// Where model space has nothing to draw, what is in paper space is drawn instead.
void DXF::drawPaperSpace()
{
    using Why = SkippedEntities::Why;
    if (drawn() != 0) {
        for (const auto& [type, count] : tallyOfPaper.types)
            if (const std::uint64_t times = count.skipped[static_cast<std::size_t>(SkipReason::paperSpace)])
                skippedEntities.add(type, Why::paperSpace, {}, times);
        return;
    }
    if (paperSections.empty()) return;
    drawsPaper = true;
    tallyOfPaper.start();
    for (const DXFPosition& section : paperSections) {
        dxfStream->seek(section);
        try {
            readAllEntities();
        } catch (const BadFile& fault) {
            if (!losesPlace(fault)) throw;
            expansions.clear();   // told by the first pass
        }
    }
    drawsPaper = false;
    if (drawn() != 0) accountOfReading.warn(textOf(Text::paperDrawn));
}

/// A name as it is shown: in UTF-8.
std::string DXF::shown(std::string_view name)
{
    std::string room;
    return isModern() ? std::string(names.readable(name, room)) : validUtf8(name);
}

}   // namespace belvor
