#pragma once

#include "calcore/Extent.h"
#include "view/SceneBuilder.h"
#include "view/StandardViews.h"
#include "view/ViewParameters.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace belvor {

struct Options;
class Reporter;

/// A file of another kind where a parameter file is wanted, or one that does not fit the model: a picture of
/// another view would mislead.
class BadView : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Single numbers that the command line sets in every view, in the units of a parameter file.
struct ViewChanges {
    std::optional<Point<3>> eye, lookAt;
    std::optional<double> zoom, sky, ground;
    std::optional<bool> parallel;
    std::array<std::optional<ParallelLightSetting>, 5> lights;
    std::optional<double> unitsPerPixel;   ///< Sets the zoom of a parallel view.
};

/// A view of the command line: the whole model, a standard view, or a parameter file.
struct ChosenView {
    std::string name;                       ///< That templates use.
    std::optional<StandardView> standard;   ///< Without one and without a file: the whole model.
    std::string file, bytes;                ///< The parameter file and what it holds.
};

/// The views in the order given, at least one; their files are not read yet.
std::vector<ChosenView> chosenViews(const std::vector<std::string>& given);

/// Reads the parameter files. Throws FileError, BadView, Reporter::Abandoned, and Usage when a scale is asked
/// for in a view that is not parallel.
void readViews(std::vector<ChosenView>& views, const ViewChanges& changes, Reporter& reporter);

/// The view for a model that lies at `place`, in `box`. Tells what was read past in the file, unless `quiet`.
/// Throws BadView.
ViewParameters viewFor(const ChosenView& choice, const ViewChanges& changes, const Extent<3>& box,
                       const ModelPlace& place, const ImageSize& size, bool quiet);

}   // namespace belvor
