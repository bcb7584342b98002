#pragma once

#include "readers/dxf/DXF.h"

#include <string>
#include <string_view>

namespace belvor::test {

/// A DXF text from "code value|code value|...", a line for each code and each value.
std::string dxfText(std::string_view groups);

/// The text of an ENTITIES section with these groups, then EOF.
std::string entities(std::string_view groups);
/// "0 SECTION|2 NAME|", the content and "0 ENDSEC|".
std::string sectionOf(const std::string& name, const std::string& content);
/// "0 BLOCK|2 NAME|", the base point, the entities and "|0 ENDBLK|".
std::string block(const std::string& name, const std::string& entities,
                  const std::string& base = "10 0|20 0|30 0");
/// An INSERT at the origin on layer 0, without a "|" at its end.
std::string insertion(const std::string& name, const std::string& more = "");

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

/// "(x y z) (x y z); ...", one facet after the other, rounded to 1e-8: for comparing and for reading.
std::string written(const Model& model);
/// The sum over the facets.
double areaOf(const Model& model);

}   // namespace belvor::test
