#include "cli/Info.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace belvor {

std::string describeModel(const std::string& file, FileType type, const Reading& reading)
{
    const Model& model = *reading.model;
    using Json = nlohmann::ordered_json;
    Point<3> centre;
    double radius = 0.0;
    model.bounds(centre, radius);
    Statistics counts;
    model.statistics(counts);

    Json materials = Json::array();
    for (const auto& [key, material] : model.materials())
        materials.push_back(
            {{"index", material.index}, {"name", material.name}, {"colour", material.colour}});
    Json skipped = Json::array();
    for (const NotDrawn& entry : reading.account.notDrawn)
        skipped.push_back({{"type", entry.type}, {"count", entry.count}, {"reason", entry.reason}});
    Json object = {
        {"file", file},
        {"type", nameOf(type)},
        {"vertices", counts.vertices},
        {"edges", counts.edges},
        {"facets", counts.facets},
        {"materials", counts.materials},
        {"centre", {centre[0], centre[1], centre[2]}},
        {"radius", radius},
        {"units", {{"code", model.units().code}, {"scale", model.units().scale}}},
        {"materialList", materials},
    };
    if (formatOf(type)->drawsInPart) object["skipped"] = skipped;
    // Names come from files of any encoding: what is no UTF-8 is replaced, never refused.
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}   // namespace belvor
