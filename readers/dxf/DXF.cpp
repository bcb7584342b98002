#include "readers/dxf/DXF.h"

#include "errors/BadFile.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFObjects.h"
#include "resources/Texts.h"

namespace belvor {

DXF::DXF(const std::string& fileName, Reporter& reporter, const ReadingOptions& how, Account& account)
    : options(how),
      accountOfReading(account),
      dxfStream(DXFStream::open(fileName, reporter, how.log, how.rules))
{
    read();
}

DXF::DXF(std::string_view bytes, const std::string& fileName, Reporter& reporter, const ReadingOptions& how,
         Account& account)
    : options(how),
      accountOfReading(account),
      dxfStream(DXFStream::over(bytes, fileName, reporter, how.log, how.rules))
{
    read();
}

DXF::~DXF() = default;

void DXF::read()
{
    accountOfReading.byteOffsets = dxfStream->isBinary();
    readAll();
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
    while (dxfStream->nextRecord()) {
        const std::string_view type = dxfStream->type();
        if (type == "EOF") {
            log().line("EOF group - end of file here");
            return true;
        }
        if (type != "SECTION") continue;
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
            if (!block.tally.walked) tryBlock(block);
    const auto isDrawn = [this](std::string_view type) { return DXFEntity::isDrawn(type, options.rules); };
    addTo(account, tallyOfEntities, tallyOfOrphans, blocks, isDrawn);
    if (account.read() == 0) account.warn(textOf(Text::noEntities));
    else if (builder.model().facetCount() == 0 && offLayers.size() == 1)
        account.warn(filledText(Text::everythingOff, {*offLayers.begin()}));
}

const DXFLayer& DXF::findLayer(std::string_view name)
{
    if (recentLayer && isSameText(recentLayerName, name)) return *recentLayer;
    auto place = layers.lower_bound(name);
    if (place == layers.end() || place->first != name) {
        place = layers.emplace_hint(place, name, DXFLayer());
        log().line("Adding LAYER ", name);
    }
    recentLayer = &place->second;
    recentLayerName = name;
    return *recentLayer;
}

const DXFBlock* DXF::findBlock(std::string_view name)
{
    const auto found = blocks.find(name);
    if (found != blocks.end()) return &found->second;
    missingBlocks.insert(name);
    return nullptr;
}

Material& DXF::findMaterial(std::string_view key)
{
    if (recentMaterial && isSameText(recentMaterialKey, key)) return *recentMaterial;
    const std::size_t before = builder.model().materials().size();
    recentMaterial = &builder.findMaterial(key);
    recentMaterialKey = key;
    if (builder.model().materials().size() != before) log().line("add new material ", key);
    return *recentMaterial;
}

}   // namespace belvor
