#include "cli/Info.h"

#include "readers/dxf/DXF.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace belvor {

std::vector<SkippedEntities::Entry> skippedIn(const Model& model)
{
    const auto* const drawing = dynamic_cast<const DXF*>(&model);
    return drawing ? drawing->skipped().list() : std::vector<SkippedEntities::Entry>();
}

std::string describeModel(const std::string& file, FileType type, const Model& model)
{
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
    for (const SkippedEntities::Entry& entry : skippedIn(model))
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
    if (type == FileType::dxf) object["skipped"] = skipped;
    // Names come from files of any encoding: what is no UTF-8 is replaced, never refused.
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}   // namespace belvor
