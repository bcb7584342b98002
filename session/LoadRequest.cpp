#include "session/LoadRequest.h"

#include "platform/FileNames.h"
#include "session/NamedFailure.h"

#include <utility>

namespace belvor {
LoadRequest::LoadRequest(std::string file, FileType kind, std::uint32_t number, Handle<RenderHost> receiver)
    : Request(std::string(fileName(file)), formatOf(kind)->firstStage, formatOf(kind)->stageCount),
      path(std::move(file)),
      type(kind),
      load(number),
      host(std::move(receiver))
{}

void LoadRequest::run(Reporter& progress)
{
    Handle<Model> model;
    namingFile(path, [&] { model = readModel(path, type, progress).model; });
    host->modelLoaded(load, model.get());
}

}   // namespace belvor
