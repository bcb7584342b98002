#include "ui/dialogs/ViewParametersDialog.h"

#include "platform/Win32Error.h"
#include "platform/win32/Window.h"
#include "resources/Texts.h"
#include "resources/ids.h"
#include "ui/Accessible.h"
#include "ui/UserLocale.h"
#include "ui/dialogs/DialogItems.h"
#include "ui/dialogs/ModelessDialog.h"
#include "ui/dialogs/NumberMarks.h"
#include "ui/dialogs/NumberText.h"

#include <array>
#include <string>
#include <utility>

namespace belvor {
namespace {

/// The edit control of a field of ViewFields.
constexpr int controlOf(int field) noexcept
{
    if (field < ViewFields::zoom) return ID_EYEX + field;
    if (field == ViewFields::zoom) return ID_ZOOM;
    return field < ViewFields::lights ? ID_SKY + field - ViewFields::sky
                                      : ID_LIGHT + field - ViewFields::lights;
}

class ViewParametersDialog {
public:
    ViewParametersDialog(const ViewFields& shown, HBRUSH (*brushOfLight)(int))
        : fields(shown),
          lightBrush(brushOfLight),
          parallel(shown.parallel()),
          decimalPoint(userDecimalPoint())
    {}

    INT_PTR handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

    TypedView answer() const { return {fields, typed, parallel}; }

private:
    void initialise();
    void nameFields() const;
    void command(int control, int notification);
    void choose(bool parallelProjection);
    void showField(int field);
    std::string zoomRemark() const;
    void readFields();
    INT_PTR labelBrush(HDC dc, HWND label) const;

    const ViewFields fields;
    HBRUSH (*const lightBrush)(int);
    HWND window = nullptr;
    bool parallel;
    const std::string decimalPoint;
    std::array<std::string, ViewFields::count> initial;   // the texts as the dialog wrote them
    ViewFields::Typed typed;
    NumberMarks marks;   // of what is typed
    bool writing = false;
};

INT_PTR ViewParametersDialog::handle(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    noteActivation(dialog, message, wParam);
    window = dialog;
    switch (message) {
    case WM_INITDIALOG: initialise(); return FALSE;   // initialise() has set the focus
    case WM_COMMAND: command(LOWORD(wParam), HIWORD(wParam)); return TRUE;
    case WM_CTLCOLOREDIT:
        return reinterpret_cast<INT_PTR>(
            marks.brush(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam)));
    case WM_CTLCOLORSTATIC: return labelBrush(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
    default: return FALSE;
    }
}

void ViewParametersDialog::initialise()
{
    setItemText(window, ID_UNITSNAME,
                textOf(textAfter(Text::undefinedUnits, static_cast<int>(fields.unitsCode()))));
    for (int axis = 0; axis < 3; ++axis)
        setItemText(window, ID_CENTREX + axis, shownNumber(fields.centre(axis), decimalPoint));
    setItemText(window, ID_RADIUS, shownNumber(fields.radius(), decimalPoint));
    for (int field = 0; field < ViewFields::count; ++field) showField(field);
    choose(parallel);
    nameFields();
    focusField(window, controlOf(ViewFields::eye));
}

void ViewParametersDialog::showField(int field)
{
    const std::optional<double> value = fields.value(field, parallel);
    std::string& text = initial[static_cast<std::size_t>(field)];
    text = value ? shownNumber(*value, decimalPoint) : std::string();
    writing = true;
    setItemText(window, controlOf(field), text);
    writing = false;
    if (field == ViewFields::zoom && value) marks.check(window, ID_ZOOM, decimalPoint);
    EnableWindow(GetDlgItem(window, controlOf(field)), value.has_value());
}

/// What a number is taken for that is no zoom: the zoom as it is.
std::string ViewParametersDialog::zoomRemark() const
{
    const double number = typedNumber(itemText(window, ID_ZOOM, longestNumber), decimalPoint);
    if (number >= 0.0 && (parallel || number < 180.0)) return {};
    return filledText(Text::readAs, {initial[ViewFields::zoom]});
}

/// The zoom field starts afresh: an angle that was typed is no width.
void ViewParametersDialog::choose(bool parallelProjection)
{
    parallel = parallelProjection;
    CheckRadioButton(window, ID_PARALLEL, ID_PERSPECTIVE, parallel ? ID_PARALLEL : ID_PERSPECTIVE);
    ShowWindow(GetDlgItem(window, ID_DEGREES), parallel ? SW_HIDE : SW_SHOWNA);
    showField(ViewFields::zoom);
}

void ViewParametersDialog::command(int control, int notification)
{
    switch (control) {
    case ID_PARALLEL:
    case ID_PERSPECTIVE:
        if (choosesRadio(notification) && parallel != (control == ID_PARALLEL)) choose(!parallel);
        break;
    case IDOK:
        readFields();
        EndDialog(window, IDOK);
        break;
    case IDCANCEL: EndDialog(window, IDCANCEL); break;
    default:
        if (notification == EN_ERRSPACE) failOutOfSpace();
        if (notification == EN_CHANGE && !writing)
            marks.check(window, control, decimalPoint, control == ID_ZOOM ? zoomRemark() : "");
        break;
    }
}

/// Each field by the row and the column that it stands in.
void ViewParametersDialog::nameFields() const
{
    constexpr const char* axes[] = {"X", "Y", "Z"};
    const auto name = [this](int control, std::string text) {
        nameAccessible(GetDlgItem(window, control), std::move(text));
    };
    name(ID_RADIUS, textOf(Text::modelRadiusName));
    name(ID_ZOOM, textOf(Text::zoomAngleName));
    name(ID_SKY, textOf(Text::skyName));
    name(ID_GROUND, textOf(Text::groundName));
    for (int axis = 0; axis < 3; ++axis) {
        name(ID_CENTREX + axis, filledText(Text::modelCentreName, {axes[axis]}));
        name(ID_EYEX + axis, filledText(Text::eyeName, {axes[axis]}));
        name(ID_LOOKATX + axis, filledText(Text::lookAtName, {axes[axis]}));
    }
    for (int light = 0; light < 5; ++light) {
        const char* const of = textOf(textAfter(Text::parallel1Tip, light));
        name(ID_LIGHT + 3 * light, filledText(Text::lightIntensityName, {of}));
        name(ID_LIGHT + 3 * light + 1, filledText(Text::lightBearingName, {of}));
        name(ID_LIGHT + 3 * light + 2, filledText(Text::lightElevationName, {of}));
    }
}

void ViewParametersDialog::readFields()
{
    for (int field = 0; field < ViewFields::count; ++field) {
        const std::string text = itemText(window, controlOf(field), longestNumber);
        const auto index = static_cast<std::size_t>(field);
        if (text != initial[index]) typed[index] = typedNumber(text, decimalPoint);
    }
}

INT_PTR ViewParametersDialog::labelBrush(HDC dc, HWND label) const
{
    const int light = GetDlgCtrlID(label) - ID_LIGHTLABEL;
    if (light < 0 || light > 7) return FALSE;
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0, 0, 0));   // legible on every light's colour, whatever the user's own colours
    return reinterpret_cast<INT_PTR>(lightBrush(light));
}

}   // namespace

std::optional<TypedView> askViewParameters(HWND owner, const ViewFields& fields, HBRUSH (*lightBrush)(int))
{
    ViewParametersDialog dialog(fields, lightBrush);
    const INT_PTR result =
        DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ID_VIEWDIALOG), owner,
                        dialogProcedure<ViewParametersDialog>, reinterpret_cast<LPARAM>(&dialog));
    if (result == -1) throw Win32Error("DialogBox");
    if (result != IDOK) return std::nullopt;
    return dialog.answer();
}

}   // namespace belvor
