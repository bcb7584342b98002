#pragma once

#include "scene/ModelBuilder.h"

#include <cstdint>
#include <span>
#include <vector>

namespace belvor {

/// One clump while it is read. A MAN file lists the edges of a clump and names the facets on
/// both sides of each; the model wants the edges facet by facet. So they are kept here until
/// the clump is complete. Memory grows with what is added, never with an announced count.
class ManClump {
public:
    /// Vertices go to `model` at once; it outlives the clump.
    explicit ManClump(ModelBuilder& model) noexcept : filled(model), base(model.model().vertexCount()) {}

    void addVertex(const Point<3>& position) { filled.addVertex(position); }
    /// `material` is one of the model's.
    void addFacet(const Material& material) { materials.push_back(&material); }
    /// An edge between two of the clump's vertices, counted from 1, and the numbers of the
    /// facets that see it run from → to and to → from; 0 is none. All are within range.
    void addEdge(std::uint32_t from, std::uint32_t to, std::uint32_t left, std::uint32_t right)
    {
        edges.push_back({base + from - 1, base + to - 1, left, right});
    }

    /// Appends the facets to the model, in the order of their numbers, each with its edges in
    /// the order they were added. False as soon as one has no edges, or edges that do not
    /// close: at some vertex not as many leave as arrive. Asks `progress` as it goes, at the
    /// unchanged `fraction`.
    bool appendFacets(Reporter& progress, double fraction);

private:
    struct SharedEdge {
        std::uint32_t from, to;   // of the model
        std::uint32_t left, right;
    };
    /// Visits (facet, from, to) for each side that has a facet, in the order of the edges.
    template <class Visitor, class Pause>
    void visitSides(Visitor&& visit, Pause&& pause) const;
    template <class Pause>
    bool appendFacet(const Material& material, std::span<const Edge> its, Pause&& pause);
    bool closes(const Edge* first, const Edge* last);
    Plane planeOf(const Edge* first, const Edge* last) const;

    ModelBuilder& filled;
    const std::uint32_t base;   // the model's number of the clump's first vertex
    std::vector<const Material*> materials;
    std::vector<SharedEdge> edges;
    std::vector<std::int64_t> leaving;   // by vertex: edges that leave less those that arrive
};

}   // namespace belvor
