#include "imagefile/ImageDescription.h"

#include "text/JsonText.h"

namespace belvor {
namespace {

constexpr int descriptionVersion = 1;
constexpr const char* unitNames[] = {"undefined",  "microns", "millimetres", "centimetres", "metres",
                                     "kilometres", "thou",    "inches",      "feet"};

void describeVector(JsonText& json, const char* name, const Vector<3>& vector)
{
    const double numbers[] = {vector[0], vector[1], vector[2]};
    json.key(name).numbers(numbers);
}

void describeMaterials(JsonText& json, const std::vector<ImageMaterial>& materials)
{
    json.key("materials").beginList();
    for (const auto& [number, colour, name] : materials) {
        json.beginObject().key("number").value(number).key("name").value(name).key("colour").beginList();
        for (const std::uint8_t channel : colour) json.value(channel);
        json.endList().endObject();
    }
    json.endList();
}

}   // namespace

void describeCamera(JsonText& json, const CameraRecord& camera)
{
    const bool perspective = camera.kind == 0;
    json.beginObject().key("kind").value(perspective ? "perspective" : "parallel");
    describeVector(json, perspective ? "eye" : "origin", camera.eye.vector());
    describeVector(json, "right", camera.right);
    describeVector(json, "up", camera.up);
    describeVector(json, "forward", camera.forward);
    if (perspective) {
        describeVector(json, "firstPixel", camera.firstPixel);
        describeVector(json, "lastPixel", camera.lastPixel);
    } else {
        describeVector(json, "extent", camera.lastPixel);
    }
    json.key("near").value(camera.near).key("far").value(camera.far).endObject();
}

void describeUnits(JsonText& json, const CameraRecord& camera)
{
    json.beginObject().key("code").value(camera.unitsCode);
    json.key("name").value(unitNames[camera.unitsCode < std::size(unitNames) ? camera.unitsCode : 0]);
    json.key("scale").value(camera.unitsScale).endObject();
}

std::string describeImage(const ImageHeader& header)
{
    JsonText json;
    json.beginObject().key("version").value(descriptionVersion);
    json.key("width").value(header.width).key("height").value(header.height).key("camera");
    describeCamera(json, header.camera);
    json.key("units");
    describeUnits(json, header.camera);
    if (header.bounds) {
        json.key("bounds").beginObject();
        describeVector(json, "centre", header.bounds->centre.vector());
        json.key("radius").value(header.bounds->radius).endObject();
    }
    describeMaterials(json, header.materials);
    if (!header.texts.view.empty()) json.key("view").value(header.texts.view);
    if (!header.texts.hash.empty()) json.key("hash").value(header.texts.hash);
    return json.endObject().text();
}

}   // namespace belvor
