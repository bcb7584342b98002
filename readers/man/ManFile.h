#pragma once

#include "scene/Model.h"

#include <string>
#include <string_view>

namespace belvor {

class ManClump;
class ManLines;

/// A boundary model read from a MAN file (docs/man-format.md). Each clump's vertices are
/// stored in file order, then its facets.
class ManFile : public Model {
public:
    /// Reads the file `path` (UTF-8), telling `progress` how far it is, in one stage. Throws
    /// BadFile with file and line, Win32Error, Reporter::Abandoned, std::bad_alloc.
    ManFile(const std::string& path, Reporter& progress);
    /// Reads a file's bytes; `name` stands in faults. Throws as above, but no Win32Error.
    ManFile(std::string_view bytes, const std::string& name, Reporter& progress);

private:
    void read(ManLines& lines, Reporter& progress);
    void readHeader(ManLines& lines, Reporter& progress);
    void readUnits(ManLines& lines);
    void readMaterial(ManLines& lines);
    void readClump(ManLines& lines, Reporter& progress);
    void readEdges(ManLines& lines, ManClump& clump, std::int32_t vertices, std::int32_t facets,
                   Reporter& progress);
};

}   // namespace belvor
