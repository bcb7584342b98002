#pragma once

#include "scene/Model.h"

#include <string_view>

namespace belvor::bench {

/// What reading a file costs at the least: each of its bytes looked at once.
unsigned sumOfBytes(std::string_view bytes) noexcept;

/// What reading a text file of numbers costs at the least: each number converted, with nothing around it.
double sumOfNumbers(std::string_view bytes) noexcept;

/// What reading a Things file of triangles into a model costs at the least: a loop over digits for each
/// number, with one exact division, whose results are stored as the model's own records. Nothing is
/// checked, reported or told from anything else, and no plane is computed.
Handle<Model> digitLoopOfThings(std::string_view bytes);

/// The same of a DXF text of 3DFACEs of four corners.
Handle<Model> digitLoopOfFaces(std::string_view bytes);

}   // namespace belvor::bench
