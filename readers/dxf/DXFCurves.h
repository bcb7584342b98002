#pragma once

#include "platform/LargeMemory.h"
#include "readers/dxf/DXFDrawing.h"
#include "scene/BlockStore.h"
#include "scene/ModelBuilder.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

namespace belvor {

/// Which material a curve has, before that is made.
struct DXFCurveSurface {
    const DXFLayer* layer = nullptr;   ///< Null: that of the key.
    DXFColour colour = dxfWhite;       ///< With a layer.
    std::string_view key;              ///< A view of the file.

    bool operator==(const DXFCurveSurface&) const = default;
    friend bool operator<(const DXFCurveSurface& a, const DXFCurveSurface& b) noexcept
    {
        return std::tie(a.layer, a.colour, a.key) < std::tie(b.layer, b.colour, b.key);
    }
};

/// The curves of a drawing, put into its model in the order in which they are met. They get their materials
/// when all surfaces are in the model: then those that only curves have come last, and lines without end are
/// cut at the bounds of the rest.
class DXFCurves {
public:
    /// `itsBuilder` must outlive this, and nothing else may add curves to its model.
    explicit DXFCurves(ModelBuilder& itsBuilder) noexcept : builder(itsBuilder) {}

    /// World coordinates; `line` is that of the record in the file. False, and nothing added, when a point is
    /// beyond what a number can hold. Throws std::bad_alloc.
    bool add(const DXFCurveSurface& surface, DXFCurveKind kind, std::span<const Point<3>> points,
             std::int32_t line);

    /// How many were added.
    std::uint32_t count() const noexcept { return surfaceOf.size(); }

    using FindMaterial = std::function<const Material&(const DXFCurveSurface&)>;
    /// What became of the lines without end.
    struct Endless {
        std::uint64_t missedRays = 0, missedLines = 0;   ///< Beside the sphere: taken out of the model.
        std::set<std::int32_t> drawn;                    ///< The lines of records of which something is.
    };
    /// Makes the curves whole, once all is added. `pause` is called now and then and may throw.
    Endless finish(const FindMaterial& find, const std::function<void()>& pause);

private:
    struct EndlessCurve {
        std::uint32_t curve;   // of the model
        std::int32_t line;     // of the record
        bool isRay;
    };
    struct Sphere {
        Point<3> centre;
        double radius = 0.0;
    };

    std::uint32_t indexOf(const DXFCurveSurface& surface);
    bool cutInModel(const Curve& curve, const EndlessCurve& endless, const Sphere& sphere);
    static std::optional<std::pair<Point<3>, Point<3>>> cut(const Point<3>& start, const Point<3>& second,
                                                            bool isRay, const Sphere& sphere) noexcept;

    ModelBuilder& builder;
    std::map<DXFCurveSurface, std::uint32_t> surfaces;   // each with its index
    decltype(surfaces)::const_iterator recent = surfaces.end();
    MemoryPool pool;
    BlockStore<std::uint32_t> surfaceOf{pool};   // by curve
    BlockStore<EndlessCurve> endlessCurves{pool};
};

}   // namespace belvor
