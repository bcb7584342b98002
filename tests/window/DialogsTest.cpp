#include "tests/window/WindowTest.h"
#include "ui/ClientSize.h"
#include "ui/Messages.h"
#include "view/ViewCommands.h"

#include <algorithm>
#include <cstring>

namespace belvor::window {

class DialogsTest : public WindowTest {
protected:
    void openSizes() { dialog = program().openDialog(ID_IMAGESIZE, "Ombr File Image Size"); }
    void openProperties() { dialog = program().openDialog(ID_MODELPROPERTIES, "Belvor Model Properties"); }
    void openView() { dialog = program().openDialog(ID_VIEWPARAMETERS, "View Parameters"); }
    void end(int button) { program().answer(dialog, button); }

    HWND control(int number) { return program().child(number, dialog); }
    std::string item(int number) { return program().textOf(control(number)); }
    void expectItems(const std::vector<std::pair<int, const char*>>& items)
    {
        for (const auto& [number, text] : items) EXPECT_EQ(item(number), text) << number;
    }
    /// Of the buttons from `first` to `last` that one is checked and no other.
    void expectChecked(int first, int last, int wanted)
    {
        for (int number = first; number <= last; ++number)
            EXPECT_EQ(program().send(control(number), BM_GETCHECK), number == wanted) << number;
    }
    void push(int number)
    {
        program().send(dialog, WM_COMMAND, MAKEWPARAM(number, BN_CLICKED), handleParameter(control(number)));
    }
    /// Replaces the text of a field key by key, as a user does.
    void type(int number, const std::string& text)
    {
        program().send(control(number), EM_SETSEL, 0, -1);
        program().send(control(number), WM_CLEAR);
        for (const wchar_t c : toWide(text)) program().send(control(number), WM_CHAR, c);
    }
    bool isMarked(int field)
    {
        const Picture shown = screenOf(control(field));
        return shown.at(shown.width - 4, shown.height / 2) == 0xFFD0D0;   // pale red
    }

    HWND dialog = nullptr;
};

TEST_F(DialogsTest, ImageSizeOffersSizesAndSaysWhatTheyTake)
{
    startWith(boxModel());
    openSizes();
    push(206);
    expectItems({{ID_WIDTH, "1600"}, {ID_HEIGHT, "1200"}});
    expectChecked(201, 207, 206);
    type(ID_WIDTH, "1000");
    expectItems({{ID_WIDTH, "1000"}, {ID_HEIGHT, "1200"}});   // typed digits stay in their order
    expectChecked(201, 207, 207);
    EXPECT_NE(item(ID_DISKSPACE).find(" 10565 KB"), std::string::npos) << item(ID_DISKSPACE);
    type(ID_WIDTH, "");
    push(ID_APPLY);
    EXPECT_EQ(clientSize(drawing()).height, drawnHeight) << "an empty field is not applied";
    program().command(ID_IMAGESIZE);
    const HWND first = FindWindowExW(nullptr, nullptr, L"#32770", L"Ombr File Image Size");
    EXPECT_FALSE(FindWindowExW(nullptr, first, L"#32770", L"Ombr File Image Size")) << "a second dialog";
    type(ID_WIDTH, "1000");
    type(ID_HEIGHT, "0");
    EXPECT_TRUE(eventually([&] { return isMarked(ID_HEIGHT) && !isMarked(ID_WIDTH); }, 2000));
    type(ID_HEIGHT, "500");
    EXPECT_TRUE(eventually([&] { return !isMarked(ID_HEIGHT); }, 2000));
    end(IDOK);
    EXPECT_EQ(clientSize(drawing()).height, 304) << "the drawing area takes the new proportions";
    openSizes();
    push(202);
    SetForegroundWindow(dialog);
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(eventually([&] { return !IsWindow(dialog); })) << "Esc is Cancel ...";
    openSizes();
    expectItems({{ID_WIDTH, "1000"}});   // ... and applies nothing
}

TEST_F(DialogsTest, ViewParametersShowTheViewAndTakeWhatIsTyped)
{
    startWith(boxModel());
    openView();
    expectItems({{ID_UNITSNAME, "undefined units"}, {ID_CENTREX + 2, "3"}, {ID_EYEX, "-9.736"}});
    expectItems({{ID_ZOOM, "40"}, {ID_GROUND, "0.1"}, {ID_LIGHT + 1, "-30"}, {ID_LIGHT + 13, "-90"}});
    push(ID_PARALLEL);
    expectChecked(ID_PARALLEL, ID_PERSPECTIVE, ID_PARALLEL);
    EXPECT_FALSE(IsWindowVisible(control(ID_DEGREES)));
    expectItems({{ID_ZOOM, "6.265"}});
    push(ID_PERSPECTIVE);
    using Typed = std::pair<int, const char*>;
    for (const auto& [number, text] :
         {Typed{ID_EYEX, "-6.25"}, Typed{ID_LOOKATX, "2.5"}, Typed{ID_ZOOM, "90"}, Typed{ID_SKY, "0.345678"},
          Typed{ID_LIGHT + 4, "75"}})
        type(number, text);
    end(IDOK);
    ViewParameters wanted = wholeModel(freshView(), {});
    wanted.eye[0] = (-6.25 - 1) / boxRadius;
    wanted.lookAt[0] = 1.5 / boxRadius;
    wanted.zoom = 1.0;
    wanted.skyIntensity = 0.345678;   // all digits typed count
    wanted.lights[1].bearing = 75;
    expectView(view(), wanted, "typed");
    openView();
    end(IDOK);   // left alone it adds no step
    program().command(ID_PREVIOUSVIEW);
    expectView(view(), wholeModel(freshView(), {}), "before");
}

TEST_F(DialogsTest, AFieldThatIsReadAsAnotherNumberIsMarked)
{
    startWith(boxModel());
    openView();
    using Row =
        std::tuple<int, const char*, bool>;   // the field, what is typed, whether it is another number
    for (const auto& [field, text, wrong] :
         {Row{ID_SKY, "x1", true}, Row{ID_SKY, "0.5", false}, Row{ID_EYEX, "-", true},
          Row{ID_ZOOM, "-5", true}, Row{ID_ZOOM, "180", true}, Row{ID_ZOOM, "179", false}}) {
        type(field, text);
        EXPECT_TRUE(eventually([&, field = field, wrong = wrong] { return isMarked(field) == wrong; }, 2000))
            << field << ' ' << text;
    }
    end(IDCANCEL);
}

/// The user's decimal separator is a comma in this scope.
class CommaCountry {
public:
    CommaCountry()
    {
        GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, former, 8);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L",");
    }
    ~CommaCountry() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, former); }

private:
    wchar_t former[8] = L".";
};

TEST_F(DialogsTest, ModelPropertiesCountAndScaleWithTheUsersComma)
{
    const CommaCountry abroad;
    startWith(boxModel());
    openProperties();
    expectItems(
        {{ID_VERTEXCOUNT, "8"}, {ID_VERTEXMEMORY, "(0 KB)"}, {ID_EDGECOUNT, "24"}, {ID_FACETCOUNT, "6"}});
    expectItems({{ID_MATERIALCOUNT, "6"}, {ID_SCALE, "1"}, {ID_MODELNAME, boxModel().c_str()}});
    expectItems({{ID_CENTRE, "Centre (1, 2, 3)"}, {ID_RADIUS, "3,742"}});
    expectChecked(ID_UNITS, ID_UNITSLAST, ID_UNITS);
    type(ID_SCALE, "2,5");
    expectItems({{ID_CENTRE, "Centre (2,5, 5, 7,5)"}, {ID_RADIUS, "9,354"}});   // at once
    push(ID_UNITS + 2);
    expectChecked(ID_UNITS, ID_UNITSLAST, ID_UNITS + 2);
    push(ID_APPLY);
    end(IDCANCEL);
    openView();
    expectItems({{ID_UNITSNAME, "millimetres (mm)"}, {ID_RADIUS, "9,354"}, {ID_SKY, "0,4"}});
    type(ID_SKY, "0,75");
    end(IDOK);
    EXPECT_NE(savedParameters().find("\n0.75\r\n"), std::string::npos) << "files know only the point";

    const std::string image = inFolder("units.omb");
    saveAs(image);
    std::string units(12, '\0');   // scale and code, as the camera's record in the file ends
    const double scale = 2.5;
    units[8] = 2;
    std::memcpy(units.data(), &scale, 8);
    EXPECT_TRUE(eventually([&] { return readFile(image).find(units) != std::string::npos; }));
}

TEST_F(DialogsTest, WithoutAModelPropertiesAreEmptyAndAboutNamesTheVersion)
{
    start();
    openProperties();
    expectItems({{ID_CENTRE, "Centre (%.4G, %.4G, %.4G)"}});
    end(IDCANCEL);
    dialog = program().openDialog(ID_ABOUT, "About Belvor");
    expectItems({{ID_VERSION, "Belvor 1.1.7 (Dec 16 1997)"}});
    const auto coloured = [&] {
        return std::ranges::count_if(screenOf(dialog).pixels, [](auto p) { return p != 0xFFFFFF; });
    };
    EXPECT_TRUE(eventually([&] { return screenOf(dialog).at(3, 3) == 0xFFFFFF && coloured() > 8000; }))
        << "pictures on white";
    end(IDOK);
}

}   // namespace belvor::window
