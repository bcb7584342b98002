#include "readers/dxf/DXF.h"

#include "errors/BadFile.h"
#include "platform/Workers.h"
#include "readers/common/PagesAhead.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFObjects.h"
#include "resources/Texts.h"
#include "text/Utf8.h"

namespace belvor {

DXF::DXF(std::string_view bytes, const std::string& fileName, Reporter& reporter, const ReadingOptions& how,
         Account& account)
    : DXF(DXFStream::over(bytes, fileName, reporter, how.log, how.rules), how, account)
{
    const unsigned threads = how.threads == 0 ? Workers::usualThreads() : how.threads;
    if (PagesAhead::isWorthIt(bytes, threads)) readWithPagesAhead(bytes);
    else read();
}

void DXF::readWithPagesAhead(std::string_view bytes)
{
    PagesAhead pages(bytes, builder);
    dxfStream->whenFurther(PagesAhead::step, [&pages](const char* at) { pages.reached(at); });
    pages.during([this] { read(); });
}

DXF::DXF(std::unique_ptr<DXFStream> stream, const ReadingOptions& how, Account& account)
    : DXFDrawing(*stream, stream->log(), how.rules, how.curves,
                 how.rules == ReadingRules::modern || hasColours(how)),
      options(how),
      accountOfReading(account),
      dxfStream(std::move(stream)),
      coloured(hasColours(how)),
      layers(DXFNameOrder{isModern()}),
      blocks(DXFNameOrder{isModern()}),
      missingBlocks(DXFNameOrder{isModern()}),
      insertsOfUnknown(DXFNameOrder{isModern()})
{}

DXF::~DXF() = default;

void DXF::read()
{
    accountOfReading.byteOffsets = dxfStream->isBinary();
    readAll();
    drawPaperSpace();
    warnOfOutliers();
    drawCurves();
    writeAccount(accountOfReading);
    forgetContents();   // counts what is left to count
    accountOfReading.notDrawn = skippedEntities.list();
    log().close();
    accountOfReading.logFailure = log().failure();
}

void DXF::readAll()
{
    bare = isModern() && !findsSection();
    if (isModern()) tallyOfOrphans.start();
    try {
        if (bare ? readBareEntities() : readSections()) return;
        if (inSection) assume("ENDSEC", true);
        assume("EOF", true);
        accountOfReading.warn(textOf(Text::drawingBreaksOff));
    } catch (const BadFile& fault) {
        if (!isModern() || !losesPlace(fault)) throw;
        endAt(fault);
    }
}

/// False when the drawing ends within a section or without its end mark.
bool DXF::readSections()
{
    for (DXFPosition before = dxfStream->position(); dxfStream->nextRecord();
         before = dxfStream->position()) {
        const std::string_view type = dxfStream->type();
        if (type == "EOF") {
            log().line("EOF group - end of file here");
            return true;
        }
        if (type != "SECTION") {
            if (isModern()) readOutsideSections(before);
            continue;
        }
        const int line = dxfStream->line();
        std::string name(dxfStream->readRecord().textOr(2, ""));
        if (isModern() && name.empty()) name = nameOfContent();
        const bool known = name == "HEADER" || name == "TABLES" || name == "BLOCKS" || name == "OBJECTS"
                           || name == "ENTITIES";
        log().line(known ? "Main " : "Ignoring ", name, " section at line ", line);
        inSection = true;
        if (known) readSection(name);
        else if (isModern()) passSection();
    }
    return false;
}

/// Of a file without sections; the result as above.
bool DXF::readBareEntities()
{
    readAllEntities();
    return is(dxfStream->type(), "EOF");
}

void DXF::readSection(const std::string& name)
{
    if (name == "HEADER") readHeader();   // a drawing of any release is read the same way
    else if (name == "TABLES") readTables();
    else if (name == "BLOCKS") {
        readBlocks();
        if (missingFound) forgetContents();   // an INSERT that had no block has one from now on
        missingFound = false;
    } else if (name == "OBJECTS" && isModern()) {
        passSection();
    } else if (name == "OBJECTS") {
        readObjects(*dxfStream, false);
        inSection = !is(dxfStream->type(), "ENDSEC");
    } else {
        readEntitiesSection();
    }
}

/// Nothing of it reaches the model.
void DXF::passSection()
{
    while (dxfStream->nextRecord() && !sectionEnds(dxfStream->type())) {}
}

void DXF::readEntitiesSection()
{
    constexpr bool dictionaryWanted = false;   // nothing in a drawing's objects reaches the model yet
    if (dictionaryWanted) searchDictionary(*dxfStream);
    readAllEntities();
}

void DXF::writeAccount(Account& account)
{
    if (isModern())
        for (auto& [name, block] : blocks)
            if (!block.tally.walked && !(block.whenOff && block.whenOff->tally.walked)) tryBlock(block);
    addTo(account, {&tallyOfEntities, &tallyOfPaper}, tallyOfOrphans, blocks,
          [this](std::string_view type) { return isDrawn(type); });
    if (names.metUnknown()) account.warn(textOf(Text::codePageUnknown));
    if (account.read() == 0) account.warn(textOf(Text::noEntities));
    else if (drawn() == 0 && offLayers.size() == 1)
        account.warn(filledText(Text::everythingOff, {*offLayers.begin()}));
}

/// Of the few entities that make the extent much larger, by their handles or lines.
void DXF::warnOfOutliers()
{
    constexpr std::size_t mostNamed = 10;
    outliers.begin({}, builder.model().vertexCount(), builder.model().curvePointCount());
    const DXFOutliers::Result found = outliers.find(builder.model(), [this] { dxfStream->checkProgress(); });
    if (found.positions.empty()) return;
    std::string list;
    for (std::size_t i = 0; i < found.positions.size() && i < mostNamed; ++i)
        list += (i == 0 ? "" : ", ") + nameOfEntity(found.positions[i]);
    if (found.positions.size() > mostNamed) list += ", ...";
    accountOfReading.warn(filledText(Text::fewEntitiesFarOut, {std::to_string(found.positions.size()),
                                                               std::to_string(found.entities), list}));
}

/// "handle 1F", of the entity whose record is at that position behind its type; without one "line 12".
std::string DXF::nameOfEntity(const DXFPosition& position)
{
    constexpr std::size_t longest = 32;
    dxfStream->seek(position);
    for (DXFGroup group; dxfStream->readGroupCode(group) && !startsRecord(group.code); group = {}) {
        dxfStream->readGroupValue(group);
        if (group.code == 5 && !group.text.empty())
            return filledText(Text::handleOf, {validUtf8(group.text.substr(0, longest))});
    }
    return filledText(accountOfReading.byteOffsets ? Text::byteOf : Text::lineOf,
                      {std::to_string(position.line)});
}

const DXFLayer& DXF::lookUpLayer(std::string_view name)
{
    std::string room;
    const std::string_view key = isModern() ? names.readable(name, room) : name;
    auto place = layers.lower_bound(key);
    if (place == layers.end() || layers.key_comp()(key, place->first)) {
        place = layers.emplace_hint(place, key, DXFLayer());
        place->second.name = place->first;
        log().line("Adding LAYER ", name);
    }
    return place->second;
}

DXFBlock* DXF::findBlock(std::string_view name)
{
    std::string room;
    const std::string_view key = isModern() ? names.readable(name, room) : name;
    const auto found = blocks.find(key);
    if (found != blocks.end()) return &found->second;
    missingBlocks.emplace(key);
    return nullptr;
}

Material& DXF::lookUpMaterial(std::string_view key)
{
    const std::size_t before = builder.model().materials().size();
    Material& material = builder.findMaterial(key);
    if (builder.model().materials().size() != before) {
        material.name = validUtf8(key);
        log().line("add new material ", key);
    }
    return material;
}

}   // namespace belvor
