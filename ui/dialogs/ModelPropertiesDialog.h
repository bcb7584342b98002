#pragma once

#include "ui/dialogs/ModelFacts.h"
#include "ui/dialogs/ModelessDialog.h"
#include "ui/dialogs/NumberMarks.h"

#include <functional>
#include <optional>
#include <string>

namespace belvor {

/// Shows the size of the loaded model and lets the user set its units and scale.
class ModelPropertiesDialog : public ModelessDialog {
public:
    /// Takes what the user applies, for the model that is loaded then.
    using Apply = std::function<void(const Units&)>;

    /// Opens it over the main window, or brings the open one to the front. `facts` are those
    /// of the loaded model, none when there is no model. Throws Win32Error.
    void open(HWND owner, const std::optional<ModelFacts>& facts, Apply applyUnits);
    /// Call when another model has been loaded: an open dialog shows that one from now on.
    void modelChanged(const ModelFacts& facts);

private:
    void initialise() override;
    void command(int control, int notification) override;
    void apply() override;
    void fill();
    void showScaled(double scale);
    void showAccount();
    HBRUSH fieldBackground(HDC dc, HWND field) override { return marks.brush(dc, field); }
    double scale() const;

    std::optional<ModelFacts> model;
    Apply setUnits;
    std::string centreFormat, countFormat, memoryFormat;
    std::string decimalPoint;
    std::string initialScale;   // the text of the stored scale
    NumberMarks marks;
};

}   // namespace belvor
