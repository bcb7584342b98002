#include "session/LoadRequest.h"

#include "platform/FileNames.h"
#include "platform/OutputFile.h"
#include "session/NamedFailure.h"

#include <utility>

namespace belvor {
LoadRequest::LoadRequest(std::string file, FileType kind, const ReadingOptions& rules, std::uint32_t number,
                         Handle<RenderHost> receiver, Handle<LoadResult> left)
    : Request(std::string(fileName(file)), formatOf(kind)->firstStage, formatOf(kind)->stageCount),
      path(std::move(file)),
      type(kind),
      options(rules),
      load(number),
      host(std::move(receiver)),
      result(std::move(left))
{}

void LoadRequest::run(Reporter& progress)
try {
    result->stamp = stampOf(path);
    result->identity = fileIdentity(path);
    Handle<Model> model;
    namingFile(path, [&] { model = readModel(path, type, progress, options, result->account); });
    host->modelLoaded(load, model.get());
    result->ended = true;
} catch (...) {
    result->ended = true;
    throw;
}

}   // namespace belvor
