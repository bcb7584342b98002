#pragma once

#include "readers/dxf/DXF.h"

#include <string>
#include <string_view>
#include <vector>

namespace belvor::test {

/// A DXF text from "code value|code value|...", a line for each code and each value.
std::string dxfText(std::string_view groups);

/// The text of an ENTITIES section with these groups, then EOF.
std::string entities(std::string_view groups);

/// The drawing in these bytes; faults name the file "a.dxf".
Handle<DXF> readDXF(const std::string& bytes);

/// What reading these bytes says: the fault's what(), or "" when there is none.
std::string faultOf(const std::string& bytes);

using Corners = std::vector<Point<3>>;

/// The corners of facet number `facet`, in order.
Corners cornersOf(const Model& model, std::uint32_t facet);
/// "(x y z) (x y z); ...", one facet after the other, rounded to 1e-8: for comparing and for reading.
std::string written(const Model& model);
/// "type count reason; ..."
std::string written(const SkippedEntities& skipped);
/// The sum over the facets.
double areaOf(const Model& model);

}   // namespace belvor::test
