#include "platform/Files.h"
#include "account/Account.h"
#include "errors/BadFile.h"
#include "fuzz/DrawSmall.h"
#include "readers/ModelFile.h"
#include "readers/dxf/DXF.h"
#include "readers/man/ManFile.h"
#include "tests/support/FailingAllocation.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>

using namespace belvor;

namespace {

const std::string root = BELVOR_SOURCE_DIR;

}   // namespace

/// Every input kept from fuzz runs is read and drawn, refused with the line of its fault, or abandoned.
TEST(Corpus, EveryModelIsReadOrRefused)
{
    const std::tuple<const char*, FileType, ReadingOptions, int> cases[] = {
        {"things", FileType::things, {}, 3},
        {"dxf", FileType::dxf, {}, 10},
        {"dxf", FileType::dxf, {.rules = ReadingRules::modern, .curves = true}, 10},
        {"man", FileType::man, {}, 2}};
    for (const auto& [folder, type, options, wantedDrawn] : cases) {
        int drawn = 0;
        for (const auto& entry : std::filesystem::directory_iterator(root + "/fuzz/corpus/" + folder)) {
            const std::string path = entry.path().string();
            test::RecordingReporter patience(1000);
            try {
                const Handle<Model> model = readModel(path, type, patience, options).model;
                for (std::uint32_t i = 0; type == FileType::dxf && i < model->facetCount(); ++i)
                    EXPECT_NEAR(model->facet(i).plane.normal().length(), 1.0, 1e-9)
                        << path << ", facet " << i;
                if (model->facetCount() < 2000 && model->curvePointCount() < 20000) drawSmall(*model);
                drawn += model->facetCount() > 0;
            } catch (const BadFile& fault) {
                EXPECT_TRUE(fault.line() >= 1 || type == FileType::things
                            || options.rules == ReadingRules::modern)
                    << path;   // the modern reading refuses a file as a whole
            } catch (const Reporter::Abandoned&) {}
        }
        EXPECT_GT(drawn, wantedDrawn) << folder;
    }
}

TEST(Corpus, EveryViewIsReadOrRefused)
{
    int accepted = 0;
    for (const auto& entry : std::filesystem::directory_iterator(root + "/fuzz/corpus/bvp"))
        accepted += ViewParameters().read(entry.path().string(), {1, 2, 3}, 4);
    EXPECT_GT(accepted, 1);
}

/// A file may be cut anywhere, in a download or on a full disk; and bytes change.
TEST(Corpus, EveryCutAndManyFlippedBytesAreReadOrRefused)
{
    const auto read = [](const std::string& path, std::string_view bytes, Reporter& reporter) {
        Account account;
        if (path.starts_with("man")) ManFile(bytes, "a.file", reporter);
        else DXF(bytes, "a.file", reporter, {.curves = true}, account);
    };
    std::mt19937 random(1);
    for (const std::string path : {"dxf/blocks.text", "dxf/blocks.binary", "dxf/blocks.wide",
                                   "dxf/lwpolyline.text", "dxf/lwpolyline.binary", "dxf/curves.text",
                                   "dxf/hatch.text", "dxf/polyface.text", "dxf/polyface.wide", "man/star"}) {
        std::string whole;
        ASSERT_TRUE(readWholeFile(root + "/fuzz/corpus/" + path, whole));
        SilentReporter silent;
        read(path, whole, silent);
        for (std::size_t i = 0; i < whole.size() + 200; ++i) {
            std::string damaged = whole.substr(0, i);
            for (int flips = 0; i >= whole.size() && flips < 3; ++flips)
                damaged[random() % damaged.size()] = static_cast<char>(random());
            // Of its exact size: the address sanitizer sees a read beyond it.
            const std::unique_ptr<char[]> exact(new char[damaged.size()]);
            std::copy(damaged.begin(), damaged.end(), exact.get());
            test::RecordingReporter patience(500);
            try {
                read(path, {exact.get(), damaged.size()}, patience);
            } catch (const BadFile& fault) {
                EXPECT_EQ(fault.file(), "a.file") << path;
            } catch (const Reporter::Abandoned&) {}
        }
    }
}

TEST(Readers, ReportAnyFailedAllocation)
{
    const std::tuple<const char*, bool, std::size_t> cases[] = {
        {"samples/letters.thf", false, 10},
        {"samples/dxf/every-entity.dxf", false, 200},
        {"samples/dxf/every-entity.dxf", true, 200},
        {"fuzz/corpus/dxf/polyface.binary", false, 10},
        {"samples/man/star.man", false, 10}};
    for (const auto& [name, modern, wantedFailures] : cases) {
        const std::string path = root + "/" + name;
        const FileType type = name[0] == 'f' ? FileType::dxf : fileTypeOf(path);
        const ReadingOptions options{.rules = modern ? ReadingRules::modern : ReadingRules::strict};
        std::size_t failures = 0;
        for (bool failed = true; failed; ++failures) {
            const test::FailingAllocation failing(failures);
            SilentReporter silent;
            try {
                EXPECT_GT(readModel(path, type, silent, options).model->facetCount(), 0u) << path;
            } catch (const std::bad_alloc&) {
                EXPECT_TRUE(failing.failed()) << path;
            }
            failed = failing.failed();
        }
        EXPECT_GT(failures, wantedFailures) << path;
    }
}

TEST(Samples, HaveTheirKnownCountsAndReportsAndStopAtOnceWhenAsked)
{
    // Columns: name, facets, materials, the last report, whether reports go back, as with blocks. Things
    // count what they have read; the others tell the share of the bytes, in one stage.
    const std::tuple<const char*, std::uint32_t, std::size_t, double, bool> cases[] = {
        {"teapot.thf", 992, 1, 0.983870967741935, false},
        {"dxf/every-entity.dxf", 422, 6, 0.999, true},
        {"dxf/village.dxf", 1545, 4, 0.9963, true},   // none of the frozen layer, none of what is off
        {"dxf/others/PinkEggFromLW.dxf", 288, 1, 0.999, false},
        {"dxf/others/BlockClippedBasicTransform.dxf", 6, 1, 0.999, true},
        {"man/lighthouse.man", 88, 5, 1.0, false},
    };
    for (const auto& [name, facets, materials, last, goBack] : cases) {
        const std::string path = root + "/samples/" + name;
        test::RecordingReporter patient;
        const Handle<Model> model = readModel(path, fileTypeOf(path), patient).model;
        EXPECT_EQ(std::pair(model->facetCount(), model->materials().size()), std::pair(facets, materials))
            << name;
        EXPECT_NE(std::is_sorted(patient.calls.begin(), patient.calls.end()), goBack) << path;
        EXPECT_NEAR(std::get<2>(patient.calls.front()), 0.0, 0.02) << path;
        EXPECT_EQ(std::get<0>(patient.calls.back()), last < 0.99 ? 0 : 1) << path;
        EXPECT_NEAR(std::get<2>(patient.calls.back()), last, 0.001) << path;
        for (const std::size_t stop : {std::size_t{0}, patient.calls.size() / 2, patient.calls.size() - 1}) {
            test::RecordingReporter impatient(stop);
            EXPECT_THROW(readModel(path, fileTypeOf(path), impatient), Reporter::Abandoned)
                << path << ", call " << stop;
            EXPECT_EQ(impatient.calls.size(), stop + 1) << path;
        }
    }
}

/// A reading is stopped at a report, so every long file must report often.
TEST(ModelFile, LongRecordsAndListsReportProgressRepeatedly)
{
    constexpr int many = 100000;
    const auto repeated = [](const std::string& text, int times = 100000) {
        std::string all;
        for (int i = 0; i < times; ++i) all += text;
        return all;
    };
    const std::string triangle = "Y 3 0 0 0 1 0 0 0 1 0 ", man = "KRVT v5.1.0 MAN file\n",
                      section = "0\nSECTION\n2\nENTITIES\n", count = std::to_string(many);
    // Columns: why, type, text, reports.
    const std::tuple<const char*, FileType, std::string, std::size_t> cases[] = {
        {"loops", FileType::things, triangle + "0 " + count + ' ' + count + " A\n" + repeated("1 1 "), 10},
        {"line ends of two characters", FileType::things, repeated("\r\n@", 30 * many) + "N", 2},
        {"comments", FileType::man, man + repeated("# no record\n") + "END\n", 20},
        {"a facet of many sides", FileType::man,
         man + "END\nCLUMP a 2 1\n0 0 0\n1 0 0\npaint\nEDGE 200000\n" + repeated("1 2 1 0\n2 1 1 0\n"),
         200000 / 256 + 8},
        {"a record of many groups: they are read, and moved when they need more room", FileType::dxf,
         section + "0\nTEXT\n" + repeated("1\nx\n"), 2 * many / 8192 - 4},
        {"a polyline of many vertices", FileType::dxf,
         section + "0\nLWPOLYLINE\n39\n1\n" + repeated("10\n1\n20\n2\n10\n3\n20\n4\n"),
         400000 / 8192 + 3 * 200000 / 4096},
    };
    for (const auto& [why, type, text, reports] : cases) {
        const test::TempFile file("long.model", text);
        test::RecordingReporter patient;
        readModel(file.path(), type, patient);
        EXPECT_GE(patient.calls.size(), reports) << why;
        test::RecordingReporter impatient(patient.calls.size() - 1);
        EXPECT_THROW(readModel(file.path(), type, impatient), Reporter::Abandoned) << why;
    }
}
