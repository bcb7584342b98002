#pragma once

#include "calcore/Scanner.h"
#include "readers/things/ThingsAhead.h"
#include "scene/ModelBuilder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace belvor {

class Account;
class Reporter;

/// Reads a Things file: polyhedral objects as vertices and facets whose loops
/// name vertices by number. The format is described in docs/things-format.md.
class Things {
public:
    /// Reads a file's bytes, which only need to last for the call; `path` is for messages. Reports the number
    /// of the thing as the stage. Up to `threads` threads read large files. Throws BadFile,
    /// Reporter::Abandoned, std::bad_alloc.
    Things(std::string_view bytes, const std::string& path, Reporter& reporter, Account& account,
           unsigned threads = 1);

    /// What was read; to be taken once.
    Handle<Model> takeModel() noexcept { return builder.take(); }

private:
    using Text = Scanner<'@'>;

    void readThing(Text& text);
    bool triesAhead(std::int64_t index, std::int64_t count) const noexcept;
    std::uint32_t readVertices(Text& text);
    std::int64_t readVerticesAhead(Text& text, std::int64_t done, std::int64_t count);
    void reportVertex(std::int64_t index, std::int64_t count);
    void report(double fraction);
    void readEdges(Text& text);
    void readFacets(Text& text);
    std::int64_t readFacetsAhead(Text& text, std::int64_t done, std::int64_t count);
    void reportFacet(std::int64_t index, std::int64_t count);
    std::int64_t readFacet(Text& text);
    std::uint32_t readLoop(Text& text, Vector<3>& normal);
    void pauseEvery(std::int64_t step);
    std::uint32_t readVertexNumber(Text& text);
    std::string_view readMaterialName(Text& text, std::string_view& line);
    const Material& materialNamed(std::string_view name);
    void addSide(std::uint32_t from, std::uint32_t to, Vector<3>& normal);

    const Model& model() const noexcept { return builder.model(); }

    ModelBuilder builder;
    const std::string path;
    Reporter& progress;      // during construction
    double fraction = 0.0;   // of the thing, as reported last
    std::int32_t things = 0;
    std::uint32_t firstVertex = 0, thingVertices = 0;   // of the thing being read
    const Material* lastMaterial = nullptr;
    std::optional<ThingsAhead> ahead;    // of a large text
    std::string_view lastMaterialLine;   // as it stood in the text, with its end; empty when it was longer
};

}   // namespace belvor
