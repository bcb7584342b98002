#pragma once

#include "readers/dxf/DXFCurves.h"
#include "readers/dxf/DXFDrawing.h"
#include "readers/dxf/DXFTally.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace belvor {

/// What one walk over a block's entities added, in order and in the block's own coordinates,
/// so that a block inserted often is read from its text only a few times. Playing it back
/// gives the same as reading the text again. Its views are of the file.
class DXFBlockContents {
public:
    struct Facet {
        const Material* material;   ///< Null: the paint decides, with what the INSERT hands on.
        std::uint32_t paint;        ///< Then: index in `paints`.
        std::uint32_t firstCorner, cornerCount;
        std::int32_t flat;    ///< Index in `flats`, or −1 for world +z.
        std::int32_t loops;   ///< Index in `loopEnds`, or −1 for a single loop.
        bool outlined;        ///< A curve is its border.
    };
    struct Curve {
        DXFCurveSurface surface;   ///< Where `paint` is −1.
        std::int32_t paint;        ///< Index in `paints`: it decides, with what the INSERT hands on.
        std::uint32_t firstCorner, cornerCount;
        std::int32_t line;   ///< Of the record.
        DXFCurveKind kind;
    };
    struct MaterialName {
        std::string_view key, name;
    };
    using Item = std::variant<Facet, Curve, DXFInsertion*, MaterialName>;

    /// `paint` is null for a facet that has this material in every insertion.
    void addFacet(const Material& material, const DXFPaint* paint, std::span<const Point<3>> itsCorners,
                  const DXFAxes* itsFlat, std::span<const std::uint32_t> itsLoopEnds, bool outlined);
    /// `paint` is null for a curve that has the surface in every insertion.
    void addCurve(const DXFCurveSurface& surface, const DXFPaint* paint, std::span<const Point<3>> points,
                  DXFCurveKind kind, std::int32_t line);
    void addInsertion(const DXFInsertion& insertion);
    void addMaterialName(std::string_view key, std::string_view name)
    {
        items.emplace_back(MaterialName{key, name});
    }
    /// Of a Facet or a Curve.
    std::span<const Point<3>> cornersOf(const auto& item) const noexcept
    {
        return {corners.data() + item.firstCorner, item.cornerCount};
    }

    std::span<const std::uint32_t> loopEndsOf(const Facet& facet) const noexcept
    {
        if (facet.loops < 0) return {};
        return loopEnds[static_cast<std::size_t>(facet.loops)];
    }

    /// About the bytes taken.
    std::size_t size() const noexcept;

    std::vector<Item> items;
    std::vector<Point<3>> corners;
    std::vector<DXFAxes> flats;
    std::vector<DXFPaint> paints;
    std::vector<std::vector<std::uint32_t>> loopEnds;
    std::vector<std::unique_ptr<DXFInsertion>> insertions;

private:
    void keepPaint(const DXFPaint* paint);
};

struct DXFBlock;

/// What the first walk over a block's entities met, as numbers: enough to count what a later
/// insertion of it would skip, without a walk.
struct DXFBlockSummary {
    enum class State : std::uint8_t {
        unread,
        drawsNothing,   ///< Nor does what it inserts.
        draws,          ///< It gives facets or curves, or so does what it inserts.
        cyclic,         ///< It inserts itself, or inserts blocks that do: what it gives depends on where.
    };
    struct Inserted {
        std::uint64_t times = 0, cells = 0;   ///< INSERT records, and the cells of all of them.
    };

    State state = State::unread;
    std::uint32_t walks = 0;       ///< How often the text has been read.
    bool namesMaterials = false;   ///< It, or what it inserts: then every insertion has an effect.
    std::uint64_t facets = 0;      ///< And curves, given by its own entities.
    std::map<SkippedEntities::Entry*, std::uint64_t> skips;   ///< Of its own entities.
    std::map<DXFBlock*, Inserted> insertions;

    std::uint64_t playedCells = 0;    ///< Whose own skips are still to be counted.
    std::uint64_t countedCells = 0;   ///< The same with all that they insert.
    std::uint64_t mark = 0;           ///< Of the search that came here last.
};

/// A BLOCK of the drawing, as insertions on layers that are on see it. Where entities on layer 0 take the
/// layer of their INSERT, insertions on layers that are off see less: on() gives the block as they see it.
struct DXFBlock {
    std::string_view name;   ///< Of the drawing's map of blocks.
    Point<3> base;
    std::string layer;
    DXFPosition entities;        ///< Just after its BLOCK record.
    bool isEmpty = false;        ///< Its end follows at once.
    bool isExternal = false;     ///< It stands for another file.
    std::uint64_t inserts = 0;   ///< INSERT records of the whole drawing that name it.

    DXFBlockSummary summary;
    DXFTally tally;
    std::unique_ptr<DXFBlockContents> contents;   ///< Once complete.
    bool hidSurfaces = false;                     ///< Some would be drawn if their layer were on.

    /// Whether an insertion of it is under way.
    bool& expanding() noexcept { return whenOn().underWay; }
    /// Whether this is the block as insertions on layers that are off see it.
    bool isOff() const noexcept { return original != nullptr; }
    /// The block as insertions on layers that are on see it.
    DXFBlock& whenOn() noexcept { return original ? *original : *this; }
    /// The block as an insertion on the layer `ofInsert` sees it; null for the layer of the INSERT around
    /// that, which is off or not. Of a block that is not off.
    DXFBlock& on(const DXFLayer* ofInsert, bool aroundIsOff);

    std::unique_ptr<DXFBlock> whenOff;   ///< Once asked for.

private:
    DXFBlock* original = nullptr;
    bool underWay = false;
};

/// The rotations of insertions. Most drawings turn their blocks by a few angles only, whose sines are exact
/// and slow.
class DXFRotations {
public:
    /// The same as insertion.rotation(); until the next call.
    const AffineTransform<3>& of(const DXFInsertion& insertion);

private:
    struct Entry {
        std::uint64_t degrees = ~std::uint64_t{0};   // the bits of the number, at first of none
        AffineTransform<3> rotation;
    };
    static constexpr unsigned indexBits = 9;
    std::vector<Entry> known;   // by a hash of the number
};

/// A reading of entities under way: of the ENTITIES section, or of a block for the cells of
/// one insertion. Insertions within insertions stand on a stack of these, so that the depth
/// of a drawing costs memory and not the thread's stack.
struct DXFExpansion {
    DXFBlock* block = nullptr;   ///< None: the ENTITIES section.
    DXFInsertion insertion;
    AffineTransform<3> placement;   ///< Of the insertion, in the world.
    std::int32_t column = 0, row = 0;
    AffineTransform<3> transform;   ///< Of the current cell: block to world.
    DXFPosition back;               ///< Where the reading goes on after a cell.
    bool playing = false;           ///< The block's contents are played back, not read.
    bool summarising = false;       ///< This is the first walk over the block.
    DXFInherited inherited;         ///< What the INSERT hands on.
    std::vector<const Material*>
        surfaces;                ///< By paint of the contents, with that; null: not asked for yet.
    DXFTally* tally = nullptr;   ///< Where the records count, unless they have been counted before.
    std::size_t nextItem = 0;    ///< Of the contents.
    std::unique_ptr<DXFBlockContents> recording;

    // How far the whole reading was when the cell began.
    std::uint64_t drawnBefore = 0, givenBefore = 0, cyclesBefore = 0, namesBefore = 0;
    std::uint64_t emptyCells = 0;   ///< In a row, in which all was too far out.

    std::uint64_t cellsLeft() const noexcept   // the current one included
    {
        const auto rows = static_cast<std::uint64_t>(insertion.rows);
        return insertion.cells() - static_cast<std::uint64_t>(column) * rows
               - static_cast<std::uint64_t>(row);
    }
};

}   // namespace belvor
