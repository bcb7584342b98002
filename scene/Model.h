#pragma once

#include "calcore/Extent.h"
#include "calcore/Plane.h"
#include "platform/Handle.h"
#include "scene/BlockStore.h"
#include "scene/Material.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace belvor {

class Buffer;
class Camera;
class LightSet;
class Reporter;
class RowSpans;

/// A corner of the scene.
struct Vertex {
    Point<3> position;   ///< Model coordinates.
};

/// One side of a facet, between two vertices by their place in the store. A render swaps
/// the ends where needed, so that `from` is the upper one on the screen.
struct Edge {
    std::uint32_t from, to;
};

/// A flat polygon given by its edges alone: holes and several loops are more edges, filled
/// by the even-odd rule. Its edges are `edgeCount` elements of the store from `firstEdge` on.
struct Facet {
    Plane plane;   ///< Model coordinates, unit normal. Turned towards the eye by each render.
    const Material* material = nullptr;
    std::uint32_t firstEdge = 0;
    std::uint32_t edgeCount = 0;
};

/// What each render writes of a facet; apart from it, because all of them are written each time.
struct FacetShade {
    std::uint8_t colour[3] = {0, 0, 0};   ///< Red, green, blue.
    bool turned = false;                  ///< The plane is the negative of the one that the reader gave.
};

/// The length of a model unit, for programs that read the image file: the reader sets it.
struct Units {
    double scale = 1.0;
    std::uint32_t code = 0;   ///< 0 undefined, 1 microns, 2 mm, 3 cm, 4 m, 5 km, 6 thou, 7 inches, 8 feet.
};

struct Statistics {
    std::uint32_t vertices, edges, facets, materials;
};

/// The scene: vertices, edges and facets in store order, and the materials by name. Filled
/// by one reader, afterwards drawn by at most one render at a time. Appending never moves
/// an element: references stay valid for the model's life.
class Model : public TSHandlable {
public:
    using Materials = std::map<std::string, Material, std::less<>>;

    Model();
    ~Model() override;

    /// Draws the model into `buffer`, row 0 at the top first, one lineDone() a row. Writes
    /// per-render fields only, so the model can be drawn again after a failure. Throws
    /// Reporter::Abandoned soon after `progress` answers true, std::bad_alloc.
    virtual void render(const Camera& camera, const LightSet& lighting, Buffer& buffer,
                        Reporter& progress);   // in render/Renderer.cpp

    /// The middle of the extent (the origin for a model without vertices) and the largest
    /// distance of a vertex from it.
    virtual void bounds(Point<3>& centre, double& radius) const;

    virtual void statistics(Statistics& counts) const;

    /// Debugging output: the plane of facet number `facet` and both ends of each of its edges.
    virtual void dump(std::ostream& stream, std::uint32_t facet) const;

    /// All append operations throw std::bad_alloc when memory is exhausted.
    Vertex& addVertex(const Point<3>& position);
    /// `material` is one of this model's materials.
    Facet& addFacet(const Material& material, const Plane& plane = {});
    /// An edge of the facet added last, between two stored vertices, given by number.
    Edge& addEdge(std::uint32_t from, std::uint32_t to);

    /// A facet of one loop, with vertices of its own at the corners and an edge from each to the next.
    void addPolygon(const Material& material, const Plane& plane, std::span<const Point<3>> corners);

    /// The material of that key; a new one of that name, with the program's next number and
    /// colour, when there is none.
    Material& findMaterial(std::string_view key);
    /// Adds `material` under `key`, unless the key is taken; either way the one that is there.
    Material& addMaterial(std::string_view key, Material material);
    const Materials& materials() const noexcept { return materialsByKey; }

    std::uint32_t vertexCount() const noexcept { return vertexStore.size(); }
    std::uint32_t edgeCount() const noexcept { return edgeStore.size(); }
    std::uint32_t facetCount() const noexcept { return facetStore.size(); }
    const Vertex& vertex(std::uint32_t number) const noexcept { return vertexStore[number]; }
    const Edge& edge(std::uint32_t number) const noexcept { return edgeStore[number]; }
    const Facet& facet(std::uint32_t number) const noexcept { return facetStore[number]; }
    /// Red, green and blue of a facet as the last render shaded it; there must have been one.
    const std::uint8_t* colour(std::uint32_t facetNumber) const noexcept
    {
        return shades[facetNumber].colour;
    }
    /// Where the last render put a vertex: pixels right, pixels down, screen depth. The
    /// origin before any render.
    Point<3> projected(std::uint32_t vertexNumber) const noexcept
    {
        return vertexNumber < projectedVertices.size() ? projectedVertices[vertexNumber] : Point<3>();
    }

    const Units& units() const noexcept { return unitsOfModel; }
    void setUnits(const Units& units) noexcept { unitsOfModel = units; }

private:
    friend class Renderer;

    MemoryPool pool;
    BlockStore<Vertex> vertexStore{pool};
    BlockStore<Edge> edgeStore{pool};
    BlockStore<Facet> facetStore{pool};
    Materials materialsByKey;
    Units unitsOfModel;

    // What a render leaves for the next one. Projected positions lie apart from the vertices
    // and side by side: the edge table walks them at random.
    LargeVector<Point<3>> projectedVertices;
    LargeVector<FacetShade> shades;
    std::shared_ptr<RowSpans> rowSpans;   // kept: fresh memory costs more than the work in it
    Extent<3> screenExtent = Extent<3>::nothing();
    double brightness = 1.0;   // the brightest channel of the last shading pass
};

}   // namespace belvor
