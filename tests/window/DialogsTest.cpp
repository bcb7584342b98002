#include "platform/Utf16.h"
#include "tests/window/BoxView.h"
#include "tests/window/Input.h"

#include <cstdio>
#include <cstring>

namespace belvor::window {

class DialogsTest : public BoxViewTest {
protected:
    HWND openDialog(int number, const char* caption)
    {
        program().command(number);
        return dialog = program().awaitDialog(caption);
    }
    std::string item(int number) { return program().textOf(program().child(number, dialog)); }
    bool checked(int number) { return program().send(program().child(number, dialog), BM_GETCHECK) == BST_CHECKED; }
    /// The only checked button of a row, −1 for none, −2 for several.
    int checkedOf(int first, int last)
    {
        int found = -1;
        for (int number = first; number <= last; ++number)
            if (checked(number)) found = found == -1 ? number : -2;
        return found;
    }
    void press(int number) { program().send(dialog, WM_COMMAND, MAKEWPARAM(number, BN_CLICKED), reinterpret_cast<LPARAM>(program().child(number, dialog))); }
    /// Replaces the text of a field key by key, as a user does.
    void type(int number, const std::string& text)
    {
        const HWND field = program().child(number, dialog);
        program().send(field, EM_SETSEL, 0, -1);
        if (text.empty()) program().send(field, WM_CLEAR);
        for (const wchar_t c : toWide(text)) program().send(field, WM_CHAR, c);
    }
    void end(int button) { program().answer(dialog, button); }

    static std::string fourDigits(double value)
    {
        char text[32];
        std::snprintf(text, sizeof text, "%.4G", value);
        return text;
    }

    HWND dialog = nullptr;
};

TEST_F(DialogsTest, ImageSizeOffersSizesAndSaysWhatTheyTake)
{
    startWith(boxModel());
    const char* const caption = "Ombr File Image Size";
    openDialog(ID_IMAGESIZE, caption);
    EXPECT_EQ(item(ID_WIDTH) + 'x' + item(ID_HEIGHT), "800x600");
    EXPECT_EQ(checkedOf(201, 207), 202);
    EXPECT_EQ(item(ID_DISKSPACE), "Uncompressed Ombr file needs 4230 KB disk space");

    const struct { int button; const char* width; const char* height; const char* kilobytes; } presets[] = {
        {201, "640", "480", "2710"},   {203, "1024", "768", "6925"},   {204, "1152", "864", "8763"},
        {205, "1280", "1024", "11536"}, {206, "1600", "1200", "16893"}, {202, "800", "600", "4230"},
    };
    for (const auto& p : presets) {
        press(p.button);
        EXPECT_EQ(item(ID_WIDTH), p.width);
        EXPECT_EQ(item(ID_HEIGHT), p.height);
        EXPECT_EQ(checkedOf(201, 207), p.button);
        EXPECT_EQ(item(ID_DISKSPACE), std::string("Uncompressed Ombr file needs ") + p.kilobytes + " KB disk space");
    }
    type(ID_WIDTH, "1600");
    EXPECT_EQ(item(ID_WIDTH), "1600") << "typed digits stay in their order";
    EXPECT_EQ(checkedOf(201, 207), 207);
    type(ID_HEIGHT, "1200");
    EXPECT_EQ(checkedOf(201, 207), 206);

    type(ID_WIDTH, "");
    EXPECT_EQ(item(ID_DISKSPACE), "Uncompressed Ombr file needs 16893 KB disk space") << "an empty field changes nothing";
    press(ID_APPLY);
    program().send(program().main(), WM_NULL);
    RECT client;
    GetClientRect(drawing(), &client);
    EXPECT_EQ(client.bottom, drawnHeight) << "nor is it applied";

    program().command(ID_IMAGESIZE);
    program().send(program().main(), WM_NULL);
    int dialogs = 0;
    for (HWND w = nullptr; (w = FindWindowExW(nullptr, w, L"#32770", toWide(caption).c_str())) != nullptr;) ++dialogs;
    EXPECT_EQ(dialogs, 1) << "no second dialog";

    type(ID_WIDTH, "1000");
    type(ID_HEIGHT, "500");
    end(IDOK);
    EXPECT_TRUE(eventually([&] {
        GetClientRect(drawing(), &client);
        return client.right == 608 && client.bottom == 304;
    })) << "the drawing area takes the new proportions";
    openDialog(ID_IMAGESIZE, caption);
    EXPECT_EQ(item(ID_WIDTH) + 'x' + item(ID_HEIGHT), "1000x500");
    press(202);
    end(IDCANCEL);
    openDialog(ID_IMAGESIZE, caption);
    EXPECT_EQ(item(ID_WIDTH), "1000") << "Cancel applies nothing";
    SetForegroundWindow(dialog);
    pressKeys({VK_ESCAPE});
    EXPECT_TRUE(eventually([&] { return !IsWindow(dialog); })) << "Esc is Cancel";
}

TEST_F(DialogsTest, TheImageFileHasTheSizeChosen)
{
    startWith(boxModel());
    openDialog(ID_IMAGESIZE, "Ombr File Image Size");
    type(ID_WIDTH, "250");
    type(ID_HEIGHT, "130");
    end(IDOK);
    const std::string view = inFolder("sized.bvp"), image = inFolder("sized.omb"), reference = inFolder("sizedref.omb");
    writeFile(view, "Belvor View Parameters 1.0\n-6 -4 5\n2 1.5 1\n0.5\n0\n0.3\n0.2\n-30 60 0.6\n");
    loadParameters(view);
    ASSERT_EQ(run(besideUs("belvor-render.exe"), {"--quiet", "--size", "250x130", "--view", view, boxModel(), reference}), 0);
    program().command(ID_SAVEAS);
    HWND box = nullptr;
    await("the Save As dialog", [&] { return (box = program().dialog("Save As")) || (box = program().dialog("Save as")); });
    program().chooseFile(box, image);
    const std::string wanted = readFile(reference);
    std::string written;
    EXPECT_TRUE(eventually([&] { return GetFileAttributesW(toWide(image).c_str()) != INVALID_FILE_ATTRIBUTES && (written = readFile(image)) == wanted; }))
        << written.size() << " bytes against " << wanted.size();
    DeleteFileW(toWide(image).c_str());
}

TEST_F(DialogsTest, ModelPropertiesCountAndScale)
{
    start();
    openDialog(ID_MODELPROPERTIES, "Belvor Model Properties");
    EXPECT_EQ(item(ID_CENTRE), "Centre (%.4G, %.4G, %.4G)") << "nothing to show without a model";
    end(IDCANCEL);

    startWith(boxModel());
    openDialog(ID_MODELPROPERTIES, "Belvor Model Properties");
    EXPECT_EQ(item(ID_MODELNAME), boxModel());
    const struct { int number; const char* text; } items[] = {
        {ID_VERTEXCOUNT, "8"}, {ID_VERTEXMEMORY, "(0 KB)"}, {ID_EDGECOUNT, "24"}, {ID_EDGEMEMORY, "(1 KB)"},
        {ID_FACETCOUNT, "6"},  {ID_FACETMEMORY, "(0 KB)"},  {ID_MATERIALCOUNT, "6"}, {ID_SCALE, "1"},
        {ID_CENTRE, "Centre (2, 1.5, 1)"}, {ID_RADIUS, "2.693"},
    };
    for (const auto& i : items) EXPECT_EQ(item(i.number), i.text) << i.number;
    EXPECT_EQ(checkedOf(ID_UNITS, ID_UNITSLAST), ID_UNITS);

    type(ID_SCALE, "1000");
    EXPECT_EQ(item(ID_CENTRE), "Centre (2000, 1500, 1000)") << "at once";
    EXPECT_EQ(item(ID_RADIUS), "2693");
    end(IDCANCEL);
    openDialog(ID_MODELPROPERTIES, "Belvor Model Properties");
    EXPECT_EQ(item(ID_SCALE), "1") << "but not the model's before it is applied";
    type(ID_SCALE, "1000");
    press(ID_UNITS + 2);
    EXPECT_EQ(checkedOf(ID_UNITS, ID_UNITSLAST), ID_UNITS + 2);
    press(ID_APPLY);
    end(IDCANCEL);

    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    EXPECT_EQ(item(ID_UNITSNAME), "millimetres (mm)");
    EXPECT_EQ(item(ID_RADIUS), "2693");
    EXPECT_EQ(item(ID_CENTREX), "2000");
    end(IDCANCEL);

    const std::string image = inFolder("units.omb");
    program().command(ID_SAVEAS);
    HWND box = nullptr;
    await("the Save As dialog", [&] { return (box = program().dialog("Save As")) || (box = program().dialog("Save as")); });
    program().chooseFile(box, image);
    std::string units(12, '\0');   // scale and code, as the camera's record in the file ends
    const double scale = 1000;
    const std::uint32_t code = 2;
    std::memcpy(units.data(), &scale, 8);
    std::memcpy(units.data() + 8, &code, 4);
    EXPECT_TRUE(eventually([&] { return GetFileAttributesW(toWide(image).c_str()) != INVALID_FILE_ATTRIBUTES && readFile(image).find(units) != std::string::npos; }));
    DeleteFileW(toWide(image).c_str());
}

TEST_F(DialogsTest, AboutNamesTheVersion)
{
    start();
    openDialog(ID_ABOUT, "About Belvor");
    EXPECT_EQ(item(ID_VERSION), "Belvor 1.1.7 (Dec 16 1997)");
    EXPECT_TRUE(eventually([&] { return countOther(screenOf(dialog), 0xFFFFFF) > 8000; })) << "with its two pictures";
    EXPECT_EQ(screenOf(dialog).at(3, 3), 0xFFFFFFu) << "on white";
    end(IDOK);
}

TEST_F(DialogsTest, ViewParametersShowTheViewInModelUnits)
{
    startWith(boxModel());
    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    const double length = std::sqrt(1.75 * 1.75 * 2 + 1.43 * 1.43), away = 4.68668256792222 * radius() / length;
    const struct { int number; std::string text; } items[] = {
        {ID_UNITSNAME, "undefined units"}, {ID_RADIUS, "2.693"}, {ID_CENTREX, "2"}, {ID_CENTREX + 1, "1.5"}, {ID_CENTREX + 2, "1"},
        {ID_EYEX, fourDigits(x - 1.75 * away)}, {ID_EYEX + 1, fourDigits(y - 1.75 * away)}, {ID_EYEX + 2, fourDigits(z + 1.43 * away)},
        {ID_LOOKATX, "2"}, {ID_LOOKATX + 1, "1.5"}, {ID_LOOKATX + 2, "1"}, {ID_ZOOM, "40"}, {ID_SKY, "0.4"}, {ID_GROUND, "0.1"},
        {ID_LIGHT, "0.6"}, {ID_LIGHT + 1, "-30"}, {ID_LIGHT + 2, "60"}, {ID_LIGHT + 12, "0"}, {ID_LIGHT + 13, "-90"}, {ID_LIGHT + 14, "30"},
    };
    for (const auto& i : items) EXPECT_EQ(item(i.number), i.text) << i.number;
    EXPECT_TRUE(checked(ID_PERSPECTIVE));
    press(ID_PARALLEL);
    EXPECT_FALSE(checked(ID_PERSPECTIVE));
    EXPECT_FALSE(IsWindowVisible(program().child(ID_DEGREES, dialog)));
    EXPECT_EQ(item(ID_ZOOM), fourDigits(0.364 * 4.6 * radius()));
    press(ID_PERSPECTIVE);
    EXPECT_EQ(item(ID_ZOOM), "40");
    EXPECT_TRUE(IsWindowVisible(program().child(ID_DEGREES, dialog)));
    end(IDCANCEL);
}

TEST_F(DialogsTest, ViewParametersLeftAloneChangeNothing)
{
    startWith(boxModel());
    const std::string whole = savedParameters();
    double factor = 1.23456789;
    program().sendRecord(program().main(), WM_USER + 106, &factor, sizeof factor);
    const std::string zoomed = savedParameters();
    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    end(IDOK);
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(savedParameters(), zoomed);
    program().command(ID_PREVIOUSVIEW);
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(savedParameters(), whole) << "no step was added";
}

TEST_F(DialogsTest, TypedViewParametersAreTaken)
{
    startWith(boxModel());
    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    const struct { int number; const char* text; } typed[] = {
        {ID_EYEX, "-6.25"}, {ID_EYEX + 1, "-4"}, {ID_EYEX + 2, "5"}, {ID_LOOKATX, "2.5"}, {ID_ZOOM, "90"}, {ID_SKY, "0.345678"},
        {ID_LIGHT + 3, "0.5"}, {ID_LIGHT + 4, "75"}, {ID_LIGHT + 5, "-10"},
    };
    for (const auto& t : typed) type(t.number, t.text);
    end(IDOK);
    const ViewParameters after = view();
    expectPoint(after.eye, (-6.25 - x) / radius(), (-4 - y) / radius(), (5 - z) / radius(), "eye");
    expectPoint(after.lookAt, 0.5 / radius(), 0, 0, "look-at point");
    EXPECT_NEAR(after.zoom, 1.0, 1e-6);
    EXPECT_NEAR(after.skyIntensity, 0.345678, 1e-7) << "all digits typed count";
    EXPECT_EQ(after.lights[1], (ParallelLightSetting{75, -10, 0.5}));
    EXPECT_EQ(after.lights[0], (ParallelLightSetting{-30, 60, 0.6}));

    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    press(ID_PARALLEL);
    end(IDOK);
    const ViewParameters parallel = view();
    EXPECT_TRUE(parallel.parallel);
    expectPoint(parallel.eye, after.eye[0], after.eye[1], after.eye[2], "the eye stays");
}

TEST_F(DialogsTest, SurvivesWhateverIsTyped)
{
    startWith(boxModel());
    const Picture whole = rendered(boxModel());
    const struct { const char* why; int number; const char* text; } cases[] = {
        {"no angle", ID_ZOOM, "0"},          {"half a turn", ID_ZOOM, "180"},   {"no number", ID_EYEX, "abc"},
        {"huge", ID_EYEX + 1, "1e300"},      {"beyond all doubles", ID_LOOKATX, "1e999"}, {"tiny", ID_ZOOM, "1e-300"},
        {"bright", ID_SKY, "1e300"},         {"negative light", ID_LIGHT, "-5"},
    };
    for (const auto& c : cases) {
        openDialog(ID_VIEWPARAMETERS, "View Parameters");
        type(c.number, c.text);
        end(IDOK);
        program().send(program().main(), WM_NULL);
        ASSERT_TRUE(program().running()) << c.why;
        program().command(ID_PREVIOUSVIEW);
        program().send(program().main(), WM_NULL);
        program().command(ID_WHOLEMODEL);
        EXPECT_EQ(awaitPicture(whole), "") << c.why;
    }
    openDialog(ID_VIEWPARAMETERS, "View Parameters");   // the eye on the look-at point
    for (int k = 0; k < 3; ++k) type(ID_EYEX + k, item(ID_LOOKATX + k));
    end(IDOK);
    program().command(ID_WHOLEMODEL);
    EXPECT_EQ(awaitPicture(whole), "");
}

TEST_F(DialogsTest, AModelThatArrivesWhileADialogIsOpenDisturbsNothing)
{
    startWith(boxModel());
    const std::string large = sphereModel(200000);
    open(large);
    openDialog(ID_VIEWPARAMETERS, "View Parameters");
    awaitModel(large);
    EXPECT_EQ(item(ID_RADIUS), "2.693") << "the dialog speaks of the model it was opened for";
    end(IDOK);
    EXPECT_EQ(awaitShape(rendered(large), 20000), "");
}

}   // namespace belvor::window
