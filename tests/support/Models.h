#pragma once

#include "account/Account.h"
#include "readers/things/Things.h"
#include "tests/support/Files.h"
#include "tests/support/Reporters.h"
#include "view/SceneBuilder.h"

namespace belvor::test {

inline Handle<Model> thingsModel(const std::string& text)
{
    MaterialSequence::ofProgram().reset();
    SilentReporter silent;
    Account account;
    return Things(text, "model.thf", silent, account).takeModel();
}

/// A box of 2 × 4 × 6 at the origin, every side of another material.
inline constexpr const char* boxText =
    "Y 8\n0 0 0\n2 0 0\n2 4 0\n0 4 0\n0 0 6\n2 0 6\n2 4 6\n0 4 6\n0\n6\n"
    "1 Base\n4 1 4 3 2\n1 Roof\n4 5 6 7 8\n1 Front\n4 1 2 6 5\n1 Right\n4 2 3 7 6\n"
    "1 Back\n4 3 4 8 7\n1 Left\n4 4 1 5 8\n";

/// Records of a DXF drawing: a face and a line. And the drawing of some.
inline const std::string faceEntity = "0\n3DFACE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n"
                                      "12\n1\n22\n1\n32\n0\n13\n0\n23\n1\n33\n1\n",
                         lineEntity = "0\nLINE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n1\n31\n0\n";
inline std::string drawingText(const std::string& entities)
{
    return "0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
}

/// All that a model holds of vertices, edges and facets, to the last bit.
inline std::string bitsOf(const Model& model)
{
    std::string all;
    const auto put = [&all](const auto& value) {
        all.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    for (std::uint32_t i = 0; i < model.vertexCount(); ++i) put(model.vertex(i).position);
    for (std::uint32_t i = 0; i < model.edgeCount(); ++i) put(model.edge(i));
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) {
        const Facet& facet = model.facet(i);
        put(facet.plane);
        put(facet.firstEdge);
        put(facet.edgeCount);
        put(*model.edgeCounts(i, 1));
        all += facet.material->name;
    }
    return all;
}

inline ModelPlace placeOf(const Model& model)
{
    ModelPlace place;
    model.bounds(place.centre, place.radius);
    return place;
}

}   // namespace belvor::test
