#pragma once

#include "scene/ModelBuilder.h"

#include <string>
#include <string_view>

namespace belvor {

class ManClump;
class ManLines;
class Reporter;

/// Reads a boundary model from a MAN file (docs/man-format.md). Each clump's vertices are
/// stored in file order, then its facets.
class ManFile {
public:
    /// Reads a file's bytes, telling `progress` how far it is, in one stage; `name` stands in faults. Throws
    /// BadFile with name and line, Reporter::Abandoned, std::bad_alloc.
    ManFile(std::string_view bytes, const std::string& name, Reporter& progress);

    /// What was read; to be taken once.
    Handle<Model> takeModel() noexcept { return builder.take(); }

private:
    void read(ManLines& lines, Reporter& progress);
    void readHeader(ManLines& lines, Reporter& progress);
    void readUnits(ManLines& lines);
    void readMaterial(ManLines& lines);
    void readClump(ManLines& lines, Reporter& progress);
    void readEdges(ManLines& lines, ManClump& clump, std::int32_t vertices, std::int32_t facets,
                   Reporter& progress);

    ModelBuilder builder;
};

}   // namespace belvor
