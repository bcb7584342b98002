#include "tests/window/WindowTest.h"

#include <initguid.h>
#include <oleacc.h>

#include <filesystem>
#include <set>

namespace belvor::window {

/// What programs that read the screen aloud are told, through their own interface.
class AccessibleTest : public WindowTest {
protected:
    AccessibleTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~AccessibleTest() override { CoUninitialize(); }

    static IAccessible& objectOf(HWND window)
    {
        IAccessible* object = nullptr;   // never given back: the test ends soon
        AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                   reinterpret_cast<void**>(&object));
        if (!object) throw Failure("no accessible object");
        return *object;
    }
    static VARIANT variant(long number)
    {
        VARIANT result{};
        result.vt = VT_I4;
        result.lVal = number;
        return result;
    }
    static std::string taken(BSTR text)
    {
        const std::string result = text ? toUtf8(text) : std::string();
        SysFreeString(text);
        return result;
    }
    using Told = std::tuple<std::string, std::string, long>;   // name, value, role
    static Told told(HWND window, long child = 0)
    {
        BSTR name = nullptr, value = nullptr;
        VARIANT role{};
        objectOf(window).get_accName(variant(child), &name);
        objectOf(window).get_accValue(variant(child), &value);
        objectOf(window).get_accRole(variant(child), &role);
        return {taken(name), taken(value), role.lVal};
    }
};

TEST_F(AccessibleTest, PanelsMarkersAndSlidersHaveNamesValuesRolesAndPlaces)
{
    startWith(boxModel());
    const std::tuple<HWND, long, Told> cases[] = {
        {drawing(), 0, {"Picture", "", ROLE_SYSTEM_GRAPHIC}},
        {panel(ID_PLAN), 0, {"Plan", "", ROLE_SYSTEM_GROUPING}},
        {panel(ID_PLAN), 2, {"Look-at Point", "x 0.00, y 0.00 radii", ROLE_SYSTEM_INDICATOR}},
        {panel(ID_EYESLIDE), 1, {"Eye Position", "4.69 radii from the centre", ROLE_SYSTEM_INDICATOR}},
        {panel(ID_SPHERE), 2, {"Parallel 1", "bearing −30°, elevation 60°", ROLE_SYSTEM_INDICATOR}},
        {panel(ID_SLIDER), 0, {"Sky", "Sky: 0.40", ROLE_SYSTEM_SLIDER}},
    };
    for (const auto& [window, child, wanted] : cases) EXPECT_EQ(told(window, child), wanted);
    EXPECT_EQ(std::get<0>(told(program().child(ID_EYEUP, panel(ID_SPHERE)))), "Move Eye Up");
    long left = 0, top = 0, width = 0, height = 0, children = 0;
    objectOf(panel(ID_PLAN)).accLocation(&left, &top, &width, &height, variant(2));
    RECT frame;
    GetWindowRect(panel(ID_PLAN), &frame);
    EXPECT_NEAR(left + width / 2, (frame.left + frame.right) / 2, 1);
    EXPECT_NEAR(top + height / 2, (frame.top + frame.bottom) / 2, 1);
    objectOf(panel(ID_SPHERE)).get_accChildCount(&children);
    EXPECT_EQ(children, 2 + 4) << "the eye, a light, and the four buttons";
}

TEST_F(AccessibleTest, EveryFieldOfTheViewParametersHasItsOwnName)
{
    startWith(boxModel());
    const HWND dialog = program().openDialog(ID_VIEWPARAMETERS, "View Parameters");
    std::set<std::string> names;
    for (HWND field = nullptr; (field = FindWindowExW(dialog, field, L"Edit", nullptr)) != nullptr;)
        names.insert(std::get<0>(told(field)));
    EXPECT_TRUE(names.size() == 28 && !names.contains(""));
    program().answer(dialog, IDCANCEL);
}

TEST_F(AccessibleTest, AFaultOfTheProgramLeavesAReport)
{
    startWith(boxModel());
    const KernelHandle thread(CreateRemoteThread(
        program().handle(), nullptr, 0, reinterpret_cast<LPTHREAD_START_ROUTINE>(16), nullptr, 0, nullptr));
    wchar_t folder[MAX_PATH] = L"";
    GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH);
    const std::filesystem::path place = std::filesystem::path(folder) / L"Calderwood" / L"Belvor";
    const std::wstring ending = L'-' + std::to_wstring(GetProcessId(program().handle()));
    for (const auto& [type, text] : {std::pair{L".txt", "exception c0000005"}, {L".dmp", "MDMP"}})
        EXPECT_TRUE(eventually(
            [&, type = type, text = text] {
                std::error_code missing;   // as long as there is no report
                for (const auto& entry : std::filesystem::directory_iterator(place, missing))
                    if (entry.path().filename().wstring().ends_with(ending + type))
                        return readFile(toUtf8(entry.path().wstring())).find(text) < 1000;
                return false;
            },
            30'000))   // slow under Wine
            << text;
}

}   // namespace belvor::window
