#include "imagefile/Pictures.h"
#include "render/Frame.h"
#include "tests/support/Models.h"

#include <gtest/gtest.h>

using namespace belvor;

// What a whole file holds is tests/picture/'s.

TEST(SvgFile, IsAbandonedSoonWhileItsLinesAreGatheredAndWritten)
{
    ModelBuilder builder;
    const Material& material = builder.findMaterial("m");
    for (int i = 0; i < 40000; ++i) {
        const int column = i % 200, row = i / 200;
        const double x = column, y = row;
        builder.addCurve(material, std::array{Point<3>(x, y, 0), Point<3>(x + 0.7, y, 0.5)});
    }
    const Handle<Model> model = builder.take();
    const ImageSize size{400, 400};
    const Scene scene = buildScene(wholeModel(freshView(), size), test::placeOf(*model), size, 400, 400);
    const test::TempFolder folder;
    const auto finish = [&](Reporter& reporter) {
        SilentReporter silent;
        const auto pictures =
            makeHandle<Pictures>(std::vector<PictureTarget>{{folder.in("p.svg"), PictureFormat::svg}}, *model,
                                 scene.camera, 400, 400);
        LineStyle lines;
        lines.curves = true;
        lines.trace = pictures->trace();
        Frame frame(Sharing{1});   // the same runs in the same order
        frame.render(*model, *scene.camera, *scene.lights, *pictures, silent, lines);
        pictures->finish(reporter);
    };
    test::RecordingReporter patient;
    finish(patient);
    ASSERT_GT(patient.calls.size(), 20u) << "every millisecond or so";
    for (const std::size_t call : {std::size_t{1}, patient.calls.size() / 2, patient.calls.size() * 3 / 4}) {
        test::RecordingReporter impatient(call);
        EXPECT_THROW(finish(impatient), Reporter::Abandoned) << call;
    }
    EXPECT_TRUE(folder.contents().empty());
}
