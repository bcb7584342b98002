#include "platform/Utf16.h"
#include "tests/window/WindowTest.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdio>

namespace belvor::window {

TEST_F(WindowTest, ShowsTheModelOfItsCommandLineAsBelvorRenderDoes)
{
    for (const std::string& model : {boxModel(), faceModel()}) {
        SCOPED_TRACE(model);
        startWith(model);
        EXPECT_TRUE(IsWindowEnabled(program().child(ID_CONTROLS)));
        EXPECT_EQ(awaitPicture(rendered(model)), "");
    }
}

TEST_F(WindowTest, OpensAModelThroughItsDialog)
{
    startWith(boxModel());
    open(tetrahedronModel());
    awaitModel(tetrahedronModel());
    EXPECT_EQ(awaitShape(rendered(tetrahedronModel())), "");
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{tetrahedronModel(), boxModel()}));
}

TEST_F(WindowTest, OpensAFileWithAnyName)
{
    const std::string path = inFolder("größe 5%s & Ж.thf");
    writeFile(path, readFile(boxModel()));
    startWith(path);
    EXPECT_EQ(awaitPicture(rendered(boxModel())), "");
    DeleteFileW(toWide(path).c_str());
}

TEST_F(WindowTest, KeepsTheOldModelWhenAFileIsBad)
{
    const struct { const char* name; const char* text; const char* box; const char* status; } cases[] = {
        {"range.thf", "Y \n3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 m\n3 7 2 3\n", "vertex number out of range\nin ", "vertex number out of range"},
        {"group.dxf", "0\nSECTION\n2\nENTITIES\nfour\nLINE\n", "Error reading group-code\nat line 5 in ", "Error reading group-code"},
        {"empty.man", "no such header\n", "File is not a 'KRVT v5.1.0 MAN file'\n", "File is not a 'KRVT v5.1.0 MAN file'"},
    };
    startWith(boxModel());
    const Picture before = rendered(boxModel());
    for (const auto& c : cases) {
        writeFile(inFolder(c.name), c.text);
        open(inFolder(c.name));
        const HWND box = program().awaitDialog(textOf(616));
        EXPECT_EQ(program().messageOf(box).substr(0, std::string(c.box).size()), c.box);
        program().answer(box, IDOK);
        EXPECT_TRUE(eventually([&] { return program().statusPart(0).find(c.status) == 0; })) << program().statusPart(0);
        EXPECT_EQ(program().title(), "Belvor - box.thf");
        EXPECT_EQ(awaitPicture(before), "") << c.name;
    }
}

TEST_F(WindowTest, NamesAFileOfUnknownTypeInTheStatusBar)
{
    startWith(boxModel());
    for (const char* name : {"model.thf2", "model"}) {
        writeFile(inFolder(name), "Y \n");
        open(inFolder(name));
        EXPECT_TRUE(eventually([&] { return program().statusPart(0) == "Unknown filetype " + inFolder(name); })) << program().statusPart(0);
        EXPECT_EQ(program().title(), "Belvor - box.thf");
    }
}

TEST_F(WindowTest, ShowsTheFirstRowsBeforeTheLast)
{
    const std::string model = stackModel(2500), view = inFolder("above.bvp");
    writeFile(view, "Belvor View Parameters 1.0\n0.01 0.01 4\n0 0 0\n0.2\n0\n0.4\n0.1\n-30 60 0.6\n");
    const Picture before = rendered(model), after = rendered(model, view);
    const int upper = 10, lower = drawnHeight - 10, middle = drawnWidth / 2;
    for (const int row : {upper, lower}) ASSERT_TRUE(before.at(middle, row) == 0 && after.at(middle, row) != 0) << row;
    startWith(model);
    ASSERT_EQ(awaitPicture(before), "");

    POINT origin{0, 0};
    ClientToScreen(drawing(), &origin);
    const WindowDC screen(nullptr);
    const auto drawn = [&](int row) { return GetPixel(screen.get(), origin.x + middle, origin.y + row) != RGB(0, 0, 0); };
    loadParameters(view);
    bool between = false;
    const ULONGLONG end = GetTickCount64() + 15000;
    while (!between && !drawn(lower) && GetTickCount64() < end) between = drawn(upper) && !drawn(lower);
    EXPECT_TRUE(between) << "no moment with an upper row and without a lower one";
    EXPECT_EQ(awaitPicture(after, 20000), "");
}

TEST_F(WindowTest, AbandonsAJobForANewerOneAtEveryStage)
{
    const std::string large = sphereModel(1000000);
    const int delays[] = {30, 250, 500, 800, 1100, 1500, 2000};   // milliseconds: read, prepared, drawn
    std::vector<std::string> recent{large};
    for (const int delay : delays) {
        recent.push_back(inFolder("small" + std::to_string(delay) + ".thf"));
        writeFile(recent.back(), readFile(boxModel()));
    }
    setRecentFiles(recent);
    startWith(boxModel());
    recent.insert(recent.begin(), boxModel());
    recent.pop_back();
    // Chooses a recent file, which needs no dialog but the question; returns when that is answered.
    const auto choose = [&](const std::string& path) {
        const auto entry = std::find(recent.begin(), recent.end(), path);
        program().command(ID_RECENT + static_cast<int>(entry - recent.begin()));
        std::rotate(recent.begin(), entry, entry + 1);
        const HWND question = program().awaitDialog(textOf(126));
        const ULONGLONG answered = GetTickCount64();
        PostMessageW(question, WM_COMMAND, IDNO, 0);
        return answered;
    };
    ULONGLONG slowest = 0;
    for (const int delay : delays) {
        const std::string small = inFolder("small" + std::to_string(delay) + ".thf");
        if (std::find(recent.begin(), recent.end(), small) == recent.end()) continue;
        choose(large);
        Sleep(static_cast<DWORD>(delay));
        const ULONGLONG asked = choose(small);
        awaitModel(small);
        const ULONGLONG taken = GetTickCount64() - asked;
        std::printf("    after %d ms a million facets make way for a small model within %llu ms\n", delay, taken);
        slowest = std::max(slowest, taken);
    }
    EXPECT_LT(slowest, 3000u);   // a busy machine; an idle one needs some tens of milliseconds
    EXPECT_EQ(awaitShape(rendered(boxModel())), "");
}

TEST_F(WindowTest, ResizedDuringARenderShowsTheLastSizeWhole)
{
    const std::string model = sphereModel(200000);
    startWith(model);
    for (int k = 0; k < 40; ++k) {
        SetWindowPos(program().main(), nullptr, 0, 0, 500 + 17 * (k % 25), 500 + 11 * (k % 19), SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
        Sleep(15);
    }
    program().resizeClient(clientWidth, clientHeight);
    EXPECT_EQ(awaitPicture(rendered(model), 20000), "");
}

TEST_F(WindowTest, EndsAtOnceWhateverItIsDoing)
{
    const std::string large = sphereModel(1000000);
    const struct { const char* why; bool loaded; } cases[] = {{"during a load", false}, {"during a render", true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        start({large});
        if (c.loaded) awaitModel(large);
        else await("the load to begin", [&] { return program().statusPart(0) == fileName(large); });
        PostMessageW(program().main(), WM_CLOSE, 0, 0);
        if (c.loaded) answerSaveQuestion(IDNO);
        const ULONGLONG asked = GetTickCount64();
        EXPECT_EQ(program().exitStatus(), 0);
        EXPECT_LT(GetTickCount64() - asked, 1500u);
    }
}

TEST_F(WindowTest, RemembersRecentFilesAcrossAStart)
{
    const std::vector<std::string> models{boxModel(), faceModel(), tetrahedronModel()};
    for (const std::string& model : models) {
        startWith(model);
        EXPECT_EQ(close(), 0);
    }
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{models[2], models[1], models[0]}));

    start();
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(ID_RECENT + 1, 0), reinterpret_cast<LPARAM>(program().main()));
    EXPECT_EQ(program().statusPart(0), models[1]) << "the whole path while the item is chosen";
    program().send(program().main(), WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    program().command(ID_RECENT + 2);
    awaitModel(models[0]);
    EXPECT_EQ(close(), 0);
    EXPECT_EQ(recentFiles(), (std::vector<std::string>{models[0], models[2], models[1]})) << "used again: first again, and only once";
}

}   // namespace belvor::window
