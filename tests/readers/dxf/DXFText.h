#pragma once

#include "readers/dxf/DXF.h"

#include <string>
#include <string_view>

namespace belvor::test {

/// A DXF text from "code value|code value|...", a line for each code and each value. What stands between two
/// "|" may be empty, so that the pieces below end with one and more can be put in anywhere.
std::string dxfText(std::string_view groups);

/// A triangle (0 0 0) (1 0 0) (0 1 0).
std::string face(const std::string& layer = "0", const std::string& more = "");
std::string insertion(const std::string& name, const std::string& more = "", const std::string& layer = "0");
std::string block(const std::string& name, const std::string& entities,
                  const std::string& base = "10 0|20 0|30 0");
std::string sectionOf(const std::string& name, const std::string& content);
/// A TABLES section with these LAYER records.
std::string layerTable(const std::string& layers);

/// The text of an ENTITIES section with these groups, then EOF.
std::string entities(const std::string& groups);
/// The text of a drawing with these blocks and entities. Of its layers "0" is green, "Red" and "true"
/// (#123456) are what they are called, "off" is off and "cold" is frozen.
std::string drawing(const std::string& blocks, const std::string& content);

/// The drawing in these bytes; faults name the file "a.dxf".
Reading readDXF(const std::string& bytes, Reporter& reporter, const ReadingOptions& options = {});
Reading readDXF(const std::string& bytes, const ReadingOptions& options = {});
inline Reading readModern(const std::string& bytes)
{
    return readDXF(bytes, {.rules = ReadingRules::modern});
}

/// What reading these bytes comes to: "3 facets", then "; type count reason" for what was skipped; or the
/// fault's what().
std::string outcomeOf(const std::string& bytes);

/// "LINE 3 = 1 + 2 no surface; ", a type after the other; then the warnings.
std::string accountOf(const Account& account);

/// Rounded to 1e-6, for comparing and for reading.
std::string written(double number);
std::string written(const Point<3>& point);
/// "(x y z) (x y z); ...", one facet after the other.
std::string written(const Model& model);
/// The sum over the facets.
double areaOf(const Model& model);

}   // namespace belvor::test
