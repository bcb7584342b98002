#include "readers/dxf/DXFTables.h"

#include "calcore/Number.h"
#include "errors/BadFile.h"
#include "readers/dxf/DXF.h"
#include "resources/Texts.h"

namespace belvor {

int releaseOf(std::string_view version) noexcept
{
    if (version.size() <= 4) return 0;
    version.remove_prefix(4);
    while (!version.empty() && isBlank(version.front())) version.remove_prefix(1);
    if (!version.empty() && version.front() == '+') version.remove_prefix(1);
    int number = 0;
    for (std::size_t i = 0; i < version.size() && isDigit(version[i]) && number < 1000000; ++i)
        number = number * 10 + (version[i] - '0');
    if (number >= 12) return 13;
    return number == 9 ? 11 : number == 6 ? 10 : 0;
}

int DXF::readHeader()
{
    int release = 0;
    while (dxfStream->nextRecord()) {
        if (sectionEnds(dxfStream->type())) {
            log().line("ENDSEC of HEADER section at line ", dxfStream->line());
            break;
        }
        if (isModern()) readDrawingVariable();
        else if (dxfStream->type() == "$ACADVER") release = releaseOf(dxfStream->readRecord().textOr(1, ""));
    }
    return release;
}

/// What a header variable means for the modern reading.
void DXF::readDrawingVariable()
{
    struct UnitRow {
        std::int32_t ofDrawing;
        std::uint32_t code;
    };
    constexpr UnitRow knownUnits[] = {{1, 7}, {2, 8}, {4, 2}, {5, 3}, {6, 4}, {7, 5}, {9, 6}, {13, 1}};
    const std::string_view type = dxfStream->type();
    if (is(type, "$ACADVER")) names.setRelease(dxfStream->readRecord().textOr(1, ""));
    else if (is(type, "$DWGCODEPAGE")) names.setCodePage(dxfStream->readRecord().textOr(3, ""));
    else if (is(type, "$INSUNITS")) {
        const std::int32_t unit = dxfStream->readRecord().readableInteger(70);
        Units units;
        for (const UnitRow& row : knownUnits)
            if (row.ofDrawing == unit) units.code = row.code;
        builder.setUnits(units);
    }
}

void DXF::readTables()
{
    while (dxfStream->nextRecord()) {
        if (sectionEnds(dxfStream->type())) {
            log().line("ENDSEC of TABLES section at line ", dxfStream->line());
            return;
        }
        if (dxfStream->type() == "TABLE" && dxfStream->readRecord().textOr(2, "") == "LAYER") readLayers();
    }
}

void DXF::readLayers()
{
    log().line("start of LAYERs TABLE at line ", dxfStream->line());
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (is(type, "ENDSEC")) {
            log().line("ENDSEC within LAYERs TABLE at line ", dxfStream->line());
            dxfStream->pushBack();   // it ends the tables as well
            return;
        }
        if (isModern() && (is(type, "SECTION") || is(type, "TABLE") || is(type, "EOF"))) {
            dxfStream->readRecord();
            dxfStream->pushBack();
            return;
        }
        if (dxfStream->type() == "ENDTAB") {
            log().line("ENDTAB of LAYERs TABLE at line ", dxfStream->line());
            return;
        }
        if (!isModern() || is(dxfStream->type(), "LAYER")) addLayer(dxfStream->readRecord());
    }
}

void DXF::addLayer(const DXFRecord& record)
{
    const std::string_view name = record.textOr(2, "");
    const std::int32_t flags = isModern() ? integerOrDefault(record, 70, 0) : record.integer(70);
    const std::int32_t colour = isModern() ? integerOrDefault(record, 62, 7) : record.integer(62);
    DXFLayer layer;
    layer.flags = static_cast<std::int16_t>(flags);
    layer.colour = static_cast<std::int16_t>(colour);
    if (coloured) layer.shown = colourOfLayer({colour, integerIfAny(record, 420)});
    std::string room;
    const auto [place, isNew] = layers.emplace(isModern() ? names.readable(name, room) : name, layer);
    if (!isNew) {
        log().line("Duplicate LAYER definition ", name, " at line ", record.line());
        return;
    }
    place->second.name = place->first;
    log().line("Adding LAYER definition ", name, " (Frozen? ", layer.frozen() ? "1" : "0", ", Off? ",
               layer.off() ? "1" : "0", ") at line ", record.line());
}

void DXF::readBlocks()
{
    DXFBlock* latest = nullptr;   // the record before was its BLOCK
    DXFTally* tally = &tallyOfOrphans;
    bool inBlock = false;
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (latest) latest->isEmpty = isModern() ? endsBlock(type) : is(type, "ENDSEC") || is(type, "ENDBLK");
        latest = nullptr;
        if (inBlock && (is(type, "ENDSEC") || (isModern() && endsSection(type)))) assume("ENDBLK", false);
        if (sectionEnds(type)) {
            log().line("ENDSEC of BLOCKS section at line ", dxfStream->line());
            return;
        }
        if (is(type, "BLOCK")) {
            if (inBlock) assume("ENDBLK", false);
            inBlock = true;
            latest = addBlock(dxfStream->readRecord());
            tally = latest ? &latest->tally : &tallyOfOrphans;
        } else if (is(type, "ENDBLK")) {
            inBlock = false;
            tally = &tallyOfOrphans;
        } else if (isModern() && tally == &tallyOfOrphans) {
            tryRecord(*tally, type);
        } else if (isCountedRecord(type)) {
            tally->met(type);
        }
        if (is(type, "INSERT")) countInsert(dxfStream->readRecord());
    }
    if (latest) latest->isEmpty = true;
    if (inBlock) assume("ENDBLK", true);
}

/// For the block that it names, drawn or not.
void DXF::countInsert(const DXFRecord& record)
{
    std::string room;
    std::string_view name = record.textOr(2, "");
    if (isModern()) name = names.readable(name, room);
    const auto block = blocks.find(name);
    if (block != blocks.end()) ++block->second.inserts;
    else ++insertsOfUnknown.try_emplace(std::string(name)).first->second;
}

/// The block of a BLOCK record; in the modern reading null for one without a name, and for the second one of
/// a name.
DXFBlock* DXF::addBlock(const DXFRecord& record)
{
    std::string room;
    std::string name(isModern() ? names.readable(record.textOr(2, ""), room) : record.text(2));
    if (isModern() && (name.empty() || blocks.contains(name))) {
        accountOfReading.repair(record.line(), "BLOCK",
                                textOf(name.empty() ? Text::blockNameless : Text::blockSecond));
        return nullptr;
    }
    DXFBlock block;
    if (isModern()) block.base = {realOrZero(record, 10), realOrZero(record, 20), realOrZero(record, 30)};
    else block.base = record.point(10);
    block.layer = record.textOr(8, "");
    block.entities = dxfStream->position();
    constexpr std::int32_t external = 4;
    block.isExternal = (record.readableInteger(70) & external) != 0;
    const auto [place, isNew] = blocks.try_emplace(std::move(name), std::move(block));
    if (!isNew) throw BadFile(BadFile::duplicateBlock, place->first, dxfStream->fileName(), record.line());
    log().line("Adding BLOCK definition ", place->first, " at line ", record.line());
    place->second.name = place->first;
    missingFound |= missingBlocks.contains(place->first);
    if (const auto met = insertsOfUnknown.find(place->first); met != insertsOfUnknown.end())
        place->second.inserts = met->second;
    return &place->second;
}

}   // namespace belvor
