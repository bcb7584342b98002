#include "fuzz/DrawSmall.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// Parameter files: refused, or a view that draws a model when its numbers are finite.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace belvor;
    static const Handle<Model> model = [] {
        Handle<Model> made = makeHandle<Model>();
        for (const Point<3>& p : {Point<3>(0, 0, 0), Point<3>(4, 0, 0), Point<3>(0, 3, 0), Point<3>(0, 0, 2)})
            made->addVertex(p);
        for (std::uint32_t skipped = 0; skipped < 4; ++skipped) {
            std::uint32_t corners[3], count = 0;
            for (std::uint32_t i = 0; i < 4; ++i)
                if (i != skipped) corners[count++] = i;
            made->addFacet(made->findMaterial("m"),
                           Plane(made->vertex(corners[0]).position, made->vertex(corners[1]).position,
                                 made->vertex(corners[2]).position));
            for (std::uint32_t i = 0; i < 3; ++i) made->addEdge(corners[i], corners[(i + 1) % 3]);
        }
        return made;
    }();
    ViewParameters view;
    const ModelPlace place{{2, 1.5, 1}, 2.7};
    if (!view.parse(std::string(reinterpret_cast<const char*>(data), size), place.centre, place.radius))
        return 0;
    if (view.lights.size() != 5) std::abort();
    if (view.finite()) drawSmall(*model, view, place);
    return 0;
}
