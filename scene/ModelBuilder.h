#pragma once

#include "scene/Model.h"

#include <span>
#include <string_view>
#include <utility>

namespace belvor {

/// Fills a new model, which stays constant from take() on. Used by one thread. All that
/// append something throw std::bad_alloc when memory is exhausted.
class ModelBuilder {
public:
    ModelBuilder() : made(makeHandle<Model>()) {}

    /// Appends a vertex at `position`, in model units. The reference stays valid for the
    /// model's life: the stores grow by blocks and never move an element.
    Vertex& addVertex(const Point<3>& position) { return made->addVertex(position); }
    /// `material` is one of this model's. Edges added from now on are the facet's.
    Facet& addFacet(const Material& material, const Plane& plane = {})
    {
        return made->addFacet(material, plane);
    }
    /// A facet with its edges.
    void addFacet(const Material& material, const Plane& plane, std::span<const Edge> edges)
    {
        made->addFacet(material, plane, edges);
    }
    /// Vertices, in order.
    void addVertices(std::span<const Point<3>> positions) { made->addVertices(positions); }
    /// A facet for each plane, the first with the first `edgeCounts` of `edges`, and so on. There are as many
    /// edges as these counts say, and none is over Model::manyEdges.
    void addFacets(const Material& material, std::span<const Plane> planes,
                   std::span<const std::uint8_t> edgeCounts, std::span<const Edge> edges)
    {
        made->addFacets(material, planes, edgeCounts, edges);
    }
    /// An edge of the facet added last, between two vertices, given by their indices.
    void addEdge(std::uint32_t from, std::uint32_t to) { made->addEdge(from, to); }
    /// A facet of one loop, with vertices of its own at the corners.
    void addPolygon(const Material& material, const Plane& plane, std::span<const Point<3>> corners)
    {
        made->addPolygon(material, plane, corners);
    }

    /// A curve as chords through `points`, at least one; `bounded` when it counts for the bounds.
    void addCurve(const Material& material, std::span<const Point<3>> points, bool bounded = true)
    {
        made->addCurve(material, points, bounded);
    }
    /// As the model's functions of these names.
    void addCurve(std::span<const Point<3>> points, bool bounded) { made->addCurve(points, bounded); }
    template <class MaterialOf>
    void finishCurves(MaterialOf materialOf)
    {
        made->finishCurves(materialOf);
    }
    void setCurvePoint(std::uint32_t index, const Point<3>& point) noexcept
    {
        made->setCurvePoint(index, point);
    }

    /// A curve is the border of the facet added last.
    void setOutlined() { made->setOutlined(); }
    void setCurvesInBounds() noexcept { made->setCurvesInBounds(); }

    /// The material of that key; a new one, with the program's next number and colour, when
    /// there is none.
    Material& findMaterial(std::string_view key) { return made->findMaterial(key); }
    /// Adds `material` under `key`, unless the key is taken; either way the one that is there.
    Material& addMaterial(std::string_view key, Material material)
    {
        return made->addMaterial(key, std::move(material));
    }
    void setUnits(const Units& units) noexcept { made->setUnits(units); }

    /// A page of memory that the next `bytes` of what is added are to take, for provideLargePage() on any
    /// thread; null when there is none.
    void* takeFreshPage(std::size_t bytes) noexcept { return made->takeFreshPage(bytes); }

    /// What has been added so far.
    const Model& model() const noexcept { return *made; }
    /// The model. The builder is done with it.
    Handle<Model> take() noexcept { return std::move(made); }

private:
    Handle<Model> made;
};

}   // namespace belvor
