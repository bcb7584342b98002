#include "readers/dxf/DXF.h"
#include "readers/dxf/DXFEntity.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

constexpr std::size_t mostRecordedBytes = std::size_t{64}
                                          << 20;   // of all blocks; beyond, their text is read again
constexpr std::size_t itemsBetweenReports = 128;

const char* labelOf(const DXFExpansion& expansion) noexcept
{
    return expansion.block ? "INSERTed block" : "ENTITIES section";
}

/// And small enough to be added up.
bool isFinite(std::span<const Point<3>> corners) noexcept
{
    double sum = 0.0;   // a term that is infinite or no number leaves no number behind
    for (const Point<3>& corner : corners) sum += (corner[0] + corner[1] + corner[2]) * 0.0;
    return sum == 0.0;
}

}   // namespace

void DXF::forgetContents()
{
    for (auto& [name, block] : blocks) {
        block.contents.reset();
        block.walks = 0;
    }
    recordedBytes = 0;
}

void DXF::readAllEntities()
{
    expansions.emplace_back();
    startCell();
    while (!expansions.empty()) {
        if (expansions.back().playing) playBack();
        else walk();
    }
}

void DXF::readEntities(const DXFInsertion& insertion)
{
    const auto found = blocks.find(insertion.block);
    if (found == blocks.end()) return;
    record([&insertion](DXFBlockContents& contents) { contents.addInsertion(insertion); });
    if (found->second.expanding) {   // not for the record: it depends on who inserts the block
        skippedEntities.add("INSERT", SkippedEntities::Why::blockInItself, insertion.block);
        return;
    }
    if (const auto& contents = found->second.contents; contents && contents->onlySkips && !log())
        return contents->countSkips(insertion.cells());
    DXFExpansion inner;
    inner.block = &found->second;
    inner.insertion = insertion;
    inner.placement = expansions.back().transform * insertion.placement();
    inner.block->expanding = true;
    expansions.push_back(std::move(inner));
    startCell();
}

/// Makes ready for the entities of the cell at (column, row).
void DXF::startCell()
{
    DXFExpansion& cell = expansions.back();
    dxfStream->checkProgress();
    if (cell.block) {
        const DXFInsertion& insertion = cell.insertion;
        const Vector<3> offset(cell.column * insertion.columnSpacing, cell.row * insertion.rowSpacing, 0.0);
        const Vector<3> base = cell.block->base.vector();
        cell.transform = cell.placement * UniformTransform<3>::translation(offset - base);
    }
    if (log()) {
        if (cell.block) {
            const DXFInsertion& insertion = cell.insertion;
            log().line("Insert hook");
            log().line("InsertTransform [", insertion.scale, "    scale ", insertion.degrees, " degrees",
                       " rotate ", insertion.position, " translate ", insertion.tilt.toWorld(), " tilt ",
                       "] * ", expansions[expansions.size() - 2].transform);
            log().line("InsertTransform =", " ", cell.transform);
        }
        log().line("ReadEntitiesSection for ", labelOf(cell), " from line ", dxfStream->position().line);
        log().line("    transform = ", cell.transform);
    }
    if (!cell.block) return;

    DXFBlock& block = *cell.block;
    cell.nextItem = 0;
    cell.playing = block.contents && !log();   // a log tells of every record: it needs the text
    if (cell.playing) {
        block.contents->countSkips(1);
        return;
    }
    cell.back = dxfStream->position();
    log().line("Seek to block at line ", block.entities.line);
    dxfStream->seek(block.entities);
    if (++block.walks == 2 && !log()) cell.recording = std::make_unique<DXFBlockContents>();
}

/// Leaves the current cell, for the next one or for the entities around the insertion.
void DXF::endCell()
{
    DXFExpansion& cell = expansions.back();
    if (cell.block && !cell.playing) {
        log().line("Return from block to line ", cell.back.line);
        dxfStream->seek(cell.back);
        if (cell.recording) finishRecording();
    }
    if (++cell.row >= cell.insertion.rows) {
        cell.row = 0;
        ++cell.column;
    }
    if (cell.column < cell.insertion.columns) return startCell();
    if (cell.block) cell.block->expanding = false;
    expansions.pop_back();
}

/// Reads entities up to the end of the cell or to the first insertion among them.
void DXF::walk()
{
    const std::size_t depth = expansions.size();
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (is(type, "ENDSEC") || is(type, "ENDBLK")) {
            if (log()) log().line(type, " of ", labelOf(expansions.back()), " at line ", dxfStream->line());
            break;
        }
        DXFEntity entity(*this, dxfStream->readRecord());
        if (entity.isVisible()) entity.build();
        if (expansions.size() != depth) return;
    }
    endCell();
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
            addMapped(*facet->material, {contents.corners.data() + facet->firstCorner, facet->cornerCount},
                      facet->flat < 0 ? nullptr : &contents.flats[static_cast<std::size_t>(facet->flat)],
                      cell.transform);
        } else if (const auto* name = std::get_if<DXFBlockContents::MaterialName>(&item)) {
            findMaterial(name->key).name = name->name;
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
    if (recordedBytes <= mostRecordedBytes) return;
    recordedBytes -= recording->size();
    recording.reset();
}

/// Gives the block what the cell that ends has recorded. If that is nothing to draw, the cells
/// to come are counted at once: there may be more of them than anyone could wait for.
void DXF::finishRecording()
{
    DXFExpansion& cell = expansions.back();
    DXFBlockContents& contents = *(cell.block->contents = std::move(cell.recording));
    contents.onlySkips = summarise(contents);
    if (!contents.onlySkips) return;
    const DXFInsertion& insertion = cell.insertion;
    const auto rows = static_cast<std::uint64_t>(insertion.rows);
    contents.countSkips(insertion.cells() - static_cast<std::uint64_t>(cell.column) * rows
                        - static_cast<std::uint64_t>(cell.row) - 1);
    cell.column = insertion.columns - 1;
    cell.row = insertion.rows - 1;
}

/// Whether nothing is drawn, neither by the contents nor by their insertions, whose skips they take over
/// then.
bool DXF::summarise(DXFBlockContents& contents) const
{
    std::map<const DXFBlockContents*, std::uint64_t> cells;
    for (const DXFBlockContents::Item& item : contents.items) {
        const auto* const insertion = std::get_if<DXFInsertion*>(&item);
        if (!insertion) return false;
        const DXFBlock& block = blocks.find((*insertion)->block)->second;
        if (block.expanding || !block.contents || !block.contents->onlySkips)
            return false;   // or what it gives is not known yet
        std::uint64_t& times = cells[block.contents.get()];
        times = counted(times, (*insertion)->cells(), 1);
    }
    for (const auto& [inner, times] : cells)
        for (const auto& [entry, count] : inner->skips)
            contents.skips[entry] = counted(contents.skips[entry], count, times);
    return true;
}

void DXF::skip(std::string_view type, SkippedEntities::Why why, std::string_view what)
{
    // Records that belong to the entity before them, and the end mark of a file that leaves
    // its section open: nothing is missing from the picture.
    if (type == "VERTEX" || type == "SEQEND" || type == "EOF") return;
    SkippedEntities::Entry& entry = skippedEntities.add(type, why, what);
    record([&entry](DXFBlockContents& contents) { contents.addSkip(entry); });
}

void DXF::nameMaterial(std::string_view key, std::string_view name)
{
    findMaterial(key).name = name;
    record([key, name](DXFBlockContents& contents) { contents.addMaterialName(key, name); });
}

void DXF::placeFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat)
{
    record([&](DXFBlockContents& contents) { contents.addFacet(material, corners, flat); });
    addMapped(material, corners, flat, expansions.back().transform);
}

void DXF::addMapped(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                    const AffineTransform<3>& transform)
{
    if (expansions.size() > 1) {   // the section itself is drawn as it stands
        placed.resize(corners.size());
        std::transform(corners.begin(), corners.end(), placed.begin(), transform);
        corners = placed;
    }
    const Vector<3> flatNormal = flat ? transform(flat->x()).cross(transform(flat->y())) : Vector<3>(0, 0, 1);
    const Plane plane = planeOf(corners, flatNormal);
    if (!std::isfinite(plane.offset()) && !isFinite(corners)) {   // such a corner leaves no finite offset
        skippedEntities.add("facet", SkippedEntities::Why::tooFarOut);   // of an entity that may draw others
        return;
    }
    addPolygon(material, plane, corners);
}

}   // namespace belvor
