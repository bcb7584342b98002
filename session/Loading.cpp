#include "session/Loading.h"

#include "platform/FileNames.h"
#include "platform/Files.h"
#include "platform/OutputFile.h"
#include "resources/Texts.h"
#include "session/LoadRemark.h"
#include "session/Session.h"

#include <utility>

namespace belvor {
namespace {

/// The reader that a filter of the Open Model dialog chooses: 1 is all models, then one a format.
FileType typeOf(const ChosenFile& file)
{
    const auto formats = modelFormats();
    const std::size_t index = file.filter - std::size_t{2};
    return index < formats.size() ? formats[index].type : fileTypeOf(file.path);
}

}   // namespace

Loading::Loading(Session& owner, Handle<RenderHost> receiver) : session(owner), host(std::move(receiver)) {}

void Loading::openModel()
{
    if (!session.saving().querySave()) return;
    const Handle<Model> model = session.model();
    const bool saved = session.view().imageSaved;
    const auto file = session.shell().askFile(FileQuestion::openModel);
    if (!file) return;
    // Under the dialog another model may have arrived, or the save may have failed.
    const bool same = session.model() == model && (!saved || session.view().imageSaved);
    if (same || session.saving().querySave()) loadFile(file->path, typeOf(*file));
}

void Loading::openRecent(std::size_t index)
{
    const auto file = session.shell().recentFile(index);
    if (file && session.saving().querySave()) loadFile(*file, fileTypeOf(*file));
}

void Loading::openFile(const std::string& path)
{
    if (session.closing() || session.shell().modalOpen()) return;
    const std::string full = session.shell().fullPath(path);
    if (session.saving().querySave()) loadFile(full, fileTypeOf(full));
}

void Loading::loadFile(const std::string& path, FileType kind)
{
    Shell& shell = session.shell();
    if (kind == FileType::unknown) return shell.setStatus(filledText(Text::unknownFileType, {path}));
    if (session.closing()) return;
    post(path, kind, false);
    if (kind == fileTypeOf(path)) shell.addRecent(path);
}

void Loading::post(const std::string& path, FileType kind, bool again)
{
    pending = path;
    pendingType = kind;
    rereads = again;
    pendingReading = reading;
    result = makeHandle<LoadResult>();
    session.shell().cancel(Target::mainWindow);
    session.shell().post(Target::mainWindow,
                         makeHandle<LoadRequest>(path, kind, reading, ++lastNumber, host, result));
}

void Loading::reload()
{
    if (session.model() && !session.closing()) post(session.modelPath(), type, true);
}

void Loading::readBy(ReadingRules rules)
{
    if (rules == reading.rules) return;
    reading.rules = rules;
    session.shell().settingsChanged();
    readAgain();
}

void Loading::readCurves(bool wanted)
{
    if (wanted == reading.curves) return;
    reading.curves = wanted;
    readAgain();
}

/// A drawing by the options that have just changed; a load that is under way goes on by them too.
void Loading::readAgain()
{
    if (running()) return post(pending, pendingType, rereads);
    // After a reading that failed or was stopped the model is still one by the options before.
    if (reading.rules == readingOfModel.rules && reading.curves == readingOfModel.curves) return;
    if (type == FileType::dxf && session.model() && !session.closing()) post(session.modelPath(), type, true);
}

bool Loading::isModelFile(const std::string& path) const
{
    if (!session.model()) return false;
    if (isSameFile(path, session.modelPath())) return true;
    return stampOfModel.exists && stampOf(path) == stampOfModel && fileIdentity(path) == identityOfModel;
}

void Loading::refused(const std::string& why)
{
    if (pendingType == FileType::dxf && reading.rules == ReadingRules::strict)
        session.shell().setStatus(filledText(Text::modernMayRead, {why}));
}

void Loading::tellRemark()
{
    if (const Handle<Model>& model = session.model())
        session.shell().setRemark(loadRemark(accountOfModel, *model, reading));
}

void Loading::giveUp()
{
    pending.clear();
    session.shell().cancel(Target::mainWindow);
}

void Loading::modelLoaded(std::uint32_t number, Model* model)
{
    // A reader that has just finished can no longer be stopped by a newer load, which may be one of
    // the same file.
    if (!model || session.closing() || number != lastNumber || pending.empty()) return;
    const Handle<Model> loaded(model);
    const std::string full = session.shell().fullPath(std::exchange(pending, {}));
    type = pendingType;
    accountOfModel = result->account;
    stampOfModel = result->stamp;
    identityOfModel = result->identity;
    readingOfModel = pendingReading;
    session.shell().endDrags();   // a drag is a request for the model that it began with
    session.saving().forgetName();
    session.takeModel(loaded, full, rereads);
    session.shell().showModel();
    session.shell().setTitle(filledText(Text::windowTitle, {fileName(full)}));
    tellRemark();
    session.shell().watchFile(full, stampOfModel);
}

}   // namespace belvor
