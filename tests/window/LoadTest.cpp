#include "tests/support/Models.h"
#include "tests/window/WindowTest.h"
#include "ui/Messages.h"

namespace belvor::window {

class LoadTest : public WindowTest {
protected:
    /// Drops a file where a picture would be lost, which is allowed.
    void drop(const std::string& path)
    {
        program().dropFile(path);
        program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    }
    void expectBox(const char* title, const std::string& beginning)
    {
        const HWND box = program().awaitDialog(title);
        EXPECT_TRUE(program().messageOf(box).starts_with(beginning)) << program().messageOf(box);
        program().answer(box, IDOK);
    }
};

TEST_F(LoadTest, LoadsAModelByEveryRoadAndRemembersIt)
{
    const std::string odd = inFolder("größe 5%s & Ж.thf");
    writeFile(odd, readFile(boxModel()));
    start({odd, faceModel()});   // a second argument is ignored
    awaitModel(odd);
    EXPECT_EQ(awaitBox(false), "");
    open(faceModel());
    awaitModel(faceModel());
    EXPECT_EQ(awaitPicture(rendered(faceModel()), true), "");
    drop(boxModel());
    awaitModel(boxModel());
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{boxModel(), faceModel(), odd}));

    start();
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(ID_RECENT + 1, 0),
                   handleParameter(program().main()));
    EXPECT_EQ(program().statusPart(0), faceModel()) << "the whole path while the item is chosen";
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    program().command(ID_RECENT + 2);
    awaitModel(odd);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{odd, boxModel(), faceModel()}))
        << "used again: first again, and only once";
}

TEST_F(LoadTest, ABadFileIsToldAndTheOldModelStays)
{
    const std::string bad = inFolder("range.thf"), missing = inFolder("gone.thf");
    writeFile(bad, "Y \n3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 m\n3 7 2 3\n");
    startWith(boxModel());
    open(bad);
    expectBox(textOf(Text::warningTitle), "vertex number out of range\nin ");
    EXPECT_TRUE(eventually([&] { return program().statusPart(0).starts_with("vertex number out of"); }));
    EXPECT_EQ(program().title(), "Belvor - box.thf");
    EXPECT_EQ(awaitBox(false), "");
    start({missing});
    expectBox(textOf(Text::warningTitle), missing + ": ");
    EXPECT_EQ(program().title(), "Belvor");
}

TEST_F(LoadTest, ADrawingTellsWhatWasNotDrawnAndTheReadingIsKept)
{
    const std::string refused = inFolder("refused.dxf");
    writeFile(refused, test::drawingText(test::faceEntity + "0\nCIRCLE\n8\n0\n10\nx\n20\n0\n40\n1\n"));
    writeFile(inFolder("lines.dxf"), test::drawingText(test::faceEntity + test::lineEntity));
    startWith(inFolder("lines.dxf"));
    EXPECT_TRUE(program().awaitStatus("1 of 2 entities not drawn")) << program().statusPart(0);
    const HWND dialog = program().openDialog(ID_MODELPROPERTIES, "Belvor Model Properties");
    EXPECT_EQ(program().textOf(GetDlgItem(dialog, ID_ACCOUNT)), "LINE\tno surface\t1\r\n");
    program().answer(dialog, IDCANCEL);
    program().command(ID_MODERNREADING);
    program().kill();
    startWith(refused);   // by the reading that was chosen, which opens it
}

TEST_F(LoadTest, AFailureUnderADialogLeavesTheWindowLocked)
{
    const std::string bad = inFolder("ends badly.thf");
    std::string text = readFile(sheetsModel(100000, 0.05));
    text.replace(text.find_last_of("0123456789"), 1, "99999999");   // no such vertex
    writeFile(bad, text);
    startWith(boxModel());
    drop(bad);
    const HWND dialog = program().openDialog(ID_SAVEAS, "Save As");
    program().answer(program().awaitDialog(textOf(Text::warningTitle)), IDOK);
    EXPECT_TRUE(eventually([&] { return !IsWindowEnabled(program().main()); })) << "the dialog is still open";
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    program().command(ID_SAVEAS);
    EXPECT_TRUE(IsWindow(dialog) && program().running());
    program().answer(dialog, IDCANCEL);
    EXPECT_TRUE(eventually([&] { return IsWindowEnabled(program().main()) != FALSE; }));
}

TEST_F(LoadTest, AnExceptionInAWindowProcedureIsToldAndEndsTheProgram)
{
    startWith(boxModel());
    // The handle of no window: what cannot be measured cannot be drawn.
    PostMessageW(program().main(), WM_COMMAND, MAKEWPARAM(ID_REDRAWPANEL, ID_DISPLAY), 0x7FFFFFF0);
    expectBox(textOf(Text::errorTitle), "Belvor::redraw  GetClientRect: ");
    EXPECT_EQ(program().exitStatus(), 1);
}

TEST_F(LoadTest, ShowsTheFirstRowsBeforeTheLast)
{
    const std::string model = sheetsModel(2500, 1.5), view = viewText("0.01 0.01 4", "0 0 0", "0.2");
    const WindowDC screen(nullptr);
    startWith(model);
    ASSERT_EQ(awaitPicture(rendered(model)), "");
    const auto drawn = [&](int row) {
        POINT place{drawnWidth / 2, row};
        ClientToScreen(drawing(), &place);
        return GetPixel(screen.get(), place.x, place.y) != RGB(0, 0, 0);
    };
    ASSERT_FALSE(drawn(10) || drawn(drawnHeight - 10));
    loadParameters(view);
    EXPECT_TRUE(eventually([&] { return drawn(10) && !drawn(drawnHeight - 10); }));
    EXPECT_EQ(awaitPicture(rendered(model, view)), "");
}

TEST_F(LoadTest, IsAbandonedForANewerOneAndEndsAtOnce)
{
    const std::string large = sheetsModel(1000000, 0.005);
    startWith(boxModel());
    const auto load = [&](const std::string& path) {
        drop(path);
        const ULONGLONG asked = GetTickCount64();
        awaitModel(path);
        return GetTickCount64() - asked;
    };
    const ULONGLONG whole = load(large);
    load(faceModel());   // when the large one has been drawn
    drop(large);
    Sleep(static_cast<DWORD>(whole / 5));
    EXPECT_LT(load(boxModel()), whole / 2) << "ms";
    EXPECT_EQ(awaitBox(), "");
    start({large});
    await("the load to begin", [&] { return program().statusPart(0) == fileName(large); });
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().exitStatus(static_cast<int>(whole / 2)), 0) << "during a load";
    startWith(sheetsModel(24000, 1.5));   // seconds to draw
    EXPECT_TRUE(program().awaitStatus("Rendering"));
    EXPECT_EQ(close(), 0);
}

}   // namespace belvor::window
