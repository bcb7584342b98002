#pragma once

#include "readers/ModelFile.h"
#include "view/SceneBuilder.h"
#include "view/ViewParameters.h"

#include <string>

namespace belvor {

/// Writes the text to standard output at once. Throws FileError.
void print(const std::string& text);

/// Writes one line of standard error, the program's name before it.
void remark(const std::string& text);

/// From now on remarks are added to `text` instead, which must outlive them; null for standard error again.
void collectRemarks(std::string* text) noexcept;

/// Tells why something is missing from a picture of the model, or why the picture cannot be exact.
void remarkOn(const std::string& file, const Reading& reading);

struct Options;

/// Tells why lines that are drawn may not be seen in the pictures that `options` ask for: they have the
/// colour of the background, or lie far from the surfaces, which alone place the views.
void remarkOnLines(const Options& options, const Model& model, const ModelPlace& place);

/// Tells the user what was read past in a parameter file.
std::string viewFaultText(const std::string& file, const ViewFileFault& fault);

}   // namespace belvor
