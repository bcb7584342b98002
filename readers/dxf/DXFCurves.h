#pragma once

#include "readers/dxf/DXFDrawing.h"
#include "scene/ModelBuilder.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace belvor {

/// Which material a curve has, before that is made.
struct DXFCurveSurface {
    const DXFLayer* layer = nullptr;   ///< Null: that of the key.
    DXFColour colour = dxfWhite;       ///< With a layer.
    std::string_view key;              ///< A view of the file.
};

/// The curves of a drawing in the order in which they were met, kept until all surfaces are in the model:
/// then the materials that only curves have come last, and lines without end are cut at the bounds of the
/// rest.
class DXFCurves {
public:
    /// World coordinates; `line` is that of the record in the file. False, and nothing added, when a point is
    /// beyond what a number can hold.
    bool add(const DXFCurveSurface& surface, DXFCurveKind kind, std::span<const Point<3>> itsPoints,
             std::int32_t line);
    /// How many were added.
    std::uint64_t count() const noexcept { return added; }
    std::uint64_t pointCount() const noexcept { return pointsAdded; }   ///< Of them.
    /// visit(point, whether its curve has no end) for every point, in order.
    template <class Visit>
    void forEachPoint(Visit visit) const
    {
        auto next = points.begin();
        for (const Item& item : items)
            for (std::size_t i = 0; i < item.pointCount; ++i)
                visit(*next++, item.kind != DXFCurveKind::chords);
    }

    using FindMaterial = std::function<const Material&(const DXFCurveSurface&)>;
    /// What became of the lines without end.
    struct Endless {
        std::uint64_t missedRays = 0, missedLines = 0;   ///< Beside the sphere: not in the model.
        std::set<std::int32_t> drawn;                    ///< The lines of records of which something is.
    };
    /// Moves all into the model. `inBounds`: curves count for its bounds beside surfaces too. `pause` is
    /// called now and then and may throw.
    Endless moveTo(ModelBuilder& builder, bool inBounds, const FindMaterial& find,
                   const std::function<void()>& pause);

private:
    struct Item {
        DXFCurveSurface surface;
        std::size_t pointCount;
        std::int32_t line;   // of the record
        DXFCurveKind kind;
    };
    struct Sphere {
        Point<3> centre;
        double radius = 0.0;
    };

    Sphere sphereOf(const Model& model, bool inBounds) const;
    static std::optional<std::pair<Point<3>, Point<3>>> cut(const std::vector<Point<3>>& line, bool isRay,
                                                            const Sphere& sphere) noexcept;

    std::deque<Item> items;        // a deque gives memory back while it is moved
    std::deque<Point<3>> points;   // of all
    std::uint64_t added = 0, pointsAdded = 0;
    bool anyEndless = false;
};

}   // namespace belvor
