#include "ui/dialogs/ModelPropertiesDialog.h"

#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Accessible.h"
#include "ui/UserLocale.h"
#include "ui/dialogs/DialogItems.h"
#include "ui/dialogs/NumberText.h"

#include <iterator>
#include <utility>

namespace belvor {

void ModelPropertiesDialog::open(HWND owner, const std::optional<ModelFacts>& facts, Apply applyUnits)
{
    if (!window()) {
        model = facts;
        setUnits = std::move(applyUnits);
    }
    ModelessDialog::open(owner, ID_PROPERTIESDIALOG);
}

void ModelPropertiesDialog::modelChanged(const ModelFacts& facts)
{
    if (!window()) return;
    model = facts;
    fill();
}

void ModelPropertiesDialog::initialise()
{
    decimalPoint = userDecimalPoint();
    countFormat = itemText(window(), ID_VERTEXCOUNT);
    memoryFormat = itemText(window(), ID_VERTEXMEMORY);
    centreFormat = itemText(window(), ID_CENTRE, 128);
    fill();
    nameAccessible(GetDlgItem(window(), ID_SCALE), textOf(Text::scaleName));
    focusField(window(), ID_SCALE);
}

void ModelPropertiesDialog::fill()
{
    if (!model) return;
    setItemText(window(), ID_MODELNAME, model->path);
    const auto show = [&](int control, const std::string& format, std::uint32_t number) {
        setItemText(window(), control, filled(format, {std::to_string(number)}));
    };
    show(ID_VERTEXCOUNT, countFormat, model->counts.vertices);
    show(ID_VERTEXMEMORY, memoryFormat, vertexMemoryKB(model->counts.vertices));
    show(ID_EDGECOUNT, countFormat, model->counts.edges);
    show(ID_EDGEMEMORY, memoryFormat, edgeMemoryKB(model->counts.edges));
    show(ID_FACETCOUNT, countFormat, model->counts.facets);
    show(ID_FACETMEMORY, memoryFormat, facetMemoryKB(model->counts.facets));
    show(ID_MATERIALCOUNT, countFormat, model->counts.materials);
    initialScale = shownNumber(model->units.scale, decimalPoint);
    setItemText(window(), ID_SCALE, initialScale);
    CheckRadioButton(window(), ID_UNITS, ID_UNITSLAST, ID_UNITS + static_cast<int>(model->units.code));
    showScaled(model->units.scale);
    showAccount();
}

/// Below everything else, in a dialog that is higher by it, only when there is something to show.
void ModelPropertiesDialog::showAccount()
{
    HWND list = GetDlgItem(window(), ID_ACCOUNT);
    RECT area{7, 153, 293, 215}, room{0, 0, 0, 69};
    MapDialogRect(window(), &area);
    MapDialogRect(window(), &room);
    if (!list && !model->account.empty()) {
        list = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                               WS_CHILD | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY, area.left,
                               area.top, area.right - area.left, area.bottom - area.top, window(),
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(ID_ACCOUNT)), nullptr, nullptr);
        SendMessageW(list, WM_SETFONT, static_cast<WPARAM>(SendMessageW(window(), WM_GETFONT, 0, 0)), FALSE);
        const int stops[] = {90, 200};   // dialog units
        SendMessageW(list, EM_SETTABSTOPS, std::size(stops), reinterpret_cast<LPARAM>(stops));
        nameAccessible(list, textOf(Text::accountName));
    }
    if (!list) return;
    const bool shown = (GetWindowLongPtrW(list, GWL_STYLE) & WS_VISIBLE) != 0,
               shows = !model->account.empty();
    setItemText(window(), ID_ACCOUNT, model->account);
    if (shown == shows) return;
    ShowWindow(list, shows ? SW_SHOWNA : SW_HIDE);
    RECT frame;
    GetWindowRect(window(), &frame);
    SetWindowPos(window(), nullptr, 0, 0, frame.right - frame.left,
                 frame.bottom - frame.top + (shows ? room.bottom : -room.bottom),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ModelPropertiesDialog::command(int control, int notification)
{
    if (control == ID_SCALE && notification == EN_CHANGE && model) {
        showScaled(scale());
        const double typed = scale();
        marks.check(window(), ID_SCALE, decimalPoint,
                    typed == 0.0  ? textOf(Text::scaleZero)
                    : typed < 0.0 ? textOf(Text::scaleNegative)
                                  : "");
    }
    if (control >= ID_UNITS && control <= ID_UNITSLAST && choosesRadio(notification))
        CheckRadioButton(window(), ID_UNITS, ID_UNITSLAST, control);
}

void ModelPropertiesDialog::showScaled(double scale)
{
    setItemText(window(), ID_CENTRE, centreText(centreFormat, model->centre, scale, decimalPoint));
    setItemText(window(), ID_RADIUS, shownNumber(model->radius * scale, decimalPoint));
}

double ModelPropertiesDialog::scale() const
{
    return scaleOf(model->units.scale, initialScale, itemText(window(), ID_SCALE, longestNumber),
                   decimalPoint);
}

void ModelPropertiesDialog::apply()
{
    if (!model) return;
    for (int button = ID_UNITS; button <= ID_UNITSLAST; ++button) {
        if (IsDlgButtonChecked(window(), button) != BST_CHECKED) continue;
        model->units = {scale(), static_cast<std::uint32_t>(button - ID_UNITS)};
        initialScale = itemText(window(), ID_SCALE, longestNumber);
        setUnits(model->units);
        return;
    }
}

}   // namespace belvor
