#include "session/Commands.h"
#include "resources/ids.h"
#include "session/LoadRemark.h"
#include "tests/session/QuietShell.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"
#include "view/ViewCommands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace belvor {
namespace {

using test::drawingText;
using test::faceEntity;
using test::lineEntity;
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

/// Notes which targets get lines.
class LineNotes : public Buffer {
public:
    LineNotes(Target where, std::set<Target>& noted) : Buffer(8), target(where), withLines(noted) {}
    void lineDone(int) override
    {
        if (hasLines()) withLines.insert(target);
    }

private:
    const Target target;
    std::set<Target>& withLines;
};

class SessionCommands : public testing::Test {
protected:
    SessionCommands()
    {
        host->session = &session;
        load(box);
    }

    void runRequests()
    {
        while (shell.runNext(*host)) host->reports = 0;
    }
    void load(const TempFile& file)
    {
        session.loading().openFile(file.path());
        runRequests();
        EXPECT_TRUE(session.model());
    }
    /// Runs the command and the requests that it makes.
    void command(int id)
    {
        EXPECT_TRUE(runCommand(session, id)) << id;
        runRequests();
    }
    double zoom() const { return session.view().zoom; }

    const TempFile box{"box.thf", test::boxText};
    test::QuietShell shell;
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

TEST_F(SessionCommands, TheStandardViewsStandInTheOrderOfTheMenu)
{
    int id = ID_STANDARDVIEW;
    for (const char* const name :
         {"plan", "front", "back", "left", "right", "below", "iso-ne", "iso-nw", "iso-se", "iso-sw"}) {
        command(id++);
        EXPECT_EQ(session.view(),
                  standardView(session.view(), *standardViewNamed(name), session.model()->extent(),
                               session.place(), session.imageSize()))
            << name;
    }
}

TEST_F(SessionCommands, ReadAgainKeepsTheViewInTheModel)
{
    command(ID_STANDARDVIEW);
    const ModelPlace before = session.place();
    const ViewParameters view = session.view();
    command(ID_RELOAD);
    EXPECT_EQ(session.view(), view) << "an unchanged file: to the bit";
    std::string larger = test::boxText;
    box.write(larger.replace(larger.find("2 4 6"), 5, "8 9 7"));
    session.fileChanged();
    for (int edges = 0; edges < 2; ++edges, command(ID_EDGES))
        EXPECT_NE(shell.remark.find("box.thf has changed"), std::string::npos) << shell.remark << edges;
    command(ID_RELOAD);
    EXPECT_NE(session.place().radius, before.radius);
    const Point<3> eye = session.place().viewToModel()(session.view().eye);
    EXPECT_NEAR((eye - before.viewToModel()(view.eye)).length(), 0, 1e-9);
    EXPECT_NEAR(zoom() * session.place().radius, view.zoom * before.radius, 1e-12);
    command(ID_UNDO);
    EXPECT_NE(zoom(), view.zoom) << "the views before are there too";
}

TEST_F(SessionCommands, AYesAboutAModelThatHasGoneMeanwhileSavesNothing)
{
    const TempFile image("image.omb");
    const Handle<Model> other = session.model();
    load(box);
    command(ID_INCREASEZOOM);
    shell.chosen = ChosenFile{image.path(), 1};
    shell.answer = [&] { return session.takeModel(other, box.path()), SaveAnswer::yes; };
    EXPECT_FALSE(session.saving().querySave() || session.saving().running());
}

TEST_F(SessionCommands, NothingIsWrittenOverTheModel)
{
    const std::string folder = box.path().substr(0, box.path().find_last_of("/\\") + 1);
    for (const std::string& spelt : {box.path(), folder + "./box.thf"})
        for (const int id : {ID_SAVEAS, ID_SAVEPARAMETERS}) {
            shell.status.clear();
            shell.chosen = ChosenFile{spelt, 1};
            command(id);
            EXPECT_EQ(shell.status, filledText(Text::wouldOverwriteModel, {spelt}));
            EXPECT_EQ(box.bytes(), test::boxText);
        }
    EXPECT_FALSE(session.view().imageSaved);
    const TempFile renamed("renamed.thf");
    std::filesystem::rename(box.path(), renamed.path());
    shell.chosen = ChosenFile{renamed.path(), 1};
    command(ID_SAVEAS);
    EXPECT_TRUE(renamed.bytes() == test::boxText) << "by its new name too";
}

TEST_F(SessionCommands, NothingIsWrittenOverAModelThatIsReadOrWasShownWhenTheUserWasAsked)
{
    const TempFile other{"other.thf", test::boxText};
    for (const int id : {ID_SAVEAS, ID_SAVEPARAMETERS})
        for (const bool arrives : {false, true}) {
            SCOPED_TRACE(testing::Message() << id << (arrives ? " arrives under the dialog" : " is read"));
            load(box);
            shell.status.clear();
            const TempFile& target = arrives ? box : other;
            shell.chosen = ChosenFile{target.path(), 1};
            session.loading().openFile(other.path());
            if (arrives) shell.underDialog = [&] { runRequests(); };
            command(id);
            shell.underDialog = {};
            EXPECT_EQ(shell.status, filledText(Text::wouldOverwriteModel, {target.path()}));
            EXPECT_TRUE(box.bytes() == test::boxText && other.bytes() == test::boxText);
            EXPECT_EQ(session.modelPath(), other.path());
        }
}

TEST_F(SessionCommands, WhatTheUserSetOfAModelIsKeptWhenItIsReadAgain)
{
    const TempFile mixed("mixed.dxf", drawingText(faceEntity + lineEntity)),
        only("only.dxf", drawingText(lineEntity));
    const auto scale = [this] { return session.model()->units().scale; };
    for (const TempFile* const file : {&mixed, &only})
        for (const int id : {ID_RELOAD, ID_LINES, ID_LINES, ID_MODERNREADING}) {
            SCOPED_TRACE(testing::Message() << file->path() << ' ' << id);
            load(*file);
            session.setUnits({25.4, 3});
            command(id);
            EXPECT_EQ(scale(), 25.4);
            EXPECT_EQ(session.model()->units().code, 3u);
            load(*file);
            command(id);
            EXPECT_EQ(scale(), 1) << "opened, not read again";
        }
}

TEST_F(SessionCommands, EscapeStopsALoadASaveAndFullScreenAtAnyMoment)
{
    const TempFile image("image.omb");
    const Handle<Model> model = session.model();
    shell.chosen = ChosenFile{image.path(), 1};
    int stopped = 0, whole = 0;
    host->meanwhile = [&] { runCommand(session, ID_STOP); };
    for (host->at = 0; host->at < 20; ++host->at) {
        SCOPED_TRACE(host->at);
        load(box);
        stopped += session.model() == model;
        session.takeModel(model, box.path());

        image.write("old");
        host->wholeImages = 0;
        command(ID_SAVEAS);
        EXPECT_FALSE(session.loading().running() || session.saving().running());
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
    const auto saved = [this](const char* name) {
        const TempFile image(name);
        shell.chosen = ChosenFile{image.path(), 1};
        command(ID_SAVEAS);
        EXPECT_TRUE(session.view().imageSaved) << name << shell.status;
        return image.bytes();
    };
    for (const auto& [name, start] : {std::pair{"a.png", "\x89PNG"}, {"a.omb", "II"}})
        EXPECT_TRUE(saved(name).starts_with(start)) << name;
    EXPECT_NE(saved("a.svg").find("<path"), std::string::npos) << "edges though none are shown";
    const std::string plain = saved("a.omb");
    command(ID_EDGES);
    EXPECT_FALSE(session.view().imageSaved) << "another picture";
    EXPECT_NE(saved("a.omb"), plain);
    command(ID_INCREASEZOOM);
    command(ID_EDGES);
    command(ID_PREVIOUSVIEW);
    EXPECT_FALSE(session.view().imageSaved) << "the file shows other lines than the view before does now";
}

TEST_F(SessionCommands, ADrawingSaysWhatWasNotDrawnAndTheOtherReadingReadsItAgain)
{
    const TempFile drawing("drawing.dxf", drawingText(faceEntity + lineEntity));
    load(drawing);
    EXPECT_EQ(shell.remark, "1 of 2 entities not drawn");
    EXPECT_EQ(accountTable(session.loading().account()), "LINE\tno surface\t1\r\n");
    const ViewParameters view = session.view();
    const Handle<Model> strict = session.model();
    command(ID_MODERNREADING);
    EXPECT_TRUE(commandOf(ID_MODERNREADING)->isOn(session) && shell.settings == 1);
    EXPECT_NE(session.model(), strict);
    EXPECT_EQ(session.view(), view);
    command(ID_MODERNREADING);
    session.loading().refused("Bad");
    EXPECT_TRUE(shell.status.starts_with("Bad; ")) << shell.status;
}

TEST_F(SessionCommands, LinesAreReadWhenTheyAreToBeShown)
{
    const TempFile mixed("mixed.dxf", drawingText(faceEntity + lineEntity)),
        only("only.dxf", drawingText(lineEntity));
    std::set<Target> withLines;
    shell.sinkOf = [&](Target target) { return makeHandle<LineNotes>(target, withLines); };
    load(mixed);
    const ViewParameters view = session.view();
    const auto showLines = [&] { return command(ID_LINES), session.model()->curveCount(); };
    EXPECT_EQ(showLines(), 1u);
    EXPECT_TRUE(shell.remark.empty()) << shell.remark;
    EXPECT_EQ(withLines, std::set{Target::display}) << "thumbnails stay as they are";
    EXPECT_EQ(showLines(), 0u);
    EXPECT_EQ(session.view(), view) << "the surfaces stay where they are";
    withLines.clear();
    load(only);
    EXPECT_EQ(shell.remark, textOf(Text::linesRemark));
    EXPECT_EQ(showLines(), 1u);
    EXPECT_GT(session.place().radius, 0.5) << "of the lines";
    EXPECT_EQ(withLines, std::set{Target::display}) << "thumbnails stay as they are";
    EXPECT_EQ(session.view(), wholeModel(session.view(), session.imageSize()));
    // From then on the view is one of the lines: it is there again when they are.
    command(ID_STANDARDVIEW + 1);
    const ViewParameters chosen = session.view();
    showLines();
    EXPECT_EQ(showLines(), 1u);
    EXPECT_NEAR((session.view().eye - chosen.eye).length(), 0, 1e-9);
    EXPECT_NEAR(zoom(), chosen.zoom, 1e-9);
    EXPECT_TRUE(session.canUndo());
}

TEST_F(SessionCommands, WhatIsReadAlreadyIsNotReadAgain)
{
    const TempFile drawing("drawing.dxf", drawingText(faceEntity + lineEntity));
    for (const int id : {ID_LINES, ID_MODERNREADING}) {
        load(drawing);
        const Handle<Model> shown = session.model();
        removeFile(drawing.path());
        command(id);
        EXPECT_EQ(session.model(), shown) << "the model stays";
        const std::size_t before = host->events().size();
        command(id);
        EXPECT_EQ(host->events().size(), before) << "the same failure is told once; " << id;
        drawing.write(drawingText(faceEntity + lineEntity));
        command(id);
        EXPECT_NE(session.model(), shown) << id;
    }
}

TEST_F(SessionCommands, WhatOnlyTheModernReadingDrawsIsShownAsAWhole)
{
    const std::string hatch =
        "0\nHATCH\n8\n0\n2\nSOLID\n70\n1\n91\n1\n92\n3\n72\n0\n73\n1\n93\n3\n10\n900\n20\n"
        "0\n10\n950\n20\n0\n10\n900\n20\n70\n97\n0\n75\n0\n76\n1\n98\n0\n";
    const TempFile drawing("hatch.dxf", drawingText(hatch));
    load(drawing);
    EXPECT_EQ(session.model()->facetCount(), 0u);
    // Also when it is being read again already.
    EXPECT_TRUE(runCommand(session, ID_RELOAD));
    command(ID_MODERNREADING);
    EXPECT_NE(session.model()->facetCount(), 0u);
    EXPECT_EQ(session.view(), wholeModel(session.view(), session.imageSize()));
}

TEST(LoadRemark, TellsWhatIsMissingAndWhyNothingIsDrawn)
{
    using enum SkipReason;
    using Skipped = std::tuple<const char*, SkipReason, unsigned>;
    const auto account = [](std::initializer_list<Skipped> skipped) {
        Account result;
        for (const auto& [type, why, count] : skipped)
            result.entity(type).read += result.entity(type).skippedFor(why) = count;
        return result;
    };
    constexpr Skipped text{"TEXT", typeNotDrawn, 9};
    Account lines = account({{"LINE", noSurface, 1240}}), off, repaired;
    lines.entity("3DFACE").read = lines.entity("3DFACE").drawn = 1770;
    off.warn("everything is off");
    repaired.repair(7, "POLYLINE", "left out");
    const Account meshes = account({text, {"MESH", typeNotDrawn, 1}}),
                  frozen = account({text, {"SOLID", layerFrozen, 2}, {"INSERT", noSurface, 5}});
    const Handle<Model> full = test::thingsModel(test::boxText), empty = makeHandle<Model>();
    const ReadingOptions strict, curves{.curves = true}, modern{.rules = ReadingRules::modern};
    const std::tuple<Account, const Model&, ReadingOptions, const char*> cases[] = {
        {{}, *full, strict, ""},
        {lines, *full, strict, "1,240 of 3,010 entities not drawn"},
        {repaired, *full, strict, "Damaged records: 1"},
        {off, *full, strict, "everything is off"},
        {{}, *empty, strict, "Nothing is drawn: the file holds no surfaces"},
        {lines, *empty, strict, textOf(Text::linesRemark)},
        {lines, *empty, curves, "Nothing is drawn: 1,240 of 3,010 entities: no surface (LINE)"},
        {off, *empty, strict, "Nothing is drawn: everything is off"},
        {account({text}), *empty, strict, "Nothing is drawn: 9 of 9 entities: type not drawn (TEXT)"},
        {frozen, *empty, strict, "Nothing is drawn: 2 of 16 entities: layer frozen (SOLID)"},
        {meshes, *empty, strict,
         "Nothing is drawn: 1 of 10 entities: type not drawn (MESH); File > Modern DXF Reading draws them"},
        {meshes, *empty, modern, "Nothing is drawn: 9 of 10 entities: type not drawn (TEXT)"},
    };
    for (const auto& [found, model, options, wanted] : cases)
        EXPECT_EQ(loadRemark(found, model, options), wanted);
    EXPECT_EQ(groupedNumber(999), "999");
}

}   // namespace belvor
