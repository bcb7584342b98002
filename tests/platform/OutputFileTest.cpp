#include "platform/OutputFile.h"

#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>

namespace belvor {
namespace {

namespace fs = std::filesystem;

/// A folder of its own; what it holds by name.
class OutputFolder : public testing::Test {
protected:
    OutputFolder() : folder(temporaryNameFor((fs::temp_directory_path() / "belvor-outputs").string()))
    {
        fs::create_directory(folder);
    }
    ~OutputFolder() override
    {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    std::string in(const std::string& name) const { return (folder / name).string(); }
    std::string write(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return in(name);
    }
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::directory_iterator(folder)) {
            std::string bytes = "(folder)";
            if (!entry.is_directory()) readWholeFile(entry.path().string(), bytes);
            files[entry.path().filename().string()] = bytes;
        }
        return files;
    }
    using Contents = std::map<std::string, std::string>;

    const fs::path folder;
};

void put(OutputFile& file, const char* text) { std::fputs(text, file.stream()); }

TEST_F(OutputFolder, AFileTakesItsNameWhenItIsWhole)
{
    const std::string path = write("a", "old");
    for (const bool committed : {false, true}) {
        OutputFile file(path);
        put(file, "new");
        std::string bytes;
        EXPECT_TRUE(readWholeFile(path, bytes));
        EXPECT_EQ(bytes, "old") << "while it is written";
        if (committed) file.commit();
    }
    EXPECT_EQ(contents(), (Contents{{"a", "new"}}));
    OutputFile{in("never whole")};
    OutputFile fresh(in(std::string(255, 'n')));   // a name of full length
    fresh.commit();
    EXPECT_EQ(contents(), (Contents{{"a", "new"}, {std::string(255, 'n'), ""}}));
}

TEST_F(OutputFolder, SeveralFilesTakeTheirNamesTogether)
{
    write("old", "old");
    OutputFile first(in("old")), second(in("fresh")), third(in("blocked"));
    for (OutputFile* const each : {&first, &second, &third}) put(*each, "new");
    fs::create_directory(folder / "blocked");
    std::array files{&first, &second, &third};
    const auto names = [this] {
        Contents kept = contents();
        std::erase_if(kept, [](const auto& file) { return file.first.ends_with(".part"); });
        return kept;
    };
    EXPECT_THROW(OutputFile::commit(files), OutputFile::Error);
    EXPECT_EQ(names(), (Contents{{"old", "old"}, {"blocked", "(folder)"}}));
}

TEST_F(OutputFolder, ANameIsWrittenByOneAtATime)
{
    {
        OutputFile first(in("a"));
        EXPECT_THROW(OutputFile(in("../") + folder.filename().string() + "/a"), OutputFile::Busy);
        OutputFile(in("b")).commit();
        first.commit();
        EXPECT_NO_THROW(OutputFile(in("a"))) << "its name is taken: the next may begin";
    }
    EXPECT_EQ(contents(), (Contents{{"a", ""}, {"b", ""}}));
}

TEST_F(OutputFolder, ANameThatCannotBeTakenIsRefusedAtTheBeginning)
{
    fs::create_directory(folder / "folder");
    const std::string guarded = write("guarded", "old");
    fs::permissions(guarded, fs::perms::owner_read);
    for (const std::string& path : {std::string(), in("folder"), in("nowhere/a"), in("nowhere/"), guarded})
        EXPECT_THROW(OutputFile{path}, OutputFile::Error) << path;
    EXPECT_EQ(contents(), (Contents{{"folder", "(folder)"}, {"guarded", "old"}}));
    fs::permissions(guarded, fs::perms::owner_all);   // for systems that delete no such file
}

TEST_F(OutputFolder, OneFileHasOneIdentityWhateverItsNames)
{
    write("a", "");
    write("b", "");
    fs::create_hard_link(folder / "a", folder / "hard");
    const struct {
        const char* why;
        std::string left, right;
        bool same;
    } cases[] = {
        {"the same name", "a", "a", true},        {"another spelling", "a", "./a", true},
        {"a second name", "a", "hard", true},     {"another file", "a", "b", false},
        {"no files yet", "x", "./x", true},       {"no files yet, two names", "x", "y", false},
        {"no folder", "none/x", "none/y", false}, {"a file and none", "a", "x", false},
    };
    for (const auto& c : cases) EXPECT_EQ(isSameFile(in(c.left), in(c.right)), c.same) << c.why;
    fs::current_path(fs::temp_directory_path());
    EXPECT_TRUE(isSameFile(folder.filename().string() + "/a", in("a"))) << "relative and absolute";
}

}   // namespace
}   // namespace belvor
