#pragma once

#include "calcore/Extent.h"
#include "calcore/Plane.h"
#include "platform/Handle.h"
#include "scene/BlockStore.h"
#include "scene/EdgeStore.h"
#include "scene/Material.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

class Buffer;
class Camera;
class Frame;
class LightSet;
class Reporter;

/// A corner of the scene.
struct Vertex {
    Point<3> position;   ///< Model coordinates.
};

/// A flat polygon given by its edges alone: holes and several loops are more edges, filled
/// by the even-odd rule. Its edges are `edgeCount` elements of the store from `firstEdge` on.
struct Facet {
    Plane plane;   ///< Model coordinates, unit normal; both sides can be seen.
    const Material* material = nullptr;
    std::uint32_t firstEdge = 0;
    std::uint32_t edgeCount = 0;
};

/// A curve as chords from point to point; a single point stands for itself. Its points are
/// `pointCount` elements of the store from `firstPoint` on.
struct Curve {
    const Material* material;
    std::uint32_t firstPoint, pointCount;
    bool bounded;   ///< It counts for the bounds: not a line that was cut there.
};

/// The length of a model unit, for programs that read the image file: the reader sets it.
struct Units {
    double scale = 1.0;
    std::uint32_t code = 0;   ///< 0 undefined, 1 microns, 2 mm, 3 cm, 4 m, 5 km, 6 thou, 7 inches, 8 feet.
};

struct Statistics {
    std::uint32_t vertices, edges, facets, materials;
};

/// The scene: vertices, edges and facets in store order, curves, and the materials by name. Filled
/// by one reader, constant afterwards: any number of renders may draw it at the same time.
/// Appending never moves an element: references stay valid for the model's life.
class Model : public TSHandlable {
public:
    using Materials = std::map<std::string, Material, std::less<>>;

    Model();
    ~Model() override;

    /// Draws the model into `buffer`, row 0 at the top first, one lineDone() a row. Changes
    /// nothing in the model; what a render computes lives in a Frame, which the model keeps for
    /// its next plain render. A caller with a Frame of its own calls Frame::render. Throws
    /// Reporter::Abandoned soon after `progress` answers true, std::bad_alloc. Any thread.
    virtual void render(const Camera& camera, const LightSet& lighting, Buffer& buffer,
                        Reporter& progress) const;   // in render/ModelRender.cpp

    /// The middle of the extent (the origin for a model without vertices) and the largest
    /// distance of a vertex from it. The points of curves count as vertices when there is no
    /// facet, or when setCurvesInBounds() said so.
    virtual void bounds(Point<3>& centre, double& radius) const;

    /// The box of the same points; one that holds no point for a model without any.
    Extent<3> extent() const;

    virtual void statistics(Statistics& counts) const;

    /// Debugging output: the plane of facet number `facet` and both ends of each of its edges, as
    /// the last plain render saw them. Kept for this interface; nothing here calls it.
    virtual void dump(std::ostream& stream, std::uint32_t facet) const;   // in render/ModelRender.cpp

    /// All append operations throw std::bad_alloc when memory is exhausted.
    Vertex& addVertex(const Point<3>& position);
    /// `material` is one of this model's materials.
    Facet& addFacet(const Material& material, const Plane& plane = {});
    /// A facet with its edges.
    void addFacet(const Material& material, const Plane& plane, std::span<const Edge> edges);
    /// Vertices, in order.
    void addVertices(std::span<const Point<3>> positions);
    /// A facet for each plane, with as many of the edges as its count says.
    void addFacets(const Material& material, std::span<const Plane> planes,
                   std::span<const std::uint8_t> edgeCounts, std::span<const Edge> edges);
    /// An edge of the facet added last, between two stored vertices, given by their indices.
    void addEdge(std::uint32_t from, std::uint32_t to);

    /// A facet of one loop, with vertices of its own at the corners and an edge from each to the next.
    void addPolygon(const Material& material, const Plane& plane, std::span<const Point<3>> corners);

    /// A curve of the model is the border of the facet added last: where curves are drawn, the sides of its
    /// polygon are not drawn as borders too.
    void setOutlined() { outlined.push_back(facetCount() - 1); }
    /// Those facets, by growing index.
    std::span<const std::uint32_t> outlinedFacets() const noexcept { return outlined; }

    /// A curve through `points`, in model coordinates: at least one. `bounded` as in Curve.
    void addCurve(const Material& material, std::span<const Point<3>> points, bool bounded = true)
    {
        addCurve(&material, points, bounded);
    }
    /// The same without a material, which finishCurves() gives it.
    void addCurve(std::span<const Point<3>> points, bool bounded) { addCurve(nullptr, points, bounded); }
    /// Gives every curve its material: `materialOf(index, curve)`, called in order. One with a null pointer
    /// is taken out, and those behind it move up; its points stay.
    template <class MaterialOf>
    void finishCurves(MaterialOf materialOf);
    void setCurvePoint(std::uint32_t index, const Point<3>& point) noexcept { curvePoints[index] = point; }
    void setCurvesInBounds() noexcept { curvesInBounds = true; }

    /// The material of that key; a new one of that name, with the program's next number and
    /// colour, when there is none.
    Material& findMaterial(std::string_view key);
    /// Adds `material` under `key`, unless the key is taken; either way the one that is there.
    Material& addMaterial(std::string_view key, Material material);
    const Materials& materials() const noexcept { return materialsByKey; }

    /// The bytes that vertices, edges, facets and curves take.
    std::size_t memory() const noexcept { return pool.used(); }
    /// Memory that the next `bytes` of them are to take, as MemoryPool::takeFreshPage() gives it.
    void* takeFreshPage(std::size_t bytes) noexcept { return pool.takeFreshPage(bytes); }

    std::uint32_t vertexCount() const noexcept { return vertexStore.size(); }
    std::uint32_t edgeCount() const noexcept { return edgeStore.size(); }
    std::uint32_t facetCount() const noexcept { return facetStore.size(); }
    const Vertex& vertex(std::uint32_t number) const noexcept { return vertexStore[number]; }
    Edge edge(std::uint32_t number) const noexcept { return edgeStore[number]; }
    const Facet& facet(std::uint32_t number) const noexcept { return facetStore[number]; }
    /// The numbers of edges of `number` facets from `first` on, at most manyEdges each, when they lie side by
    /// side in memory; else none. Reading these is quicker than reading the facets.
    const std::uint8_t* edgeCounts(std::uint32_t first, std::uint32_t number) const noexcept
    {
        return edgeCountStore.sideBySide(first, number);
    }
    static constexpr std::uint8_t manyEdges = 255;   ///< Or more.
    /// `number` edges from `first` on, when they lie side by side in memory; else none: many are worked out.
    const Edge* edgesFrom(std::uint32_t first, std::uint32_t number) const noexcept
    {
        return edgeStore.sideBySide(first, number);
    }

    std::uint32_t curveCount() const noexcept { return curveStore.size(); }
    const Curve& curve(std::uint32_t index) const noexcept { return curveStore[index]; }
    const Point<3>& curvePoint(std::uint32_t index) const noexcept { return curvePoints[index]; }
    std::uint32_t curvePointCount() const noexcept { return curvePoints.size(); }

    const Units& units() const noexcept { return unitsOfModel; }
    void setUnits(const Units& units) noexcept { unitsOfModel = units; }

private:
    void addCurve(const Material* material, std::span<const Point<3>> points, bool bounded);
    template <class Visit>
    void forEachPoint(Visit visit) const;
    double radiusOfFar(const Point<3>& centre) const;

    MemoryPool pool;
    BlockStore<Vertex> vertexStore{pool};
    EdgeStore edgeStore{pool};
    BlockStore<Facet> facetStore{pool};
    BlockStore<std::uint8_t> edgeCountStore{pool};   // by facet
    BlockStore<Curve> curveStore{pool};
    BlockStore<Point<3>> curvePoints{pool};
    bool curvesInBounds = false;
    std::vector<std::uint32_t> outlined;
    Materials materialsByKey;
    Units unitsOfModel;

    // The frame of the last plain render, none while one uses it: fresh memory costs more than
    // the work done in it.
    mutable std::atomic<Frame*> keptFrame{nullptr};
};

template <class MaterialOf>
void Model::finishCurves(MaterialOf materialOf)
{
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; i < curveStore.size(); ++i) {
        Curve curve = curveStore[i];
        curve.material = materialOf(i, curve);
        if (curve.material) curveStore[kept++] = curve;
    }
    curveStore.shorten(kept);
}

}   // namespace belvor
