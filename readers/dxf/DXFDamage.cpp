#include "errors/BadFile.h"
#include "readers/dxf/DXF.h"
#include "readers/dxf/DXFDispatch.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFTrial.h"
#include "resources/Texts.h"

namespace belvor {
namespace {

std::string_view shownType(std::string_view type) noexcept { return isRecordType(type) ? type : "?"; }

}   // namespace

bool losesPlace(const BadFile& fault) noexcept
{
    return fault.code() == BadFile::badGroupCode || fault.code() == BadFile::badGroupValue
           || fault.code() == BadFile::pastEnd;
}

/// Whether the file has a SECTION; the stream comes back to its start. Throws BadFile when there is not even
/// a record.
bool DXF::findsSection()
{
    const DXFPosition start = dxfStream->position();
    bool recordsMet = false, found = false;
    try {
        while (!found && dxfStream->nextRecord()) {
            recordsMet = true;
            found = is(dxfStream->type(), "SECTION");
        }
    } catch (const BadFile& fault) {
        if (!recordsMet || !losesPlace(fault)) throw;
    }
    if (!recordsMet)
        throw BadFile(BadFile::badGroup, textOf(Text::noRecord), {}, dxfStream->fileName(), BadFile::noLine);
    dxfStream->seek(start);
    return found;
}

/// The section that records of that type stand in; empty when the type does not tell.
std::string DXF::sectionOf(std::string_view type) const
{
    if (is(type, "BLOCK")) return "BLOCKS";
    if (is(type, "TABLE")) return "TABLES";
    if (type.starts_with('$')) return "HEADER";
    const bool isEntity = DXFEntity::isDrawn(type, options.rules, true) || is(type, "TEXT")
                          || is(type, "MTEXT") || is(type, "VIEWPORT");
    return isEntity ? "ENTITIES" : "";
}

/// What a section without a name holds, by its first record; empty when that does not tell.
std::string DXF::nameOfContent()
{
    accountOfReading.repair(dxfStream->line(), "SECTION", textOf(Text::sectionNameless));
    const DXFPosition start = dxfStream->position();
    if (!dxfStream->nextRecord()) return {};
    std::string name = sectionOf(dxfStream->type());
    dxfStream->seek(start);
    return name;
}

/// The current record, which starts at `start`, is in no section, as after an ENDSEC too many or without its
/// SECTION: a section is taken to start before it.
void DXF::readOutsideSections(const DXFPosition& start)
{
    const std::string name = sectionOf(dxfStream->type());
    if (name.empty()) return;
    accountOfReading.repair(dxfStream->line(), "SECTION",
                            filledText(Text::assumedBefore, {shownType(dxfStream->type())}));
    dxfStream->seek(start);
    inSection = true;
    readSection(name);
}

/// The place is lost: what has been read so far is the drawing.
void DXF::endAt(const BadFile& fault)
{
    expansions.clear();
    accountOfReading.repair(fault.line(), dxfStream->type(), filledText(Text::readingEnds, {fault.fault()}));
    accountOfReading.warn(
        filledText(accountOfReading.byteOffsets ? Text::placeLostAtOffset : Text::placeLostAtLine,
                   {std::to_string(fault.line())}));
}

/// A record of that type, which starts at `line`, is damaged.
void DXF::leaveOut(const BadFile& fault, std::string_view type, std::int32_t line)
{
    reasonOfEntity = SkipReason::faulty;
    blockOfEntity = nullptr;
    if (!firstTime) return;
    const Text text = fault.line() == line           ? Text::leftOut
                      : accountOfReading.byteOffsets ? Text::leftOutAtOffset
                                                     : Text::leftOutAtLine;
    accountOfReading.repair(line, shownType(type),
                            filledText(text, {fault.fault(), std::to_string(fault.line())}));
}

void DXF::assume(std::string_view mark, bool atEnd)
{
    if (!firstTime || (drawsPaper && expansions.size() <= 1)) return;   // the first pass has told it
    const std::string where =
        atEnd ? textOf(Text::assumedAtEnd) : filledText(Text::assumedBefore, {shownType(dxfStream->type())});
    accountOfReading.repair(atEnd ? dxfStream->position().line : dxfStream->line(), mark, where);
}

bool endsSection(std::string_view type) noexcept { return is(type, "SECTION") || is(type, "EOF"); }

/// Whether a record of that type ends the section around it. In the modern reading another section does,
/// and the end of the file, though the end mark is missing.
bool DXF::sectionEnds(std::string_view type)
{
    if (!is(type, "ENDSEC")) {
        if (!isModern() || !endsSection(type)) return false;
        assume("ENDSEC", false);
        dxfStream->readRecord();
        dxfStream->pushBack();
    }
    inSection = false;
    return true;
}

std::int32_t DXF::integerOrDefault(const DXFRecord& record, int code, std::int32_t otherwise)
{
    try {
        return record.integerOr(code, otherwise);
    } catch (const BadFile& fault) {
        takeDefault(record, fault);
        return otherwise;
    }
}

double DXF::realOrZero(const DXFRecord& record, int code)
{
    try {
        return record.realOr(code, 0.0);
    } catch (const BadFile& fault) {
        takeDefault(record, fault);
        return 0.0;
    }
}

/// A layer or a block with a bad number: many entities hang on it, so it is not left out.
void DXF::takeDefault(const DXFRecord& record, const BadFile& fault)
{
    accountOfReading.repair(fault.line(), record.type(), filledText(Text::defaultTaken, {fault.fault()}));
}

/// Builds the current record, which is hidden, for nothing: throws BadFile when it is damaged. Whether it has
/// surfaces.
bool DXF::tryHidden(std::string_view type)
{
    if (!isDrawn(type)) return false;
    DXFTrial trial(*this);
    DXFEntity(trial, dxfStream->readRecord()).build();
    return trial.drawnSoFar() != 0;
}

/// Counts a record of a block that is never inserted.
void DXF::tryRecord(DXFTally& tally, std::string_view type)
{
    if (!isCountedRecord(type)) return;
    const std::int32_t line = dxfStream->line();
    reasonOfEntity = isDrawn(type) ? SkipReason::blockNeverInserted : SkipReason::typeNotDrawn;
    try {
        if (dxfStream->readRecord().integerOr(60, 0) == 1 && reasonOfEntity != SkipReason::typeNotDrawn)
            reasonOfEntity = SkipReason::invisible;
        tryHidden(type);
    } catch (const BadFile& fault) {
        leaveOut(fault, type, line);
        tally.skipped(type, *reasonOfEntity);
        if (losesPlace(fault)) throw;
        return;
    }
    tally.skipped(type, *reasonOfEntity);
}

void DXF::tryBlock(DXFBlock& block)
{
    block.tally.start();
    dxfStream->seek(block.entities);
    try {
        while (dxfStream->nextRecord() && !endsBlock(dxfStream->type()))
            tryRecord(block.tally, dxfStream->type());
    } catch (const BadFile& fault) {
        if (!losesPlace(fault)) throw;   // the place is told already
    }
}

}   // namespace belvor
