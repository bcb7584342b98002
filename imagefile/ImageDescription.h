#pragma once

#include "imagefile/ImageHeader.h"

#include <string>

namespace belvor {

class JsonText;

/// The camera as a JSON object, every number in full.
void describeCamera(JsonText& json, const CameraRecord& camera);
/// The length of a model unit, as a JSON object.
void describeUnits(JsonText& json, const CameraRecord& camera);
/// A header as one JSON object, for formats that hold a text; docs/image-formats.md lists its fields.
std::string describeImage(const ImageHeader& header);

}   // namespace belvor
