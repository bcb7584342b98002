#pragma once

#include "app/state/ViewParameters.h"
#include "tests/window/WindowTest.h"

#include <cmath>

namespace belvor::window {

/// Tests that set the view of the box model by hand and read back what became of it.
class BoxViewTest : public WindowTest {
protected:
    static constexpr double x = 2, y = 1.5, z = 1;   // the middle of the box
    static double radius() { return std::sqrt(x * x + y * y + z * z); }

    /// The program's view now. Six digits survive the file.
    ViewParameters view()
    {
        const std::string path = inFolder("view.bvp");
        writeFile(path, savedParameters());
        ViewParameters record;
        if (!record.read(path, {x, y, z}, radius())) throw Failure("no parameter file");
        return record;
    }
    /// Makes the program show that view, and waits until the picture is there.
    void show(const ViewParameters& record)
    {
        const std::string path = inFolder("shown.bvp");
        record.write(path, {x, y, z}, radius());
        loadParameters(path);
        EXPECT_EQ(awaitPicture(rendered(boxModel(), path)), "");
    }

    static void expectPoint(const Point<3>& is, double wantedX, double wantedY, double wantedZ, const char* why)
    {
        EXPECT_NEAR(is[0], wantedX, 2e-5) << why;
        EXPECT_NEAR(is[1], wantedY, 2e-5) << why;
        EXPECT_NEAR(is[2], wantedZ, 2e-5) << why;
    }
};

}   // namespace belvor::window
