#include "errors/BadFile.h"
#include "readers/dxf/DXF.h"
#include "readers/dxf/DXFEntity.h"

#include <algorithm>
#include <bit>

namespace belvor {
namespace {

using State = DXFBlockSummary::State;

constexpr std::size_t maxRecordedBytes = std::size_t{64} << 20;   // of all blocks; beyond, text is read again
constexpr std::size_t itemsBetweenReports = 128;

SkipReason reasonOf(SkippedEntities::Why why) noexcept
{
    using Why = SkippedEntities::Why;
    switch (why) {
    case Why::layerFrozen: return SkipReason::layerFrozen;
    case Why::layerOff:
    case Why::insertOff: return SkipReason::layerOff;
    case Why::paperSpace: return SkipReason::paperSpace;
    case Why::invisible: return SkipReason::invisible;
    case Why::blockEmpty: return SkipReason::blockEmpty;
    case Why::blockExternal: return SkipReason::blockInAnotherFile;
    case Why::blockUnknown: return SkipReason::blockUnknown;
    case Why::blockInItself: return SkipReason::blockInsertsItself;
    case Why::typeNotDrawn: return SkipReason::typeNotDrawn;
    case Why::faulty: return SkipReason::faulty;
    default: return SkipReason::noSurface;
    }
}

/// Whether a user can do something about it: not for texts, and lines are no surfaces.
bool canBeDrawn(std::string_view type, SkippedEntities::Why why) noexcept
{
    using Why = SkippedEntities::Why;
    if (why == Why::typeNotDrawn) return DXFEntity::isDrawn(type, ReadingRules::modern, true);
    return why != Why::noSurface && why != Why::blockInItself && why != Why::unreadable && why != Why::more;
}

/// Whether it is worth a closer look: nearly all records are entities.
bool mayBeMark(std::string_view type) noexcept
{
    return type.starts_with('E') || type.starts_with('S') || type.starts_with('B');
}

const char* labelOf(const DXFExpansion& expansion) noexcept
{
    return expansion.block ? "INSERTed block" : "ENTITIES section";
}

}   // namespace

void DXF::forgetContents()
{
    undrawn.forget();
    recordedBytes = 0;
}

void DXF::readAllEntities()
{
    entitiesStart = dxfStream->position();
    expansions.emplace_back();
    startCell();
    while (!expansions.empty()) {
        if (expansions.back().playing) playBack();
        else walk();
    }
    undrawn.settle();
}

void DXF::readEntities(const DXFInsertion& insertion)
{
    DXFBlock& block = blockOf(insertion, aroundIsOff());
    if (!expansions.empty() && expansions.back().summarising) {
        DXFBlockSummary::Inserted& met = expansions.back().block->summary.insertions[&block];
        ++met.times;
        met.cells = counted(met.cells, insertion.cells(), 1);
    }
    record([&insertion](DXFBlockContents& contents) { contents.addInsertion(insertion); });
    blockOfEntity = &block;
    blockEntered = !block.expanding();
    if (blockEntered && !expansions.empty() && expansions.back().block)
        expansions.back().block->tally.entered(block);
    if (block.expanding()) {   // not for the record: it depends on who inserts the block
        ++cyclesMet;
        undrawn.countInItself(block, 1);
        return;
    }
    if (block.hidSurfaces) hideSurfaces(insertion);
    if (countUndrawn(block, insertion.cells())) return;
    const DXFInherited inherited = handedOn(insertion.paint);
    const AffineTransform<3> placement =
        expansions.back().transform * insertion.placement(rotations.of(insertion));
    block.expanding() = true;
    DXFExpansion& inner = expansions.emplace_back();
    inner.block = &block;
    inner.insertion = insertion;
    inner.inherited = inherited;
    inner.placement = placement;
    startCell();
}

bool DXF::countUndrawn(DXFBlock& block, std::uint64_t cells)
{
    if (!undrawn.count(block, cells)) return false;
    cyclesMet += block.summary.state == State::cyclic;
    log().line("Nothing to draw in ", cells, " cells of block ", block.name);
    return true;
}

/// Makes ready for the entities of the cell at (column, row).
void DXF::startCell()
{
    DXFExpansion& cell = expansions.back();
    dxfStream->checkProgress();
    if (cell.block) {
        cell.transform = cell.insertion.cellIn(cell.placement, cell.column, cell.row, cell.block->base);
    }
    if (log()) logCell(cell);
    cell.tally = cell.block ? nullptr : &tallyOfEntities;
    if (!cell.block) return;

    DXFBlock& block = *cell.block;
    cell.nextItem = 0;
    cell.drawnBefore = drawn();
    cell.givenBefore = givenMet;
    cell.cyclesBefore = cyclesMet;
    cell.namesBefore = namesMet;
    cell.playing = block.contents && !log();   // a log tells of every record: it needs the text
    if (cell.playing) {
        ++block.summary.playedCells;
        return;
    }
    cell.back = dxfStream->position();
    log().line("Seek to block at line ", block.entities.line);
    dxfStream->seek(block.entities);
    cell.summarising = block.summary.walks == 0;
    if (cell.summarising) {
        block.tally.start();
        cell.tally = &block.tally;
    }
    if (++block.summary.walks == 2) cell.recording = std::make_unique<DXFBlockContents>();
}

void DXF::logCell(const DXFExpansion& cell)
{
    if (cell.block) {
        const DXFInsertion& insertion = cell.insertion;
        log().line("Insert hook");
        log().line("InsertTransform [", insertion.scale, "    scale ", insertion.degrees, " degrees",
                   " rotate ", insertion.position, " translate ", insertion.tilt.toWorld(), " tilt ", "] * ",
                   expansions[expansions.size() - 2].transform);
        log().line("InsertTransform =", " ", cell.transform);
    }
    log().line("ReadEntitiesSection for ", labelOf(cell), " from line ", dxfStream->position().line);
    log().line("    transform = ", cell.transform);
}

/// Leaves the current cell, for the next one or for the entities around the insertion.
void DXF::endCell()
{
    DXFExpansion& cell = expansions.back();
    if (cell.block && !cell.playing) {
        log().line("Return from block to line ", cell.back.line);
        dxfStream->seek(cell.back);
        if (cell.summarising) finishSummary(cell);
        if (cell.recording) cell.block->contents = std::move(cell.recording);
    }
    if (cell.cellsLeft() > 1) {
        nextCell(cell, 1);
        if (cell.block && passUndrawn(cell)) return leaveExpansion();
        return startCell();
    }
    leaveExpansion();
}

void DXF::leaveExpansion()
{
    if (DXFBlock* const block = expansions.back().block) block->expanding() = false;
    expansions.pop_back();
}

/// Goes on by that many cells, fewer than are left.
void DXF::nextCell(DXFExpansion& cell, std::uint64_t cells)
{
    const auto rows = static_cast<std::uint64_t>(cell.insertion.rows);
    const std::uint64_t row = static_cast<std::uint64_t>(cell.row) + cells;
    cell.column += static_cast<std::int32_t>(row / rows);
    cell.row = static_cast<std::int32_t>(row % rows);
}

/// Counts the cells from the current one on that draw nothing, without a walk through them;
/// there may be more of them than anyone could wait for. True when none is left.
bool DXF::passUndrawn(DXFExpansion& cell)
{
    if (drawn() != cell.drawnBefore) {
        cell.emptyCells = 0;
        return false;
    }
    cell.block->expanding() = false;
    const bool counted = countUndrawn(*cell.block, cell.cellsLeft());
    cell.block->expanding() = true;
    if (counted) return true;
    // The search below may fail: not after every cell.
    return std::has_single_bit(++cell.emptyCells) && passFarCells(cell);
}

/// The same for cells in which all is too far out.
bool DXF::passFarCells(DXFExpansion& cell)
{
    const DXFInsertion& insertion = cell.insertion;
    const AffineTransform<3>& outer = expansions[expansions.size() - 2].transform;
    DXFFarCells far(
        [this](const DXFInsertion& inner, bool isOff) -> DXFBlock& { return blockOf(inner, isOff); });
    const auto pass = [&](std::int32_t columns, std::int32_t rows) {
        const std::uint64_t cells = static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows);
        const DXFCellRange range = DXFCellRange{outer, outer}.cellsOf(insertion, cell.block->base,
                                                                      cell.column, cell.row, columns, rows);
        if (!far.holdsNothing(*cell.block, range, cells)) return false;
        countFar(far);
        return true;
    };
    for (bool passed = true; passed;) {   // as many whole columns as possible, else rows of this one
        passed = false;
        std::int32_t columns = cell.row == 0 ? insertion.columns - cell.column : 0, rows = insertion.rows;
        while (columns > 0 && !(passed = pass(columns, rows))) columns /= 2;
        if (!passed)
            for (columns = 1, rows -= cell.row; rows > 0 && !(passed = pass(columns, rows));) rows /= 2;
        if (!passed) return false;
        const std::uint64_t cells = static_cast<std::uint64_t>(columns) * static_cast<std::uint64_t>(rows);
        log().line("Too far out: ", cells, " cells of block ", cell.block->name);
        if (cells == cell.cellsLeft()) return true;
        nextCell(cell, cells);
        dxfStream->checkProgress();
    }
    return false;
}

void DXF::countFar(const DXFFarCells& far)
{
    if (far.facets != 0) skippedEntities.add("facet", SkippedEntities::Why::tooFarOut, {}, far.facets);
    if (far.curves != 0) skippedEntities.add("curve", SkippedEntities::Why::tooFarOut, {}, far.curves);
    for (const auto& [block, cells] : far.played)
        block->summary.playedCells = counted(block->summary.playedCells, cells, 1);
    for (const auto& [block, cells] : far.counted)
        block->summary.countedCells = counted(block->summary.countedCells, cells, 1);
    for (const auto& [block, times] : far.inItself) undrawn.countInItself(*block, times);
}

/// The first walk over a block has ended: says what later ones will come to.
void DXF::finishSummary(DXFExpansion& cell)
{
    cell.summarising = false;
    DXFBlockSummary& summary = cell.block->summary;
    summary.namesMaterials = namesMet != cell.namesBefore;
    if (cyclesMet != cell.cyclesBefore) summary.state = State::cyclic;
    else if (givenMet != cell.givenBefore || summary.namesMaterials) summary.state = State::draws;
    else summary.state = State::drawsNothing;
    undrawn.addSummarised(*cell.block);
}

/// Reads entities up to the end of the cell or to the first insertion among them.
void DXF::walk()
{
    const std::size_t depth = expansions.size();
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (mayBeMark(type) && entitiesEnd(type)) break;
        if (expansions.back().block && is(type, "BLOCK"))   // in the strict reading it is one of the records
            expansions.back().tally = nullptr;   // this block has no end: the next one counts its own
        readEntity(expansions.back().tally, type);
        if (expansions.size() != depth) return;
    }
    endCell();
}

/// Whether that record ends the entities of the current cell.
bool DXF::entitiesEnd(std::string_view type)
{
    const bool inBlock = expansions.back().block;
    const bool isEnd = is(type, "ENDSEC") || is(type, "ENDBLK");
    if (isEnd && (inBlock || !isModern() || (is(type, "ENDSEC") && !bare))) {
        if (log()) log().line(type, " of ", labelOf(expansions.back()), " at line ", dxfStream->line());
        if (!inBlock) inSection = false;
        return true;
    }
    if (!isModern()) return false;
    if (inBlock) return endsBlock(type);
    return bare ? is(type, "EOF") : sectionEnds(type);
}

/// Draws the current record, and counts it in `tally` unless that is null.
void DXF::readEntity(DXFTally* tally, std::string_view type)
{
    const std::uint64_t drawnBefore = drawn();
    if (!expansions.back().block)   // of the section itself
        outliers.begin({dxfStream->position().at, dxfStream->line()}, builder.model().vertexCount(),
                       builder.model().curvePointCount());
    reasonOfEntity.reset();
    blockOfEntity = nullptr;
    surfaceInherits = false;
    if (isModern()) {
        tallyOfEntity = tally;
        if (!buildByConventions(type)) return;
        tally = tallyOfEntity;
    } else {
        const DXFRecord& entityRecord = dxfStream->readRecord();
        if (coloured) paintOfEntity = paintOf(entityRecord);
        DXFEntity entity(*this, entityRecord);
        if (entity.isVisible()) entity.build();
    }
    if (!tally) return;
    if (!reasonOfEntity && !blockOfEntity && drawn() != drawnBefore) {
        tally->drawn(type);
        if (is(type, "3DFACE")) return drawRepeats(*tally, type);
        if (options.curves && (is(type, "RAY") || is(type, "XLINE")))
            endlessEntities[{tally, dxfStream->line()}] = type;
    } else if (isCountedRecord(type)) {
        countEntity(*tally, type);
    }
}

/// Counts the entity that has been built and has drawn nothing itself.
void DXF::countEntity(DXFTally& tally, std::string_view type)
{
    // Those in blocks have been counted with their block.
    const bool isInSection = &tally == &tallyOfEntities || (&tally == &tallyOfPaper && !drawsPaper);
    if (isInSection && is(type, "INSERT")) {
        if (blockOfEntity) ++blockOfEntity->whenOn().inserts;
        else countInsert(dxfStream->readRecord());
    }
    if (reasonOfEntity) tally.skipped(type, isDrawn(type) ? *reasonOfEntity : SkipReason::typeNotDrawn);
    else if (blockOfEntity) tally.inserted(type, *blockOfEntity, blockEntered);
    else tally.skipped(type, SkipReason::noSurface);   // all of it was too far out
}

/// The same from the block's recorded contents.
void DXF::playBack()
{
    const std::size_t depth = expansions.size();
    const DXFBlockContents& contents = *expansions.back().block->contents;
    while (expansions.back().nextItem < contents.items.size()) {
        DXFExpansion& cell = expansions.back();
        if (cell.nextItem % itemsBetweenReports == itemsBetweenReports - 1) dxfStream->checkProgress();
        const DXFBlockContents::Item& item = contents.items[cell.nextItem++];
        if (const auto* facet = std::get_if<DXFBlockContents::Facet>(&item)) {
            addMapped(facet->material ? *facet->material : surfaceOf(cell, *facet),
                      contents.cornersOf(*facet),
                      facet->flat < 0 ? nullptr : &contents.flats[static_cast<std::size_t>(facet->flat)],
                      cell.transform, contents.loopEndsOf(*facet), facet->outlined);
        } else if (const auto* curve = std::get_if<DXFBlockContents::Curve>(&item)) {
            addMappedCurve(
                curve->paint < 0
                    ? curve->surface
                    : curveSurface(contents.paints[static_cast<std::size_t>(curve->paint)], cell.inherited),
                contents.cornersOf(*curve), curve->kind, curve->line, cell.transform);
        } else if (const auto* name = std::get_if<DXFBlockContents::MaterialName>(&item)) {
            ++namesMet;
            findMaterial(name->key).name = shown(name->name);
        } else {
            readEntities(*std::get<DXFInsertion*>(item));
            if (expansions.size() != depth) return;
        }
    }
    endCell();
}

/// Adds to what the current cell records, if it does, unless all of that has grown too large.
template <class Add>
void DXF::record(Add add)
{
    if (expansions.empty() || !expansions.back().recording) return;
    std::unique_ptr<DXFBlockContents>& recording = expansions.back().recording;
    recordedBytes -= recording->size();
    add(*recording);
    recordedBytes += recording->size();
    if (recordedBytes <= maxRecordedBytes) return;
    recordedBytes -= recording->size();
    recording.reset();
}

void DXF::skip(std::string_view type, SkippedEntities::Why why, std::string_view what)
{
    // Records that belong to the entity before them, and the end mark of a file that leaves
    // its section open: nothing is missing from the picture.
    if (type == "VERTEX" || type == "SEQEND" || type == "EOF") return;
    if (!reasonOfEntity) reasonOfEntity = reasonOf(why);
    if (why == SkippedEntities::Why::layerOff && !isModern() && isDrawn(type) && offLayers.size() < 2)
        offLayers.emplace(what);
    using Why = SkippedEntities::Why;
    const bool listed =
        drawsPaper && expansions.size() == 1 && (why == Why::typeNotDrawn || why == Why::faulty);
    if (listed) return;   // by the first pass
    std::string room;
    if (isModern() && why == Why::blockUnknown) what = names.readable(what, room);
    SkippedEntities::Entry& entry = skippedEntities.add(type, why, what);
    if (entry.count == 1) entry.canBeDrawn = canBeDrawn(type, why);
    if (expansions.back().summarising) ++expansions.back().block->summary.skips[&entry];
}

void DXF::nameMaterial(std::string_view key, std::string_view name)
{
    ++namesMet;
    findMaterial(key).name = shown(name);
    record([key, name](DXFBlockContents& contents) { contents.addMaterialName(key, name); });
}

void DXF::placeFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                     std::span<const std::uint32_t> loopEnds, bool outlined)
{
    const DXFExpansion& cell = expansions.back();
    if (cell.block) recordFacet(material, corners, flat, loopEnds, outlined);
    addMapped(material, corners, flat, cell.transform, loopEnds, outlined);
}

/// Of a block.
void DXF::recordFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                      std::span<const std::uint32_t> loopEnds, bool outlined)
{
    if (expansions.back().summarising) ++expansions.back().block->summary.facets;
    record([&](DXFBlockContents& contents) {
        contents.addFacet(material, surfaceInherits ? &paintOfEntity : nullptr, corners, flat, loopEnds,
                          outlined);
    });
}

void DXF::addMapped(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                    const AffineTransform<3>& transform, std::span<const std::uint32_t> loopEnds,
                    bool outlined)
{
    ++givenMet;
    if (expansions.back().block) {   // the section itself is drawn as it stands
        placed.resize(corners.size());
        for (std::size_t i = 0; i < corners.size(); ++i) placed[i] = transform(corners[i]);
        corners = placed;
    }
    Plane plane;
    double radiusSquare;
    if (!facetPlane(corners, flat, transform, plane, radiusSquare)) {
        skippedEntities.add("facet", SkippedEntities::Why::tooFarOut);   // of an entity that may draw others
        return;
    }
    outliers.add(corners[0], radiusSquare);
    if (loopEnds.empty()) builder.addPolygon(material, plane, corners);
    else addLoops(material, plane, corners, loopEnds);
    if (outlined) builder.setOutlined();
}

void DXF::placeCurve(std::string_view materialKey, std::string_view layer, std::span<const Point<3>> points,
                     DXFCurveKind kind)
{
    const DXFExpansion& cell = expansions.back();
    const bool byPaint = materialKey.empty() && usesPaint();
    const DXFCurveSurface surface =
        byPaint ? curveSurface(paintOfEntity, cell.inherited)
                : DXFCurveSurface{nullptr, dxfWhite, materialKey.empty() ? layer : materialKey};
    if (cell.summarising) ++cell.block->summary.facets;
    record([&](DXFBlockContents& contents) {
        contents.addCurve(surface, byPaint && paintOfEntity.inherits() ? &paintOfEntity : nullptr, points,
                          kind, dxfStream->line());
    });
    addMappedCurve(surface, points, kind, dxfStream->line(), cell.transform);
}

void DXF::addMappedCurve(const DXFCurveSurface& surface, std::span<const Point<3>> points, DXFCurveKind kind,
                         std::int32_t line, const AffineTransform<3>& transform)
{
    ++givenMet;
    placed.assign(points.begin(), points.end());
    if (expansions.size() > 1) std::transform(placed.begin(), placed.end(), placed.begin(), transform);
    if (!curves.add(surface, kind, placed, line))
        skippedEntities.add("curve", SkippedEntities::Why::tooFarOut);   // of an entity that may draw others
    else if (kind == DXFCurveKind::chords)
        for (const Point<3>& point : placed) outliers.add(point, 0.0);
}

void DXF::addLoops(const Material& material, const Plane& plane, std::span<const Point<3>> corners,
                   std::span<const std::uint32_t> loopEnds)
{
    builder.addFacet(material, plane);
    const std::uint32_t first = builder.model().vertexCount();
    for (const Point<3>& corner : corners) builder.addVertex(corner);
    std::uint32_t start = 0;
    for (const std::uint32_t end : loopEnds) {
        for (std::uint32_t i = start; i < end; ++i)
            builder.addEdge(first + i, first + (i + 1 == end ? start : i + 1));
        start = end;
    }
}

}   // namespace belvor
