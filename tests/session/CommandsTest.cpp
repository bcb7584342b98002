#include "session/Commands.h"
#include "resources/ids.h"
#include "session/LoadRemark.h"
#include "tests/session/QuietShell.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"
#include "view/ViewCommands.h"

#include <gtest/gtest.h>

namespace belvor {
namespace {

using test::QuietShell;
using test::TempFile;

/// Hands over what the requests lead to, at once; calls `meanwhile` at report number `at` of each request.
class HandingHost : public FakeHost {
public:
    void progressMade(Progress& progress) override
    {
        progress.updatePending();
        progress.updateDone();
        if (reports++ == at) meanwhile();
    }
    void modelLoaded(std::uint32_t load, Model* model) override
    {
        session->loading().modelLoaded(load, model);
    }
    void imageEnded(std::uint32_t save, bool whole) override
    {
        wholeImages += whole;
        session->saving().imageEnded(save, whole);
    }
    Session* session = nullptr;
    int wholeImages = 0, at = -1, reports = 0;
    std::function<void()> meanwhile;
};

class SessionCommands : public testing::Test {
protected:
    SessionCommands()
    {
        host->session = &session;
        load(box.path());
    }

    void runRequests()
    {
        for (bool failed; shell.runNext(host, failed);) host->reports = 0;
    }
    void load(const std::string& path)
    {
        session.loading().openFile(path);
        runRequests();
        EXPECT_TRUE(session.model());
    }
    void command(int id) { EXPECT_TRUE(runCommand(session, id)) << id; }
    double zoom() const { return session.view().zoom; }

    const TempFile box{"box.thf", test::boxText};
    QuietShell shell;
    Handle<HandingHost> host = makeHandle<HandingHost>();
    Session session{shell, host};
};

}   // namespace

TEST_F(SessionCommands, UndoAndRedoGoThroughTheViewsAndAreChangesThemselves)
{
    const double first = zoom();
    command(ID_UNDO);
    command(ID_INCREASEZOOM);
    const double second = zoom();
    command(ID_STANDARDVIEW + 1);
    EXPECT_TRUE(session.view().parallel);
    using Step = std::pair<int, double>;
    for (const auto& [id, wanted] : {Step{ID_UNDO, second}, Step{ID_UNDO, first}, Step{ID_UNDO, first},
                                     Step{ID_REDO, second}, Step{ID_PREVIOUSVIEW, first}}) {
        command(id);
        EXPECT_EQ(zoom(), wanted) << id;
    }
    EXPECT_FALSE(available(*commandOf(ID_REDO), session)) << "another change came";
    session.joinChanges(true);
    for (int i = 0; i < 5; ++i) command(ID_INCREASEZOOM);
    session.joinChanges(false);
    command(ID_UNDO);
    EXPECT_EQ(zoom(), first) << "joined changes are one";
}

TEST_F(SessionCommands, ReadAgainKeepsTheViewInTheModel)
{
    command(ID_STANDARDVIEW);
    const ModelPlace before = session.place();
    const ViewParameters view = session.view();
    command(ID_RELOAD);
    runRequests();
    EXPECT_EQ(session.view(), view) << "an unchanged file: to the bit";
    std::string larger = test::boxText;
    larger.replace(larger.find("2 4 6"), 5, "8 9 7");
    box.write(larger);
    session.fileChanged();
    EXPECT_TRUE(shell.remark.find("box.thf has changed") != std::string::npos) << shell.remark;
    command(ID_RELOAD);
    runRequests();
    EXPECT_NE(session.place().radius, before.radius);
    const Point<3> eye = session.place().viewToModel()(session.view().eye);
    EXPECT_NEAR((eye - before.viewToModel()(view.eye)).length(), 0, 1e-9);
    EXPECT_NEAR(zoom() * session.place().radius, view.zoom * before.radius, 1e-12);
    command(ID_UNDO);
    EXPECT_NE(zoom(), view.zoom) << "the views before are there too";
}

TEST_F(SessionCommands, AYesAboutAModelThatHasGoneMeanwhileSavesNothing)
{
    const TempFile image("image.omb", "old");
    const Handle<Model> other = session.model();
    load(box.path());
    command(ID_INCREASEZOOM);
    shell.chosen = ChosenFile{image.path(), 1};
    shell.answer = [&] {
        session.takeModel(other, box.path());
        return SaveAnswer::yes;
    };
    EXPECT_FALSE(session.saving().querySave());
    EXPECT_FALSE(session.saving().running());
}

TEST_F(SessionCommands, EscapeStopsALoadASaveAndFullScreenAtAnyMoment)
{
    const TempFile image("image.omb", "old");
    const Handle<Model> model = session.model();
    shell.chosen = ChosenFile{image.path(), 1};
    int stopped = 0, whole = 0;
    host->meanwhile = [&] { command(ID_STOP); };
    for (int report = 0; report < 20; ++report) {
        SCOPED_TRACE(report);
        host->at = report;
        session.loading().openFile(box.path());
        EXPECT_TRUE(session.loading().running());
        runRequests();
        EXPECT_FALSE(session.loading().running());
        stopped += session.model() == model;
        session.takeModel(model, box.path());

        image.write("old");
        host->wholeImages = 0;
        command(ID_SAVEAS);
        runRequests();
        EXPECT_FALSE(session.saving().running());
        EXPECT_EQ(image.bytes() == "old", host->wholeImages == 0) << "the file as it was, or the new one";
        EXPECT_EQ(session.view().imageSaved, host->wholeImages == 1);
        whole += host->wholeImages;
    }
    EXPECT_GT(stopped, 0);
    EXPECT_LT(whole, 20);
    shell.fullScreen = true;
    command(ID_STOP);
    EXPECT_FALSE(shell.fullScreen);
}

TEST_F(SessionCommands, TheEndingOfAnImageChoosesItsFormatAndEdgesAreDrawn)
{
    const auto saved = [this](int id) {
        command(id);
        runRequests();
        std::string bytes;
        EXPECT_TRUE(readWholeFile(shell.chosen->path, bytes));
        return bytes;
    };
    const test::TempFolder folder;
    for (const auto& [name, start] : {std::pair{"a.png", "\x89PNG"}, {"a.svg", "<?xml"}, {"a.omb", "II"}}) {
        shell.chosen = ChosenFile{folder.in(name), 1};
        const std::string bytes = saved(ID_SAVEAS);
        EXPECT_TRUE(bytes.starts_with(start) && session.view().imageSaved) << name << shell.status;
        const bool hasPaths = bytes.find("<path") != std::string::npos;
        EXPECT_EQ(hasPaths, name == std::string("a.svg")) << "edges though none are shown";
    }
    const std::string plain = saved(ID_SAVE);
    command(ID_EDGES);
    EXPECT_FALSE(session.view().imageSaved) << "another picture";
    EXPECT_NE(saved(ID_SAVE), plain);
}

TEST_F(SessionCommands, ADrawingSaysWhatWasNotDrawnAndTheOtherReadingReadsItAgain)
{
    const TempFile file("drawing.dxf", test::drawingText(test::faceEntity + test::lineEntity));
    load(file.path());
    EXPECT_EQ(shell.remark, "1 of 2 entities not drawn");
    EXPECT_EQ(accountTable(session.loading().account()), "LINE\tno surface\t1\r\n");
    const ViewParameters view = session.view();
    command(ID_MODERNREADING);
    EXPECT_TRUE(session.loading().running());
    EXPECT_EQ(shell.settings, 1);
    EXPECT_TRUE(commandOf(ID_MODERNREADING)->isOn(session));
    runRequests();
    EXPECT_EQ(session.view(), view);
    command(ID_MODERNREADING);
    runRequests();
    session.loading().refused("Bad");
    EXPECT_TRUE(shell.status.starts_with("Bad; ")) << shell.status;
}

TEST_F(SessionCommands, LinesAreReadWhenTheyAreToBeShown)
{
    const TempFile mixed("mixed.dxf", test::drawingText(test::faceEntity + test::lineEntity)),
        only("only.dxf", test::drawingText(test::lineEntity));
    load(mixed.path());
    const ViewParameters view = session.view();
    const auto showLines = [&] {
        command(ID_LINES);
        runRequests();
        return session.model()->curveCount();
    };
    EXPECT_EQ(showLines(), 1u);
    EXPECT_TRUE(shell.remark.empty()) << shell.remark;
    EXPECT_EQ(showLines(), 0u);
    EXPECT_EQ(session.view(), view) << "the surfaces stay where they are";
    load(only.path());
    EXPECT_EQ(shell.remark, textOf(Text::linesRemark));
    EXPECT_EQ(showLines(), 1u);
    EXPECT_GT(session.place().radius, 0.5) << "of the lines";
    EXPECT_EQ(session.view(), wholeModel(session.view(), session.imageSize()));
}

TEST(LoadRemark, TellsWhatIsMissingAndWhyNothingIsDrawn)
{
    Account none, lines, off, repaired, frozen, meshes, texts;
    lines.entity("LINE").read = lines.entity("LINE").skippedFor(SkipReason::noSurface) = 1240;
    lines.entity("3DFACE").read = lines.entity("3DFACE").drawn = 1770;
    off.warn("everything is off");
    repaired.repair(7, "POLYLINE", "left out");
    const auto skip = [](Account& account, const char* type, SkipReason why, unsigned count) {
        account.entity(type).read += account.entity(type).skippedFor(why) = count;
    };
    for (Account* const account : {&frozen, &meshes, &texts})
        skip(*account, "TEXT", SkipReason::typeNotDrawn, 9);
    skip(frozen, "SOLID", SkipReason::layerFrozen, 2);
    skip(frozen, "INSERT", SkipReason::noSurface, 5);
    skip(meshes, "MESH", SkipReason::typeNotDrawn, 1);
    const Handle<Model> full = test::thingsModel(test::boxText), empty = makeHandle<Model>();
    const ReadingOptions strict, curves{.curves = true}, modern{.rules = ReadingRules::modern};
    const std::tuple<const Account&, const Model&, const ReadingOptions&, const char*> cases[] = {
        {none, *full, strict, ""},
        {lines, *full, strict, "1,240 of 3,010 entities not drawn"},
        {repaired, *full, strict, "Damaged records: 1"},
        {off, *full, strict, "everything is off"},
        {none, *empty, strict, "Nothing is drawn: the file holds no surfaces"},
        {lines, *empty, strict, textOf(Text::linesRemark)},
        {lines, *empty, curves, "Nothing is drawn: 1,240 of 3,010 entities: no surface (LINE)"},
        {off, *empty, strict, "Nothing is drawn: everything is off"},
        {texts, *empty, strict, "Nothing is drawn: 9 of 9 entities: type not drawn (TEXT)"},
        {frozen, *empty, strict, "Nothing is drawn: 2 of 16 entities: layer frozen (SOLID)"},
        {meshes, *empty, strict,
         "Nothing is drawn: 1 of 10 entities: type not drawn (MESH); File > Modern DXF Reading draws them"},
        {meshes, *empty, modern, "Nothing is drawn: 9 of 10 entities: type not drawn (TEXT)"},
    };
    for (const auto& [account, model, options, text] : cases)
        EXPECT_EQ(loadRemark(account, model, options), text);
    EXPECT_EQ(groupedNumber(999), "999");
}

}   // namespace belvor
