#include "readers/dxf/DXFTables.h"

#include "calcore/Number.h"
#include "errors/BadFile.h"
#include "readers/dxf/DXF.h"

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
        if (dxfStream->type() == "ENDSEC") {
            log().line("ENDSEC of HEADER section at line ", dxfStream->line());
            break;
        }
        if (dxfStream->type() == "$ACADVER") release = releaseOf(dxfStream->readRecord().textOr(1, ""));
    }
    return release;
}

void DXF::readTables()
{
    while (dxfStream->nextRecord()) {
        if (dxfStream->type() == "ENDSEC") {
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
        if (dxfStream->type() == "ENDSEC") {
            log().line("ENDSEC within LAYERs TABLE at line ", dxfStream->line());
            dxfStream->pushBack();   // it ends the tables as well
            return;
        }
        if (dxfStream->type() == "ENDTAB") {
            log().line("ENDTAB of LAYERs TABLE at line ", dxfStream->line());
            return;
        }
        addLayer(dxfStream->readRecord());
    }
}

void DXF::addLayer(const DXFRecord& record)
{
    const std::string_view name = record.textOr(2, "");
    const auto flags = static_cast<std::int16_t>(record.integer(70));
    const auto colour = static_cast<std::int16_t>(record.integer(62));
    const DXFLayer layer{flags, colour};
    if (!layers.emplace(name, layer).second) {
        log().line("Duplicate LAYER definition ", name, " at line ", record.line());
        return;
    }
    log().line("Adding LAYER definition ", name, " (Frozen? ", layer.frozen() ? "1" : "0", ", Off? ",
               layer.off() ? "1" : "0", ") at line ", record.line());
}

void DXF::readBlocks()
{
    DXFBlock* latest = nullptr;   // the record before was its BLOCK
    DXFTally* tally = &tallyOfOrphans;
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (latest) latest->isEmpty = type == "ENDSEC" || type == "ENDBLK";
        latest = nullptr;
        if (type == "ENDSEC") {
            log().line("ENDSEC of BLOCKS section at line ", dxfStream->line());
            return;
        }
        if (is(type, "BLOCK")) {
            latest = &addBlock(dxfStream->readRecord());
            tally = &latest->tally;
        } else if (is(type, "ENDBLK")) {
            tally = &tallyOfOrphans;
        } else if (isCountedRecord(type)) {
            tally->met(type);
        }
    }
    if (latest) latest->isEmpty = true;
}

DXFBlock& DXF::addBlock(const DXFRecord& record)
{
    std::string name(record.text(2));
    DXFBlock block;
    block.base = record.point(10);
    block.layer = record.textOr(8, "");
    block.entities = dxfStream->position();
    constexpr std::int32_t external = 4;
    block.isExternal = (record.readableInteger(70) & external) != 0;
    const auto [place, isNew] = blocks.try_emplace(std::move(name), std::move(block));
    if (!isNew) throw BadFile(BadFile::duplicateBlock, place->first, dxfStream->fileName(), record.line());
    log().line("Adding BLOCK definition ", place->first, " at line ", record.line());
    place->second.name = place->first;
    missingFound |= missingBlocks.contains(place->second.name);
    return place->second;
}

}   // namespace belvor
