#pragma once

#include "readers/dxf/DXFDrawing.h"

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
        const Material* material;
        std::uint32_t firstCorner, cornerCount;
        std::int32_t flat;   ///< Place in `flats`, or −1 for world +z.
    };
    struct MaterialName {
        std::string_view key, name;
    };
    using Item = std::variant<Facet, DXFInsertion*, MaterialName>;

    void addFacet(const Material& material, std::span<const Point<3>> itsCorners, const DXFAxes* itsFlat);
    void addInsertion(const DXFInsertion& insertion);
    void addMaterialName(std::string_view key, std::string_view name)
    {
        items.emplace_back(MaterialName{key, name});
    }
    void addSkip(SkippedEntities::Entry& entry) { ++skips[&entry]; }
    /// Counts what was skipped, once for each cell.
    void countSkips(std::uint64_t cells) const noexcept;

    /// About the bytes taken.
    std::size_t size() const noexcept;

    std::vector<Item> items;
    std::vector<Point<3>> corners;
    std::vector<DXFAxes> flats;
    std::vector<std::unique_ptr<DXFInsertion>> insertions;
    std::map<SkippedEntities::Entry*, std::uint64_t> skips;
    bool onlySkips =
        false;   ///< Nothing is drawn, by the insertions neither: `skips` has theirs too, and says it all.
};

/// A BLOCK of the drawing.
struct DXFBlock {
    Point<3> base;
    std::string layer;
    DXFPosition entities;   ///< Just after its BLOCK record.

    bool expanding = false;                       ///< An insertion of it is under way.
    std::uint32_t walks = 0;                      ///< How often its text has been read.
    std::unique_ptr<DXFBlockContents> contents;   ///< Once complete.
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
    std::size_t nextItem = 0;       ///< Of the contents.
    std::unique_ptr<DXFBlockContents> recording;
};

}   // namespace belvor
