#pragma once

#include "imagefile/OmbrReader.h"
#include "platform/OutputFile.h"

namespace belvor {

/// Writes the points that an Ombr file shows as a binary PLY file: a vertex for each pixel that is not
/// empty, with its model coordinates in double, colour and material number. `goOn` is called for each row,
/// and what it throws passes. Throws FileError, std::bad_alloc.
void writePly(OmbrReader& image, OutputFile& output, void (*goOn)());

}   // namespace belvor
