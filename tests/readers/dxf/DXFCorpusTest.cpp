#include "app/errors/BadFile.h"
#include "fuzz/DrawSmall.h"
#include "platform/Files.h"
#include "tests/readers/dxf/DXFText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using namespace belvor;
using namespace belvor::test;

/// Every input that a fuzz run found worth keeping is read, refused with a fault that tells
/// its place, or given up; what was read has bounds and draws.
TEST(DXFCorpus, IsReadOrRefused)
{
    struct Patience : Reporter {
        bool progress(int, int, double) override { return ++calls > 1000; }
        int calls = 0;
    };
    int files = 0, drawn = 0;
    for (const auto& entry : std::filesystem::directory_iterator(BELVOR_SOURCE_DIR "/fuzz/corpus/dxf")) {
        const std::string name = entry.path().filename().string();
        std::string bytes;
        ASSERT_TRUE(readWholeFile(entry.path().string(), bytes)) << name;
        ++files;
        Patience patience;
        try {
            const Handle<DXF> drawing = makeHandle<DXF>(std::string_view(bytes), name, patience);
            for (std::uint32_t i = 0; i < drawing->facetCount(); ++i)
                EXPECT_NEAR(drawing->facet(i).plane.normal().length(), 1.0, 1e-9) << name << ", facet " << i;
            if (drawing->facetCount() < 2000) drawSmall(*drawing);
            drawn += drawing->facetCount() > 0;
        } catch (const BadFile& fault) {
            EXPECT_GE(fault.line(), 1) << name;
        } catch (const Reporter::Abandoned&) {
        }
    }
    EXPECT_GT(files, 15);
    EXPECT_GT(drawn, 10);
}

TEST(DXFSamples, HaveTheirSurfaces)
{
    const struct { const char* name; std::uint32_t facets, materials; } cases[] = {
        {"every-entity", 422, 6},
        {"village", 1545, 4},       // none of the frozen layer, none of what is off
        {"others/PinkEggFromLW", 288, 1},
        {"others/threeDFaces", 12, 1},
        {"others/ae.r12b", 1, 1},
        {"others/BlockClippedBasicTransform", 6, 1},
    };
    for (const auto& c : cases) {
        SilentReporter nobody;
        const Handle<DXF> drawing = makeHandle<DXF>(std::string(BELVOR_SOURCE_DIR "/samples/dxf/") + c.name + ".dxf", nobody);
        EXPECT_EQ(drawing->facetCount(), c.facets) << c.name;
        EXPECT_EQ(drawing->materials().size(), c.materials) << c.name;
    }
}
