#include "session/Saving.h"

#include "imagefile/OmbrFile.h"
#include "platform/FileError.h"
#include "platform/Files.h"
#include "resources/Texts.h"
#include "session/Session.h"

#include <algorithm>
#include <utility>

namespace belvor {

Saving::Saving(Session& owner, Handle<RenderHost> receiver) : session(owner), host(std::move(receiver)) {}

bool Saving::querySave()
{
    const Handle<Model> model = session.model();
    if (!model || session.view().imageSaved) return true;
    const SaveAnswer answer = session.shell().askToSave(name);
    if (answer == SaveAnswer::no) return true;
    // A load may have ended under the question: then it was about another model.
    if (answer != SaveAnswer::yes || session.model() != model) return false;
    save();
    return session.model() == model && session.view().imageSaved;
}

void Saving::save()
{
    if (!named) return saveAs();
    write(session.picture(), name);
}

void Saving::saveAs()
{
    if (!session.model()) return;
    const Picture picture = session.picture();
    if (const auto file = session.shell().askFile(FileQuestion::image)) write(picture, file->path);
}

bool Saving::isModelFile(const Picture& picture, const std::string& file)
{
    const auto is = [&file](const std::string& model) { return !model.empty() && isSameFile(file, model); };
    if (!is(picture.modelPath) && !session.loading().isModelFile(file)
        && !is(session.loading().fileBeingRead()))
        return false;
    session.shell().warn(filledText(Text::wouldOverwriteModel, {file}));
    return true;
}

bool Saving::write(const Picture& picture, const std::string& file)
try {
    if (!picture.model || session.closing() || isModelFile(picture, file)) return false;
    const ImageSize& size = picture.size;
    const Scene scene = buildScene(picture.view, picture.place, size, size.width, size.height);
    const ImageSink sink = beginImage(file, picture.model, scene.camera, size.width, size.height);
    const auto request = makeHandle<ImageRequest>(file, ++lastNumber, host, picture.model, scene, sink);
    // A vector file holds lines alone: where the picture shows none, it gets them all.
    const bool none = sink.trace && !picture.lines.any();
    request->drawLines(none ? ShownLines{true, true} : picture.lines, picture.lineDrawing, sink.trace);
    writing.push_back({lastNumber, file, picture.model, picture.view, name, named, request});
    session.shell().post(Target::image, request);
    if (session.model() == picture.model) {
        session.history.markSaved(picture.view);
        named = true;
        name = file;
    }
    return true;
} catch (const OmbrFile::Busy&) {
    session.shell().warn(filledText(Text::imageBeingWritten, {file}));
    return false;
} catch (const OmbrFile::Error& failure) {   // a folder that cannot be written to is no reason to end
    session.shell().warn(filledText(Text::placeWithoutLine, {failure.what(), file}));
    return false;
} catch (const FileError& failure) {
    session.shell().warn(failure.what());
    return false;
}

void Saving::stop()
{
    for (const Save& save : writing) save.request->stop();
}

void Saving::imageEnded(std::uint32_t number, bool whole)
{
    const auto ended =
        std::find_if(writing.begin(), writing.end(), [&](const Save& save) { return save.number == number; });
    if (ended == writing.end()) return;
    const Save save = std::move(*ended);
    writing.erase(ended);
    if (whole || save.model != session.model()) return;
    // The picture is not saved after all, and the next save goes to the name that last worked.
    session.history.markUnsaved(save.view);
    session.stay();
    const bool again = std::any_of(writing.begin(), writing.end(),
                                   [&](const Save& later) { return later.file == save.file; });
    if (named && name == save.file && !again) {
        name = save.nameBefore;
        named = save.namedBefore;
    }
    for (Save& later : writing)
        if (later.model == save.model && later.nameBefore == save.file) {
            later.nameBefore = save.nameBefore;
            later.namedBefore = save.namedBefore;
        }
}

void Saving::saveParameters()
{
    if (!session.model()) return;
    const Picture picture = session.picture();
    const auto file = session.shell().askFile(FileQuestion::saveParameters);
    if (file && !isModelFile(picture, file->path))
        picture.view.write(file->path, picture.place.centre, picture.place.radius);
}

void Saving::loadParameters()
{
    const Handle<Model> model = session.model();
    if (!model) return;
    const auto file = session.shell().askFile(FileQuestion::loadParameters);
    if (!file) return;
    if (session.model() != model) return session.shell().setStatus(textOf(Text::modelReplaced));
    ViewParameters view;
    if (view.read(file->path, session.place().centre, session.place().radius)) session.setView(view);
}

}   // namespace belvor
