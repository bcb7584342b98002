#include "app/Commands.h"

#include "app/Dialogs.h"
#include "app/Help.h"
#include "resources/ids.h"

namespace belvor {
namespace {

struct Command {
    UINT id;
    void (*run)(MainWindow& window);
};

// The item is grey without a model; a program that sends the command all the same gets nothing.
template <void (*action)(Belvor&)>
void withModel(MainWindow& window)
{
    if (window.belvor().model()) action(window.belvor());
}

constexpr Command commands[] = {
    {ID_OPENMODEL, [](MainWindow& w) { w.loading().openModel(); }},
    {ID_MODELPROPERTIES, [](MainWindow& w) { w.dialogs().showProperties(); }},
    {ID_SAVE, [](MainWindow& w) { w.saving().save(); }},
    {ID_SAVEAS, [](MainWindow& w) { w.saving().saveAs(); }},
    {ID_EXIT, [](MainWindow& w) { w.close(); }},
    {ID_WHOLEMODEL, withModel<[](Belvor& b) { b.setView(wholeModel(b.view(), b.image)); }>},
    {ID_INCREASEZOOM, withModel<[](Belvor& b) { b.setView(increaseZoomAngle(b.view())); }>},
    {ID_CENTRELOOKAT, withModel<[](Belvor& b) { b.setView(centreLookAt(b.view())); }>},
    {ID_PREVIOUSVIEW, withModel<[](Belvor& b) { b.previousView(); }>},
    {ID_LEAVEFULLSCREEN, [](MainWindow& w) { w.leaveFullScreen(); }},
    {ID_IMAGESIZE, [](MainWindow& w) { w.dialogs().showImageSize(); }},
    {ID_VIEWPARAMETERS, [](MainWindow& w) { w.dialogs().askView(); }},
    {ID_SAVEPARAMETERS, [](MainWindow& w) { w.saving().saveParameters(); }},
    {ID_LOADPARAMETERS, [](MainWindow& w) { w.saving().loadParameters(); }},
    {ID_FULLSCREEN, [](MainWindow& w) { w.toggleFullScreen(); }},
    {ID_SHOWCONTROLS, [](MainWindow& w) { w.toggleControls(); }},
    {ID_ABOUT, [](MainWindow& w) { w.dialogs().showAbout(); }},
    {ID_CONTENTS, [](MainWindow& w) { openHelp(w.handleOfWindow()); }},
};

}   // namespace

bool runCommand(MainWindow& window, UINT id)
{
    if (id >= ID_RECENT && id <= ID_RECENTLAST) {
        window.loading().openRecent(id);
        return true;
    }
    for (const Command& command : commands) {
        if (command.id != id) continue;
        command.run(window);
        return true;
    }
    return false;
}

}   // namespace belvor
