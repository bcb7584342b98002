#pragma once

#include "readers/dxf/DXF.h"

#include <string>
#include <string_view>

namespace belvor::test {

/// A DXF text from "code value|code value|...", a line for each code and each value.
std::string dxfText(std::string_view groups);

/// The text of an ENTITIES section with these groups, then EOF.
std::string entities(std::string_view groups);

/// The drawing in these bytes; faults name the file "a.dxf".
Reading readDXF(const std::string& bytes, Reporter& reporter, const ReadingOptions& options = {});
Reading readDXF(const std::string& bytes);

/// What reading these bytes comes to: "3 facets", then "; type count reason" for what was skipped; or the
/// fault's what().
std::string outcomeOf(const std::string& bytes);

/// "(x y z) (x y z); ...", one facet after the other, rounded to 1e-8: for comparing and for reading.
std::string written(const Model& model);
/// The sum over the facets.
double areaOf(const Model& model);

}   // namespace belvor::test
