#include "tests/support/Models.h"
#include "tests/window/WindowTest.h"
#include "ui/Messages.h"

namespace belvor::window {

TEST_F(WindowTest, LoadsAModelByEveryRoadAndRemembersIt)
{
    const std::string odd = inFolder("größe 5%s & Ж.thf");
    writeFile(odd, readFile(boxModel()));
    start({odd, faceModel()});   // a second argument is ignored
    awaitModel(odd);
    EXPECT_EQ(awaitPicture(rendered(boxModel())), "");
    EXPECT_TRUE(IsWindowEnabled(program().child(ID_CONTROLS)));
    open(faceModel());
    awaitModel(faceModel());
    EXPECT_EQ(awaitShape(rendered(faceModel())), "");
    program().dropFile(boxModel());
    answerSaveQuestion(IDNO);
    awaitModel(boxModel());
    EXPECT_EQ(awaitShape(rendered(boxModel())), "");
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{boxModel(), faceModel(), odd}));

    start();
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(ID_RECENT + 1, 0),
                   handleParameter(program().main()));
    EXPECT_EQ(program().statusPart(0), faceModel()) << "the whole path while the item is chosen";
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    program().command(ID_RECENT + 2);
    awaitModel(odd);
    EXPECT_EQ(awaitPicture(rendered(boxModel())), "");
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{odd, boxModel(), faceModel()}))
        << "used again: first again, and only once";
}

TEST_F(WindowTest, ABadFileIsToldAndTheOldModelStays)
{
    const std::string bad = inFolder("range.thf"), missing = inFolder("gone.thf");
    writeFile(bad, "Y \n3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 m\n3 7 2 3\n");
    const auto expectWarning = [&](const std::string& beginning) {
        const HWND box = program().awaitDialog(textOf(Text::warningTitle));
        EXPECT_TRUE(program().messageOf(box).starts_with(beginning)) << program().messageOf(box);
        program().answer(box, IDOK);
    };
    startWith(boxModel());
    open(bad);
    expectWarning("vertex number out of range\nin ");
    EXPECT_TRUE(eventually([&] { return program().statusPart(0).starts_with("vertex number out of"); }));
    EXPECT_EQ(program().title(), "Belvor - box.thf");
    EXPECT_EQ(awaitPicture(rendered(boxModel())), "");
    start({missing});
    expectWarning(missing + ": ");
    EXPECT_EQ(program().title(), "Belvor");
}

TEST_F(WindowTest, ADrawingTellsWhatWasNotDrawnAndTheReadingIsKept)
{
    const std::string lines = inFolder("lines.dxf"), refused = inFolder("refused.dxf");
    writeFile(lines, test::drawingText(test::faceEntity + test::lineEntity));
    writeFile(refused, test::drawingText(test::faceEntity + "0\nCIRCLE\n8\n0\n10\nx\n20\n0\n40\n1\n"));
    startWith(lines);
    EXPECT_TRUE(eventually([&] { return program().statusPart(0) == "1 of 2 entities not drawn"; }))
        << program().statusPart(0);
    const HWND dialog = program().openDialog(ID_MODELPROPERTIES, "Belvor Model Properties");
    EXPECT_EQ(program().textOf(GetDlgItem(dialog, ID_ACCOUNT)), "LINE\tno surface\t1\r\n");
    program().answer(dialog, IDCANCEL);
    program().command(ID_MODERNREADING);   // reads the shown drawing again
    awaitModel(lines);
    program().kill();
    start({refused});   // by the reading that was chosen, which opens it
    awaitModel(refused);
}

TEST_F(WindowTest, ALoadThatFailsUnderADialogLeavesTheWindowLocked)
{
    const std::string bad = inFolder("ends badly.thf");
    std::string text = readFile(sphereModel(200000));
    text.replace(text.find_last_of("0123456789"), 1, "99999999");   // no such vertex
    writeFile(bad, text);
    startWith(boxModel());
    program().dropFile(bad);
    program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    const HWND dialog = program().openDialog(ID_SAVEAS, "Save As");
    program().answer(program().awaitDialog(textOf(Text::warningTitle)), IDOK);
    EXPECT_TRUE(eventually([&] { return !IsWindowEnabled(program().main()); })) << "the dialog is still open";
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    program().command(ID_SAVEAS);
    EXPECT_TRUE(IsWindow(dialog) && program().running());
    program().answer(dialog, IDCANCEL);
    EXPECT_TRUE(eventually([&] { return IsWindowEnabled(program().main()) != FALSE; }));
}

TEST_F(WindowTest, AnExceptionInAWindowProcedureIsToldAndEndsTheProgram)
{
    startWith(boxModel());
    // The handle of no window: what cannot be measured cannot be drawn.
    PostMessageW(program().main(), WM_COMMAND, MAKEWPARAM(ID_REDRAWPANEL, ID_DISPLAY), 0x7FFFFFF0);
    const HWND box = program().awaitDialog(textOf(Text::errorTitle));
    EXPECT_TRUE(program().messageOf(box).starts_with("Belvor::redraw  GetClientRect: "))
        << program().messageOf(box);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_EQ(program().exitStatus(), 1);
}

TEST_F(WindowTest, ShowsTheFirstRowsBeforeTheLast)
{
    const std::string model = stackModel(2500),
                      view = "Belvor View Parameters 1.0\n0.01 0.01 4\n0 0 0\n0.2\n0\n0.4\n0.1\n-30 60 0.6\n";
    const Picture before = rendered(model), after = rendered(model, view);
    const int upper = 10, lower = drawnHeight - 10, middle = drawnWidth / 2;
    for (const int row : {upper, lower})
        ASSERT_TRUE(before.at(middle, row) == 0 && after.at(middle, row) != 0) << row;
    startWith(model);
    ASSERT_EQ(awaitPicture(before), "");

    POINT origin{0, 0};
    ClientToScreen(drawing(), &origin);
    const WindowDC screen(nullptr);
    const auto drawn = [&](int row) {
        return GetPixel(screen.get(), origin.x + middle, origin.y + row) != RGB(0, 0, 0);
    };
    loadParameters(view);
    bool between = false;
    const ULONGLONG end = GetTickCount64() + 15000;
    while (!between && !drawn(lower) && GetTickCount64() < end) between = drawn(upper) && !drawn(lower);
    EXPECT_TRUE(between) << "no moment with an upper row and without a lower one";
    EXPECT_EQ(awaitPicture(after), "");
}

TEST_F(WindowTest, AbandonsALoadForANewerOneAndEndsAtOnce)
{
    const std::string large = sphereModel(3000000), small = inFolder("small.thf");
    writeFile(small, readFile(boxModel()));
    startWith(boxModel());
    const auto drop = [&](const std::string& path) {
        program().dropFile(path);
        program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    };
    const auto load = [&](const std::string& path) {
        drop(path);
        const ULONGLONG asked = GetTickCount64();
        awaitModel(path);
        return GetTickCount64() - asked;
    };
    const ULONGLONG whole = load(large);
    load(boxModel());                           // when the large one has been drawn
    for (const ULONGLONG share : {20, 130}) {   // of the load: while it is read, while it is drawn
        drop(large);
        Sleep(static_cast<DWORD>(whole * share / 100));
        const ULONGLONG taken = load(small);
        EXPECT_TRUE(share > 50 || taken < whole / 2) << taken << " ms of a load of " << whole;
        EXPECT_EQ(awaitShape(rendered(boxModel())), "");
        load(boxModel());
    }
    start({large});
    await("the load to begin", [&] { return program().statusPart(0) == fileName(large); });
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().exitStatus(static_cast<int>(whole / 2)), 0) << "during a load";
    startWith(stackModel(24000));   // seconds to draw
    EXPECT_TRUE(program().awaitStatus("Rendering"));
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    EXPECT_EQ(program().exitStatus(1500), 0) << "during a render";
}

TEST_F(WindowTest, ResizedDuringARenderShowsTheLastSizeWhole)
{
    const std::string model = sphereModel(200000);
    startWith(model);
    for (int k = 0; k < 40; ++k) {
        SetWindowPos(program().main(), nullptr, 0, 0, 500 + 17 * (k % 25), 500 + 11 * (k % 19),
                     SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
        Sleep(15);
    }
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_EQ(awaitPicture(rendered(model)), "");
}

}   // namespace belvor::window
