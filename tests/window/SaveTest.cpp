#include "platform/Utf16.h"
#include "tests/window/WindowTest.h"

namespace belvor::window {

namespace {

bool exists(const std::string& path) { return GetFileAttributesW(toWide(path).c_str()) != INVALID_FILE_ATTRIBUTES; }

/// The program writes an image in the background: waits until the file has that many bytes.
bool awaitFile(const std::string& path, std::size_t size)
{
    return eventually([&] {
        WIN32_FILE_ATTRIBUTE_DATA data;
        return GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &data) && data.nFileSizeLow == size;
    });
}

}   // namespace

class SaveTest : public WindowTest {
protected:
    /// The file dialog of Save As has the system's own caption.
    HWND saveDialog()
    {
        HWND box = nullptr;
        await("the Save As dialog", [&] {
            for (const char* caption : {"Save As", "Save as"})
                if (!box) box = program().dialog(caption);
            return box != nullptr;
        });
        return box;
    }
    std::string reference(const std::string& model)
    {
        const std::string image = inFolder("reference.omb");
        EXPECT_EQ(run(besideUs("belvor-render.exe"), {"--quiet", model, image}), 0);
        return readFile(image);
    }
};

TEST_F(SaveTest, WritesTheSameBytesAsBelvorRender)
{
    startWith(boxModel());
    const std::string wanted = reference(boxModel()), image = inFolder("saved.omb");
    program().command(ID_SAVEAS);
    program().chooseFile(saveDialog(), image);
    ASSERT_TRUE(awaitFile(image, wanted.size()));
    EXPECT_TRUE(readFile(image) == wanted);

    // Save writes the same file without a question, the view of now.
    DeleteFileW(toWide(image).c_str());
    program().command(ID_SAVE);
    ASSERT_TRUE(awaitFile(image, wanted.size()));
    EXPECT_TRUE(readFile(image) == wanted);
    PostMessageW(program().main(), WM_CLOSE, 0, 0);
    EXPECT_EQ(program().exitStatus(), 0) << "the picture is saved: no question";
    DeleteFileW(toWide(image).c_str());
}

TEST_F(SaveTest, AsksOnceForANameWhenThereIsNone)
{
    startWith(boxModel());
    program().command(ID_SAVE);
    const HWND box = saveDialog();
    program().answer(box, IDCANCEL);
    program().command(ID_SAVE);
    program().answer(saveDialog(), IDCANCEL);
    EXPECT_TRUE(program().running());
}

TEST_F(SaveTest, TheQuestionBeforeAPictureIsLostHasThreeAnswers)
{
    startWith(boxModel());
    const HWND main = program().main();
    const auto ask = [&] {
        PostMessageW(main, WM_CLOSE, 0, 0);
        return program().awaitDialog(textOf(126));
    };
    HWND question = ask();
    EXPECT_EQ(program().messageOf(question), "Do you want to save\n\nas an Ombr file?") << "no name has been chosen yet";
    program().answer(question, IDCANCEL);
    EXPECT_TRUE(program().running()) << "Cancel keeps the program";

    program().answer(ask(), IDYES);
    program().answer(saveDialog(), IDCANCEL);
    program().send(main, WM_NULL);
    EXPECT_TRUE(program().running()) << "a Save As given up counts as no save";

    const std::string image = inFolder("asked.omb"), wanted = reference(boxModel());
    program().answer(ask(), IDYES);
    program().chooseFile(saveDialog(), image);
    EXPECT_EQ(program().exitStatus(), 0) << "Yes saves and goes on";
    ASSERT_TRUE(exists(image));
    EXPECT_TRUE(readFile(image) == wanted) << "written to the end before the program has gone";
    DeleteFileW(toWide(image).c_str());

    startWith(boxModel());
    EXPECT_EQ(close(IDNO), 0) << "No goes on";
}

TEST_F(SaveTest, AnImageThatCannotBeWrittenIsAWarning)
{
    startWith(boxModel());
    const std::string image = inFolder("locked.omb");
    const KernelHandle locked(CreateFileW(toWide(image).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    ASSERT_TRUE(static_cast<bool>(locked));
    program().command(ID_SAVEAS);
    program().chooseFile(saveDialog(), image);
    // First the system's own question whether to replace the file, then ours or the system's refusal.
    HWND box = nullptr;
    await("the refusal", [&] {
        for (const char* caption : {"Save as", "Error", "Warning"}) {
            const HWND found = program().dialog(caption);
            if (!found || GetDlgItem(found, 0x47C)) continue;
            if (GetDlgItem(found, IDYES)) PostMessageW(found, WM_COMMAND, IDYES, 0);
            else box = found;
        }
        return box != nullptr;
    });
    program().answer(box, IDOK);
    EXPECT_TRUE(program().running());
    EXPECT_EQ(program().title(), "Belvor - box.thf");
}

TEST_F(SaveTest, ParametersComeBackAsTheyWere)
{
    startWith(boxModel());
    const std::string first = savedParameters();
    EXPECT_EQ(first.substr(0, 26), "Belvor View Parameters 1.0");
    const std::string view = inFolder("typed.bvp");
    writeFile(view, "Belvor View Parameters 1.0\n-6 -4 5\n2 1.5 1\n0.5\n0\n0.3\n0.2\n-30 60 0.6\n90 30 0.4\n0 30 0\n90 30 0\n-90 30 0\n");
    loadParameters(view);
    EXPECT_EQ(awaitPicture(rendered(boxModel(), view)), "");
    const std::string second = savedParameters();
    EXPECT_NE(second, first);
    program().command(ID_PREVIOUSVIEW);
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(savedParameters(), first);
    program().command(ID_PREVIOUSVIEW);
    program().send(program().main(), WM_NULL);
    EXPECT_EQ(savedParameters(), second);
}

}   // namespace belvor::window
