#include "app/LoadRequest.h"

#include "platform/FileNames.h"

#include <utility>

namespace belvor {
namespace {

Text firstTextOf(FileType type)
{
    return type == FileType::dxf   ? Text::dxfStage
           : type == FileType::man ? Text::manStage
                                   : Text::thingsStage;
}
/// A Things file numbers its objects; the others have one stage.
int textCountOf(FileType type) { return type == FileType::things ? 0 : 1; }

}   // namespace

LoadRequest::LoadRequest(std::string file, FileType kind, Handle<RenderHost> receiver)
    : Request(std::string(fileName(file)), firstTextOf(kind), textCountOf(kind)),
      path(std::move(file)),
      type(kind),
      host(std::move(receiver))
{}

void LoadRequest::run(Reporter& progress)
{
    const Handle<Model> model = readModel(path, type, progress);
    host->modelLoaded(path, model.get());
}

}   // namespace belvor
