// What is told where the user looks: failures of the system's dialogs, a dropped file, fields
// that are read as another number.
#include "tests/window/WindowTest.h"

#include <commctrl.h>

namespace belvor::window {

TEST_F(WindowTest, AFileDialogThatFailsSaysSo)
{
    startWith(boxModel());
    std::string folder = inFolder("long");
    while (folder.size() < 249) folder += std::string(folder.size() % 9 ? "" : "\\") + "d";
    for (std::size_t end = folder.find('\\', 3); end != folder.npos; end = folder.find('\\', end + 1))
        CreateDirectoryW(toWide(folder.substr(0, end)).c_str(), nullptr);
    CreateDirectoryW(toWide(folder).c_str(), nullptr);
    const std::string path = folder + "\\" + std::string(256 - folder.size(), 'f');   // 257: one too many
    for (const auto& [id, caption] :
         {std::pair{ID_SAVEAS, "Save As"}, {ID_SAVEPARAMETERS, textOf(Text::saveParametersTitle)}}) {
        program().command(999);   // another text in the status bar
        program().chooseFile(program().openDialog(id, caption), path);
        EXPECT_TRUE(program().awaitStatus("GetOpenFileName status 0x3003"))
            << caption << program().statusPart(0);
    }
}

TEST_F(WindowTest, ADroppedFileBringsTheWindowToTheFront)
{
    start();
    const HWND other = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"other program", WS_POPUP | WS_VISIBLE,
                                       900, 600, 80, 40, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    ASSERT_TRUE(eventually([&] { return GetForegroundWindow() == other; }, 2000));
    program().dropFile(boxModel());
    EXPECT_TRUE(eventually([&] { return GetForegroundWindow() == program().main(); }, 2000));
    awaitModel(boxModel());
    DestroyWindow(other);
}

TEST_F(WindowTest, AFieldThatIsReadAsAnotherNumberIsMarked)
{
    startWith(boxModel());
    const HWND dialog = program().openDialog(ID_VIEWPARAMETERS, "View Parameters");
    const auto type = [&](int field, const wchar_t* text) {
        program().send(program().child(field, dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    };
    const auto marked = [&](int field) {
        constexpr std::uint32_t pale = 0xFFD0D0;
        const Picture shown = screenOf(program().child(field, dialog));
        return shown.at(shown.width - 4, shown.height / 2) == pale;
    };
    // Columns: the field, what is typed, whether it is another number.
    for (const auto& [field, text, wrong] : {std::tuple{ID_SKY, L"x1", true},
                                             {ID_SKY, L"0.5", false},
                                             {ID_EYEX, L"2 3", true},
                                             {ID_ZOOM, L"-5", true},
                                             {ID_ZOOM, L"180", true},
                                             {ID_ZOOM, L"179", false}}) {
        type(field, text);
        EXPECT_TRUE(eventually([&] { return marked(field) == wrong; }, 2000)) << field << ' ' << toUtf8(text);
    }
    program().answer(dialog, IDCANCEL);
}

}   // namespace belvor::window
