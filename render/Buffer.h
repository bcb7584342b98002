#pragma once

#include "platform/Handle.h"
#include "render/LineRow.h"
#include "render/LineTable.h"
#include "render/PixelRow.h"
#include "render/Shading.h"
#include "scene/Model.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace belvor {

/// One row of the depth buffer; its sinks take the finished rows of a render. Used by one
/// render, on one thread.
class Buffer : public TSHandlable {
public:
    static constexpr std::uint32_t noFacet = PixelRow::noFacet;
    static constexpr int largestHeight = 1 << 30;

    /// `width` in pixels, at least 1.
    explicit Buffer(int width);

    /// Takes the facets of `model`, looking as in `shades`, as the owners of the rows to come;
    /// called by a render before its first row. Both must outlive the last row's use.
    void setScene(const Model& model, std::span<const FacetShade> shades) noexcept
    {
        facets = &model;
        looks = shades.data();
        firstLine = noFacet;
    }
    /// Takes lines as owners too: that of place 0 is owner `first`, and so on. Called after setScene();
    /// `table` must outlive the last row's use.
    void setLines(std::uint32_t first, const LineTable& table) noexcept
    {
        firstLine = first;
        lines = &table;
    }
    /// The colour that sinks give to empty pixels: red, green, blue; black unless set.
    void setBackground(const std::array<std::uint8_t, 3>& colour) noexcept { empty = colour; }
    /// Only rows `first` to `end` − 1 will be looked at: a render may deliver others without their surfaces.
    void setRows(int first, int end) noexcept
    {
        firstRow = first;
        endRow = end;
    }
    /// Whether the surfaces of rows `first` to `end` − 1 can matter: to a thick line in a row that is looked
    /// at, those of near rows may.
    bool needsRows(int first, int end) const noexcept
    {
        constexpr int reach = 16;
        return end > firstRow - reach && first - reach < endRow;
    }
    const std::array<std::uint8_t, 3>& background() const noexcept { return empty; }

    /// Empties the row.
    virtual void clear();

    /// Fills the row from the facets active on it, in any order: the nearer surface keeps
    /// a pixel, and of two equally near ones the later in the store.
    virtual void scanFacets(std::span<const ActiveFacet> active, const Camera& camera);

    /// Offers a span of pixels.
    void fill(const SpanFill& span) noexcept { surfaces.fill(span); }

    /// Exchanges the row for another one of the same width.
    void exchange(PixelRow& other) noexcept { std::swap(surfaces, other); }
    /// Empties the row of what was drawn.
    void removeSurfaces() noexcept { surfaces.clear(); }
    /// Puts the lines over what is in the row.
    void addLines(const LineRow& lineRow) noexcept;

    /// Called where lines are drawn, with the surfaces alone in the row, counted from 0 at the top.
    virtual void surfacesDone(int) {}
    /// Takes the finished row, counted from 0 at the top.
    virtual void lineDone(int row) = 0;

    int width() const noexcept { return surfaces.width(); }
    /// Index of the nearest facet in the store, an owner that isLine(), or noFacet.
    std::uint32_t owner(int column) const noexcept
    {
        return surfaces.owners()[static_cast<std::size_t>(column)];
    }
    /// Screen depth; the largest double where no surface is.
    double depth(int column) const noexcept { return surfaces.depths()[static_cast<std::size_t>(column)]; }
    /// The same of every column.
    std::span<const std::uint32_t> owners() const noexcept { return surfaces.owners(); }
    std::span<const double> depths() const noexcept { return surfaces.depths(); }
    /// A facet by its index in the store.
    const Facet& facet(std::uint32_t index) const noexcept { return facets->facet(index); }
    bool hasLines() const noexcept { return firstLine != noFacet; }
    bool isLine(std::uint32_t owner) const noexcept { return owner >= firstLine && owner != noFacet; }
    /// The material number of an owner.
    std::uint16_t material(std::uint32_t owner) const noexcept
    {
        return isLine(owner) ? lines->material(owner - firstLine) : facet(owner).material->index;
    }
    /// The owner that the line of a place is.
    std::uint32_t lineOwner(std::uint32_t place) const noexcept { return firstLine + place; }
    /// Red, green and blue of an owner.
    std::array<std::uint8_t, 3> colour(std::uint32_t owner) const noexcept
    {
        if (isLine(owner)) return lines->colour(owner - firstLine);
        const std::uint8_t* const bytes = looks[owner].colour;
        return {bytes[0], bytes[1], bytes[2]};
    }

private:
    const Model* facets = nullptr;
    const FacetShade* looks = nullptr;
    const LineTable* lines = nullptr;
    std::uint32_t firstLine = noFacet;
    int firstRow = 0, endRow = largestHeight;
    std::array<std::uint8_t, 3> empty{};
    PixelRow surfaces;
};

}   // namespace belvor
