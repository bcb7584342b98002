#include "app/ProgressDisplay.h"

#include "app/MainWindow.h"
#include "platform/Utf16.h"
#include "platform/Win32Error.h"
#include "platform/win32/Handles.h"
#include "platform/win32/Window.h"
#include "view/ProgressText.h"

#include <commctrl.h>

namespace belvor {
namespace {

constexpr UINT updateInterval = 100;   // milliseconds
constexpr WPARAM namePart = 0, stagePart = 1, barPart = 2;

void setPart(HWND bar, WPARAM part, const std::string& text)
{
    SendMessageW(bar, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(toWide(text).c_str()));
}

void fillColumns(const DRAWITEMSTRUCT& item, int left, int right, int colour)
{
    const RECT columns{left, item.rcItem.top, right, item.rcItem.bottom};
    FillRect(item.hDC, &columns, GetSysColorBrush(colour));
}

}   // namespace

void ProgressDisplay::start(Progress& progress)
{
    const auto id = reinterpret_cast<UINT_PTR>(&progress);
    progress.updatePending();   // before the timer can fire
    running[id] = Handle<Progress>(&progress);
    if (!SetTimer(window, id, updateInterval, timerFired)) throw Win32Error("SetTimer");
}

void CALLBACK ProgressDisplay::timerFired(HWND window, UINT, UINT_PTR id, DWORD)
{
    guarded([&] {
        if (MainWindow* const main = stateOf<MainWindow>(window)) main->progressDisplay().update(id);
    });
}

void ProgressDisplay::update(UINT_PTR id)
{
    KillTimer(window, id);   // a window's timer goes on until then
    const auto entry = running.find(id);
    if (entry == running.end()) return;
    const Handle<Progress> progress = std::move(entry->second);
    running.erase(entry);
    if (!progress->finished()) show(*progress);
    progress->updateDone();
}

void ProgressDisplay::show(Progress& progress)
{
    if (progress.shownStage == 0) setPart(bar, namePart, progress.name);
    const int stage = progress.stage();
    if (progress.shownStage != stage + 1) {
        progress.shownStage = stage + 1;
        setPart(bar, stagePart, stageText(stage, progress.firstStageText, progress.stageTexts));
    }
    SendMessageW(bar, SB_SETTEXTW, barPart | SBT_OWNERDRAW, reinterpret_cast<LPARAM>(&progress));
}

void ProgressDisplay::draw(const DRAWITEMSTRUCT& item)
{
    const auto* const progress = reinterpret_cast<const Progress*>(item.itemData);
    if (!progress) return;
    const ProgressBar columns =
        progressBar(item.rcItem.left, item.rcItem.right, progress->fraction(), progress->highWater());
    const SavedDC saved(item.hDC);
    fillColumns(item, item.rcItem.left, columns.end, COLOR_HIGHLIGHT);
    if (columns.marked) fillColumns(item, columns.marker, columns.marker + 2, COLOR_INFOBK);
}

}   // namespace belvor
