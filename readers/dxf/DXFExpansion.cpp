#include "readers/dxf/DXF.h"
#include "readers/dxf/DXFEntity.h"

#include <algorithm>
#include <cmath>

namespace belvor {
namespace {

constexpr std::size_t mostRecordedBytes = std::size_t{64} << 20;   // of all blocks; beyond, their text is read again
constexpr std::size_t itemsBetweenReports = 128;

const char* labelOf(const DXFExpansion& expansion) noexcept { return expansion.block ? "INSERTed block" : "ENTITIES section"; }

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
    DXFExpansion& outer = expansions.back();
    if (outer.recording) outer.recording->addInsertion(insertion);
    const auto found = blocks.find(insertion.block);
    if (found == blocks.end()) return;
    if (found->second.expanding) {   // not for the record: it depends on who inserts the block
        skippedEntities.add("INSERT", SkippedEntities::Why::blockInItself, insertion.block);
        return;
    }
    DXFExpansion inner;
    inner.block = &found->second;
    inner.insertion = insertion;
    inner.placement = outer.transform * insertion.placement();
    inner.block->expanding = true;
    expansions.push_back(std::move(inner));   // `outer` may have moved
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
            log().line("InsertTransform [", insertion.scale, "    scale ", insertion.degrees, " degrees", " rotate ",
                       insertion.position, " translate ", insertion.tilt.toWorld(), " tilt ", "] * ",
                       expansions[expansions.size() - 2].transform);
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
        for (const auto& [entry, count] : block.contents->skips) entry->count += count;
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
        if (cell.recording) {
            recordedBytes += cell.recording->size();
            cell.block->contents = std::move(cell.recording);
        }
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
                      facet->flat < 0 ? nullptr : &contents.flats[static_cast<std::size_t>(facet->flat)], cell.transform);
        } else if (const auto* name = std::get_if<DXFBlockContents::MaterialName>(&item)) {
            findMaterial(name->key).name = name->name;
        } else {
            readEntities(*std::get<DXFInsertion*>(item));
            if (expansions.size() != depth) return;
        }
    }
    endCell();
}

void DXF::nameMaterial(std::string_view key, std::string_view name)
{
    findMaterial(key).name = name;
    if (!expansions.empty() && expansions.back().recording) expansions.back().recording->addMaterialName(key, name);
}

void DXF::placeFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat)
{
    DXFExpansion& cell = expansions.back();
    if (cell.recording) {
        cell.recording->addFacet(material, corners, flat);
        if (recordedBytes + cell.recording->size() > mostRecordedBytes) cell.recording.reset();
    }
    addMapped(material, corners, flat, cell.transform);
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
