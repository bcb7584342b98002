#pragma once

#include "readers/ModelFile.h"
#include "readers/dxf/SkippedEntities.h"
#include "scene/Model.h"

#include <string>
#include <vector>

namespace belvor {

/// What was met in the model file and gave no surface; nothing for formats where all does.
std::vector<SkippedEntities::Entry> skippedIn(const Model& model);

/// The model described as one JSON object on one line; numbers round-trip. `file` is UTF-8.
std::string describeModel(const std::string& file, FileType type, const Model& model);

}   // namespace belvor
