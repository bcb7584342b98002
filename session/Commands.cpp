#include "session/Commands.h"

#include "resources/ids.h"
#include "session/Session.h"

namespace belvor {
namespace {

using S = Session;

bool modern(const Session& session) { return session.loading().rules() == ReadingRules::modern; }

template <StandardView View>
void showStandard(Session& session)
{
    session.standardView(View);
}

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
    {ID_UNDO, Needs::undo, Text::undoHelp, [](S& s) { s.undoView(); }},
    {ID_REDO, Needs::redo, Text::redoHelp, [](S& s) { s.redoView(); }},
    {ID_RELOAD, Needs::model, Text::reloadHelp, [](S& s) { s.loading().reload(); }},
    {ID_COPYPICTURE, Needs::model, Text::copyPictureHelp, [](S& s) { s.shell().copyPicture(); }},
    {ID_STOP, Needs::nothing, Text::none, [](S& s) { s.stop(); }},
    {ID_MODERNREADING, Needs::nothing, Text::modernReadingHelp,
     [](S& s) { s.loading().readBy(modern(s) ? ReadingRules::strict : ReadingRules::modern); },
     [](const S& s) { return modern(s); }},
    {ID_LINES, Needs::nothing, Text::linesHelp,
     [](S& s) {
         s.showLines({!s.shownLines().curves, s.shownLines().edges});
     },
     [](const S& s) { return s.shownLines().curves; }},
    {ID_EDGES, Needs::nothing, Text::edgesHelp,
     [](S& s) {
         s.showLines({s.shownLines().curves, !s.shownLines().edges});
     },
     [](const S& s) { return s.shownLines().edges; }},
    {ID_LEAVEFULLSCREEN, Needs::nothing, Text::none, [](S& s) { s.shell().leaveFullScreen(); }},
    {ID_STANDARDVIEW, Needs::model, Text::standardViewHelp, showStandard<StandardView::plan>},
    {ID_STANDARDVIEW + 1, Needs::model, Text::standardViewHelp, showStandard<StandardView::front>},
    {ID_STANDARDVIEW + 2, Needs::model, Text::standardViewHelp, showStandard<StandardView::back>},
    {ID_STANDARDVIEW + 3, Needs::model, Text::standardViewHelp, showStandard<StandardView::left>},
    {ID_STANDARDVIEW + 4, Needs::model, Text::standardViewHelp, showStandard<StandardView::right>},
    {ID_STANDARDVIEW + 5, Needs::model, Text::standardViewHelp, showStandard<StandardView::below>},
    {ID_STANDARDVIEW + 6, Needs::model, Text::standardViewHelp, showStandard<StandardView::isoNE>},
    {ID_STANDARDVIEW + 7, Needs::model, Text::standardViewHelp, showStandard<StandardView::isoNW>},
    {ID_STANDARDVIEW + 8, Needs::model, Text::standardViewHelp, showStandard<StandardView::isoSE>},
    {ID_STANDARDVIEW + 9, Needs::model, Text::standardViewHelp, showStandard<StandardView::isoSW>},
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
    switch (command.needs) {
    case Needs::nothing: return true;
    case Needs::undo: return session.model() && session.canUndo();
    case Needs::redo: return session.model() && session.canRedo();
    default: return static_cast<bool>(session.model());
    }
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
    if (command->needs == Needs::modelInMenu || available(*command, session)) command->run(session);
    return true;
}

}   // namespace belvor
