#include "session/Commands.h"

#include "resources/ids.h"
#include "session/Session.h"

namespace belvor {
namespace {

using S = Session;

constexpr Command table[] = {
    {ID_OPENMODEL, Needs::nothing, Text::openModelHelp, [](S& s) { s.loading().openModel(); }},
    {ID_MODELPROPERTIES, Needs::modelInMenu, Text::modelPropertiesHelp,
     [](S& s) { s.shell().showProperties(); }},
    {ID_SAVE, Needs::model, Text::saveHelp, [](S& s) { s.saving().save(); }},
    {ID_SAVEAS, Needs::model, Text::saveAsHelp, [](S& s) { s.saving().saveAs(); }},
    {ID_EXIT, Needs::nothing, Text::exitHelp, [](S& s) { s.close(); }},
    {ID_WHOLEMODEL, Needs::model, Text::wholeModelHelp, [](S& s) { s.wholeModel(); }},
    {ID_INCREASEZOOM, Needs::model, Text::zoomOutHelp, [](S& s) { s.increaseZoomAngle(); }},
    {ID_CENTRELOOKAT, Needs::model, Text::centreLookAtHelp, [](S& s) { s.centreLookAt(); }},
    {ID_PREVIOUSVIEW, Needs::model, Text::previousViewHelp, [](S& s) { s.previousView(); }},
    {ID_LEAVEFULLSCREEN, Needs::nothing, Text::none, [](S& s) { s.shell().leaveFullScreen(); }},
    {ID_IMAGESIZE, Needs::nothing, Text::imageSizeHelp, [](S& s) { s.shell().showImageSizes(); }},
    {ID_VIEWPARAMETERS, Needs::model, Text::viewParametersHelp, [](S& s) { s.askView(); }},
    {ID_SAVEPARAMETERS, Needs::model, Text::saveParametersHelp, [](S& s) { s.saving().saveParameters(); }},
    {ID_LOADPARAMETERS, Needs::model, Text::loadParametersHelp, [](S& s) { s.saving().loadParameters(); }},
    {ID_FULLSCREEN, Needs::nothing, Text::fullScreenHelp, [](S& s) { s.shell().toggleFullScreen(); }},
    {ID_SHOWCONTROLS, Needs::nothing, Text::controlsHelp, [](S& s) { s.shell().toggleControls(); }},
    {ID_ABOUT, Needs::nothing, Text::aboutHelp, [](S& s) { s.shell().showAbout(); }},
    {ID_CONTENTS, Needs::nothing, Text::contentsHelp, [](S& s) { s.shell().showHelp(); }},
};

}   // namespace

std::span<const Command> commands() noexcept { return table; }

const Command* commandOf(int id) noexcept
{
    for (const Command& command : table)
        if (command.id == id) return &command;
    return nullptr;
}

bool available(const Command& command, const Session& session) noexcept
{
    return command.needs == Needs::nothing || session.model();
}

bool runCommand(Session& session, int id)
{
    if (session.closing() || session.shell().modalOpen()) return true;
    if (id >= ID_RECENT && id <= ID_RECENTLAST) {
        session.loading().openRecent(static_cast<std::size_t>(id - ID_RECENT));
        return true;
    }
    const Command* const command = commandOf(id);
    if (!command) return false;
    if (command->needs != Needs::model || session.model()) command->run(session);
    return true;
}

}   // namespace belvor
