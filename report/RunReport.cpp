#include "report/RunReport.h"

#include "platform/Files.h"
#include "report/Sha256.h"
#include "resources/Texts.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <unordered_map>

namespace belvor {
namespace {

using Json = nlohmann::ordered_json;

constexpr int schemaVersion = 1;

Json numberOrNull(double value) { return std::isfinite(value) ? Json(value) : Json(nullptr); }

Json pointOf(const Point<3>& point)
{
    return {numberOrNull(point[0]), numberOrNull(point[1]), numberOrNull(point[2])};
}

Json fileOf(const FileDigest& file)
{
    Json object = {{"name", file.name}};
    if (file.bytes != 0 || !file.sha256.empty()) object["bytes"] = file.bytes;
    if (!file.sha256.empty()) object["sha256"] = file.sha256;
    return object;
}

std::string hexColour(const Colour& colour)
{
    std::string text = "#";
    for (const double channel : colour)
        for (const int shift : {4, 0}) text += "0123456789abcdef"[(toByte(channel) >> shift) & 0xF];
    return text;
}

void addBatchLine(Json& object, const RunReport& report)
{
    const BatchLine& line = *report.batch;
    object["n"] = line.number;
    object["model"] = report.file.name;
    object["status"] = line.status;
    object["message"] = line.message;
    object["hash"] = line.hash;
    object["unchanged"] = line.unchanged;
}

Json boundsOf(const Model& model)
{
    Point<3> centre;
    double radius = 0.0;
    model.bounds(centre, radius);
    return {{"centre", pointOf(centre)}, {"radius", numberOrNull(radius)}};
}

Json entitiesOf(const Account& account)
{
    Json rows = Json::array();
    for (const auto& [type, count] : account.entities) {
        Json skipped = Json::array();
        for (std::size_t reason = 0; reason < skipReasonCount; ++reason)
            if (count.skipped[reason] != 0)
                skipped.push_back(
                    {{"reason", nameOf(static_cast<SkipReason>(reason))}, {"count", count.skipped[reason]}});
        rows.push_back({{"type", type}, {"read", count.read}, {"drawn", count.drawn}, {"skipped", skipped}});
    }
    return rows;
}

Json repairsOf(const Account& account)
{
    Json list = Json::array();
    for (const Repair& repair : account.repairs)
        list.push_back({{account.byteOffsets ? "offset" : "line", repair.position},
                        {"record", repair.record},
                        {"text", repair.text}});
    return {{"count", account.repairCount}, {"list", list}};
}

Json materialsOf(const Model& model)
{
    std::unordered_map<const Material*, std::uint64_t> facets;
    for (std::uint32_t i = 0; i < model.facetCount(); ++i) ++facets[model.facet(i).material];
    Json list = Json::array();
    for (const auto& [key, material] : model.materials()) {
        const auto found = facets.find(&material);
        list.push_back({{"name", material.name},
                        {"colour", hexColour(material.colour)},
                        {"facets", found == facets.end() ? 0 : found->second}});
    }
    return list;
}

Json blocksOf(const Account& account)
{
    Json list = Json::array();
    for (const auto& [name, inserts] : account.blocks) list.push_back({{"name", name}, {"inserts", inserts}});
    return list;
}

Json cameraOf(const ReportCamera& camera)
{
    return {{"projection", camera.parallel ? "parallel" : "perspective"},
            {"eye", pointOf(camera.eye)},
            {"lookAt", pointOf(camera.lookAt)},
            {"zoom", numberOrNull(camera.zoom)}};
}

}   // namespace

const char* nameOf(SkipReason reason) noexcept
{
    return textOf(textAfter(Text::skippedFaulty, static_cast<int>(reason)));
}

FileDigest digestOf(const std::string& path)
{
    FileDigest digest{path, 0, {}};
    std::uint64_t size = 0;
    if (kindOfFile(path, size) != FileKind::regular) return digest;   // reading a pipe would take its bytes
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(openFile(path, "rb"), std::fclose);
    if (!file) return digest;
    Sha256 sum;
    std::array<char, 65536> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file.get())) {
        sum.add({piece.data(), count});
        digest.bytes += count;
    }
    if (!std::ferror(file.get())) digest.sha256 = sum.hexDigest();
    return digest;
}

std::string toJson(const RunReport& report)
{
    static const Account nothing;
    const Account& account = report.account ? *report.account : nothing;
    Json object = {{"schema", schemaVersion}, {"program", report.program}};
    if (report.batch) addBatchLine(object, report);
    object["file"] = fileOf(report.file);
    object["reading"] = report.reading;
    if (report.model) {
        const Units& units = report.model->units();
        object["units"] = {{"code", units.code}, {"scale", numberOrNull(units.scale)}};
        object["bounds"] = boundsOf(*report.model);
    }
    object["facets"] = report.model ? report.model->facetCount() : 0;
    object["entities"] = entitiesOf(account);
    object["repairs"] = repairsOf(account);
    object["materials"] = report.model ? materialsOf(*report.model) : Json::array();
    object["blocks"] = blocksOf(account);
    object["warnings"] = account.warnings;
    if (!report.error.empty()) object["error"] = report.error;
    if (report.cameras.size() == 1) object["camera"] = cameraOf(report.cameras.front());
    for (std::size_t i = 0; report.cameras.size() > 1 && i < report.cameras.size(); ++i) {
        Json camera = {{"view", report.cameras[i].view}};
        camera.update(cameraOf(report.cameras[i]));
        object["cameras"].push_back(std::move(camera));
    }
    object["outputs"] = Json::array();
    for (const FileDigest& output : report.outputs) object["outputs"].push_back(fileOf(output));
    if (report.timing) {
        object["timing"] = Json::object();
        for (const auto& [step, seconds] : *report.timing) object["timing"][step] = numberOrNull(seconds);
    }
    if (report.batch && report.timing) object["seconds"] = numberOrNull(report.batch->seconds);
    return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::vector<EarlierPicture> picturesInReport(const std::string& line)
{
    const Json object = Json::parse(line, nullptr, false);
    std::vector<EarlierPicture> pictures;
    if (!object.is_object() || !object.contains("hash") || !object["hash"].is_string()) return pictures;
    const Json outputs = object.value("outputs", Json::array());
    for (const Json& output : outputs) {
        if (!output.is_object() || !output.value("name", Json()).is_string()) continue;
        if (!output.value("bytes", Json()).is_number_unsigned()) continue;
        pictures.push_back({output["name"].get<std::string>(), object["hash"].get<std::string>(),
                            output["bytes"].get<std::uint64_t>()});
    }
    return pictures;
}

}   // namespace belvor
