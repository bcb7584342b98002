#include "tests/window/WindowTest.h"

namespace belvor::window {

class MenuTest : public WindowTest {
protected:
    static void awaitMenus(bool open)
    {
        const auto isOpen = [] { return IsWindowVisible(FindWindowW(L"#32768", nullptr)) != FALSE; };
        await(
            open ? "a menu" : "no menu", [&] { return isOpen() == open; }, 3000);
    }
    /// Opens a menu by its letter.
    static void openMenu(WORD letter)
    {
        pressKeys({VK_MENU, letter});
        awaitMenus(true);
    }
    static void closeMenus()
    {
        for (int k = 0; k < 3; ++k) pressKeys({VK_ESCAPE});
        awaitMenus(false);
    }
};

TEST_F(MenuTest, EveryItemSaysWhatItDoesInTheStatusBar)
{
    const std::pair<WORD, std::vector<int>> menus[] = {
        {'F', {102, 205, 2472, 2474, 103, 104, 211, 105}},
        {'E', {301, 302, 304, 305, 2470, 2471, 0, 2473, 314, 306, 315, 316}},
        {'V', {308, 309, 2476, 2477}},
        {'H', {121, 122}},
    };
    start();
    for (const auto& [letter, items] : menus) {
        openMenu(letter);
        pressKeys({VK_UP});     // from the first item to the last ...
        pressKeys({VK_DOWN});   // ... and back: the first is chosen whether or not opening chose it
        for (const int item : items) {
            EXPECT_TRUE(program().awaitStatus(item == 0 ? "" : textOf(static_cast<Text>(item))))
                << item << ": " << program().statusPart(0);
            pressKeys({VK_DOWN});
        }
        closeMenus();
        EXPECT_TRUE(program().awaitStatus(textOf(Text::start))) << "the status bar is itself again";
    }
    program().send(program().main(), WM_COMMAND, MAKEWPARAM(999, 7), 0);
    EXPECT_NE(program().statusPart(0).find("wNotifyCode 7 wID 999 hwndCtl 00000000"), std::string::npos);
}

TEST_F(MenuTest, WhatNeedsAModelWaitsForOne)
{
    const auto choose = [](WORD menu, WORD item) {
        if (menu == VK_CONTROL) return pressKeys({menu, item});
        openMenu(menu);
        pressKeys({item});
    };
    using Item = std::tuple<WORD, WORD, const char*>;
    for (const bool loaded : {false, true}) {
        loaded ? startWith(boxModel()) : start();
        for (const auto& [menu, item, caption] :
             {Item{'F', 'M', "Belvor Model Properties"}, Item{'F', 'A', "Save As"},
              Item{'E', 'V', "View Parameters"}, Item{'E', 'S', textOf(Text::saveParametersTitle)},
              Item{'E', 'L', textOf(Text::loadParametersTitle)}, Item{VK_CONTROL, 'S', "Save As"}}) {
            choose(menu, item);
            program().send(program().main(), WM_NULL);
            if (loaded) program().answer(program().awaitDialog(caption), IDCANCEL);
            else EXPECT_EQ(GetForegroundWindow(), program().main()) << caption << " is grey";
            if (!loaded) closeMenus();
        }
    }
    pressKeys({VK_F1});
    EXPECT_TRUE(program().awaitStatus(textOf(Text::helpNotOpened))) << "no help lies beside the program here";
    choose(VK_CONTROL, 'O');
    program().answer(program().awaitDialog(textOf(Text::imageNotSaved)), IDNO);
    program().answer(program().awaitDialog(textOf(Text::openModelTitle)), IDCANCEL);
}

}   // namespace belvor::window
