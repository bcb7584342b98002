#pragma once

#include "readers/common/Reading.h"
#include "readers/dxf/DXFBlock.h"
#include "readers/dxf/DXFDrawing.h"
#include "readers/dxf/DXFEntity.h"
#include "readers/dxf/DXFFarCells.h"
#include "readers/dxf/DXFOutliers.h"
#include "readers/dxf/DXFUndrawn.h"
#include "scene/ModelBuilder.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace belvor {

class BadFile;

/// Whether nothing can be read behind that fault, since nobody knows where the next group starts.
bool losesPlace(const BadFile& fault) noexcept;

/// Whether a record of that type cannot stand within a section.
bool endsSection(std::string_view type) noexcept;
/// The same of a block.
inline bool endsBlock(std::string_view type) noexcept
{
    return is(type, "ENDBLK") || is(type, "ENDSEC") || is(type, "BLOCK") || endsSection(type);
}

/// Reads a DXF drawing, text or binary: its surfaces, with blocks inserted, and one material a layer.
class DXF final : private DXFDrawing {
public:
    /// Reads a file's bytes, which only need to last for the call, reporting one stage of progress;
    /// `fileName` is for messages and the log. Throws BadFile, Reporter::Abandoned, std::bad_alloc.
    DXF(std::string_view bytes, const std::string& fileName, Reporter& reporter, const ReadingOptions& how,
        Account& account);
    ~DXF();

    /// What was read; to be taken once.
    Handle<Model> takeModel() noexcept { return builder.take(); }

private:
    DXF(std::unique_ptr<DXFStream> stream, const ReadingOptions& how, Account& account);

    // DXF.cpp: sections
    void readWithPagesAhead(std::string_view bytes);
    void read();
    void readAll();
    bool readSections();
    bool readBareEntities();
    void readSection(const std::string& name);
    void passSection();
    void writeAccount(Account& account);
    void warnOfOutliers();
    std::string nameOfEntity(const DXFPosition& position);
    void readEntitiesSection();
    void forgetContents();

    // DXFTables.cpp
    /// The release that the drawing names. Kept for this interface; the reading does not depend on it.
    int readHeader();
    void readDrawingVariable();
    void readTables();
    void readLayers();
    void addLayer(const DXFRecord& record);
    void readBlocks();
    DXFBlock* addBlock(const DXFRecord& record);
    void countInsert(const DXFRecord& record);

    // DXFExpansion.cpp: entities, and blocks within blocks
    void readAllEntities();
    void startCell();
    void endCell();
    void leaveExpansion();
    void nextCell(DXFExpansion& cell, std::uint64_t cells);
    void walk();
    bool entitiesEnd(std::string_view type);
    void readEntity(DXFTally* tally, std::string_view type);
    void countEntity(DXFTally& tally, std::string_view type);
    /// The facets and curves that are there so far.
    std::uint64_t drawn() const noexcept
    {
        return std::uint64_t{builder.model().facetCount()} + curves.count();
    }
    bool isDrawn(std::string_view type) const noexcept
    {
        return DXFEntity::isDrawn(type, options.rules, options.curves);
    }
    void playBack();
    bool countUndrawn(DXFBlock& block, std::uint64_t cells);
    bool passUndrawn(DXFExpansion& cell);
    bool passFarCells(DXFExpansion& cell);
    void countFar(const DXFFarCells& far);
    void finishSummary(DXFExpansion& cell);
    void logCell(const DXFExpansion& cell);
    template <class Add>
    void record(Add add);
    void recordFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                     std::span<const std::uint32_t> loopEnds, bool outlined);
    void addMapped(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                   const AffineTransform<3>& transform, std::span<const std::uint32_t> loopEnds,
                   bool outlined);
    void addMappedCurve(const DXFCurveSurface& surface, std::span<const Point<3>> points, DXFCurveKind kind,
                        std::int32_t line, const AffineTransform<3>& transform);
    void addLoops(const Material& material, const Plane& plane, std::span<const Point<3>> corners,
                  std::span<const std::uint32_t> loopEnds);

    bool isModern() const noexcept { return options.rules == ReadingRules::modern; }

    // DXFFaceRun.cpp: many faces at once
    void drawRepeats(DXFTally& tally, std::string_view type);

    // DXFDamage.cpp: what the modern reading does about damage
    bool findsSection();
    std::string sectionOf(std::string_view type) const;
    std::string nameOfContent();
    void readOutsideSections(const DXFPosition& start);
    void endAt(const BadFile& fault);
    void leaveOut(const BadFile& fault, std::string_view type, std::int32_t line);
    void assume(std::string_view mark, bool atEnd) override;
    bool sectionEnds(std::string_view type);
    std::int32_t integerOrDefault(const DXFRecord& record, int code, std::int32_t otherwise);
    double realOrZero(const DXFRecord& record, int code);
    void takeDefault(const DXFRecord& record, const BadFile& fault);
    bool tryHidden(std::string_view type);
    void tryRecord(DXFTally& tally, std::string_view type);
    void tryBlock(DXFBlock& block);

    // DXFConventions.cpp: layers and colours that are handed on, and what hides entities
    static bool hasColours(const ReadingOptions& how) noexcept
    {
        return how.colours == DrawingColours::ofDrawing
               || (how.colours == DrawingColours::byRules && how.rules == ReadingRules::modern);
    }
    bool usesPaint() const noexcept { return isModern() || coloured; }
    DXFPaint paintOf(const DXFRecord& record);
    DXFInherited handedOn(const DXFPaint& paint) const noexcept;
    DXFBlock& blockOf(const DXFInsertion& insertion, bool aroundIsOff);
    bool aroundIsOff() const noexcept;
    Material& painted(const DXFPaint& paint, const DXFInherited& around);
    Material& paintedIn(const DXFLayer& layer, DXFColour colour);
    DXFCurveSurface curveSurface(const DXFPaint& paint, const DXFInherited& around) const noexcept;
    void drawCurves();
    const Material& surfaceOf(DXFExpansion& cell, const DXFBlockContents::Facet& facet);
    bool buildByConventions(std::string_view type);
    bool isPassedOver(const DXFRecord& record);
    struct Hidden {
        SkippedEntities::Why why;
        std::string_view what;
    };
    std::optional<Hidden> whyHidden(const DXFRecord& record, bool placesBlock);
    void hide(std::string_view type, const Hidden& hidden);
    void hideSurfaces(const DXFInsertion& insertion);
    void drawPaperSpace();
    std::string shown(std::string_view name);

    const DXFLayer& lookUpLayer(std::string_view name) override;
    Material& lookUpMaterial(std::string_view key) override;
    Material& paintSurface() override;
    DXFPaint paint() const noexcept override { return paintOfEntity; }
    void nameMaterial(std::string_view key, std::string_view name) override;
    void placeFacet(const Material& material, std::span<const Point<3>> corners, const DXFAxes* flat,
                    std::span<const std::uint32_t> loopEnds, bool outlined) override;
    void placeCurve(std::string_view materialKey, std::string_view layer, std::span<const Point<3>> points,
                    DXFCurveKind kind) override;
    void readEntities(const DXFInsertion& insertion) override;
    DXFBlock* findBlock(std::string_view name) override;
    void skip(std::string_view type, SkippedEntities::Why why, std::string_view what) override;

    const ReadingOptions options;
    Account& accountOfReading;
    ModelBuilder builder;
    std::unique_ptr<DXFStream> dxfStream;   // during construction
    const bool coloured;                    // the materials are of layers and colours
    DXFNameEncoding names;                  // in the modern reading
    std::map<std::string, DXFLayer, DXFNameOrder> layers;
    DXFBlocks blocks;
    std::map<std::string, std::string, std::less<>> texts;   // no reading fills it
    SkippedEntities skippedEntities;
    DXFTally tallyOfEntities;                       // of all ENTITIES sections
    DXFTally tallyOfPaper;                          // of those in paper space, where that is told apart
    DXFTally tallyOfOrphans;                        // of records in the BLOCKS section that stand in no block
    std::set<std::string, std::less<>> offLayers;   // those that hid something, two at most

    // What became of the entity that is being read.
    std::optional<SkipReason> reasonOfEntity;
    DXFBlock* blockOfEntity = nullptr;   // of an INSERT that names one
    bool blockEntered = false;
    bool firstTime = true;   // it is counted, and its damage is told
    DXFTally* tallyOfEntity = nullptr;
    DXFPaint paintOfEntity;
    bool surfaceInherits = false;   // its material depends on the INSERT around it
    bool layerIsOff = false;        // of what inserts blocks
    bool onPaper = false;
    bool drawsPaper = false;                  // the second pass, over what is in paper space
    DXFPosition entitiesStart;                // of the current ENTITIES section
    std::vector<DXFPosition> paperSections;   // those that hold something in paper space

    std::map<std::pair<const DXFLayer*, DXFColour>, Material*> paintedMaterials;
    std::pair<const DXFLayer*, DXFColour> recentPaint{};
    Material* recentPainted = nullptr;

    DXFRotations rotations;
    std::vector<DXFExpansion> expansions;   // the ENTITIES section, then the insertions under way
    std::vector<Point<3>> placed;           // the corners of one facet, the points of one curve
    DXFCurves curves{builder};
    std::map<std::pair<DXFTally*, std::int32_t>, std::string_view>
        endlessEntities;   // where counted, by line
    DXFOutliers outliers;
    DXFPatternTries faceTries;
    std::size_t recordedBytes = 0;                             // by the contents of blocks, complete or not
    std::uint64_t givenMet = 0, cyclesMet = 0, namesMet = 0;   // within the whole reading
    DXFUndrawn undrawn{skippedEntities, [this] { dxfStream->checkProgress(); }};
    std::set<std::string, DXFNameOrder> missingBlocks;   // that INSERTs named and entities were to be read of
    std::map<std::string, std::uint64_t, DXFNameOrder> insertsOfUnknown;   // INSERT records, by such a name
    bool inSection = false, bare = false;                                  // the file has no sections
    bool missingFound = false;                                             // one of them has been read
};

}   // namespace belvor
