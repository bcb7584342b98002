#include "ui/dialogs/ModelPropertiesDialog.h"

#include "resources/ids.h"
#include "ui/UserLocale.h"
#include "ui/dialogs/DialogItems.h"
#include "ui/dialogs/NumberText.h"

#include <utility>

namespace belvor {

void ModelPropertiesDialog::open(HWND owner, const std::optional<ModelFacts>& facts, Apply applyUnits)
{
    if (!window()) {
        model = facts;
        setUnits = std::move(applyUnits);
    }
    ModelessDialog::open(owner, ID_PROPERTIESDIALOG);
}

void ModelPropertiesDialog::modelChanged(const ModelFacts& facts)
{
    if (!window()) return;
    model = facts;
    fill();
}

void ModelPropertiesDialog::initialise()
{
    decimalPoint = userDecimalPoint();
    countFormat = itemText(window(), ID_VERTEXCOUNT);
    memoryFormat = itemText(window(), ID_VERTEXMEMORY);
    centreFormat = itemText(window(), ID_CENTRE, 128);
    fill();
    focusField(window(), ID_SCALE);
}

void ModelPropertiesDialog::fill()
{
    if (!model) return;
    setItemText(window(), ID_MODELNAME, model->path);
    const auto show = [&](int control, const std::string& format, std::uint32_t number) {
        setItemText(window(), control, filled(format, {std::to_string(number)}));
    };
    show(ID_VERTEXCOUNT, countFormat, model->counts.vertices);
    show(ID_VERTEXMEMORY, memoryFormat, vertexMemoryKB(model->counts.vertices));
    show(ID_EDGECOUNT, countFormat, model->counts.edges);
    show(ID_EDGEMEMORY, memoryFormat, edgeMemoryKB(model->counts.edges));
    show(ID_FACETCOUNT, countFormat, model->counts.facets);
    show(ID_FACETMEMORY, memoryFormat, facetMemoryKB(model->counts.facets));
    show(ID_MATERIALCOUNT, countFormat, model->counts.materials);
    initialScale = shownNumber(model->units.scale, decimalPoint);
    setItemText(window(), ID_SCALE, initialScale);
    CheckRadioButton(window(), ID_UNITS, ID_UNITSLAST, ID_UNITS + static_cast<int>(model->units.code));
    showScaled(model->units.scale);
}

void ModelPropertiesDialog::command(int control, int notification)
{
    if (control == ID_SCALE && notification == EN_CHANGE && model) showScaled(scale());
    if (control >= ID_UNITS && control <= ID_UNITSLAST && choosesRadio(notification))
        CheckRadioButton(window(), ID_UNITS, ID_UNITSLAST, control);
}

void ModelPropertiesDialog::showScaled(double scale)
{
    setItemText(window(), ID_CENTRE, centreText(centreFormat, model->centre, scale, decimalPoint));
    setItemText(window(), ID_RADIUS, shownNumber(model->radius * scale, decimalPoint));
}

double ModelPropertiesDialog::scale() const
{
    return scaleOf(model->units.scale, initialScale, itemText(window(), ID_SCALE, longestNumber),
                   decimalPoint);
}

void ModelPropertiesDialog::apply()
{
    if (!model) return;
    for (int button = ID_UNITS; button <= ID_UNITSLAST; ++button) {
        if (IsDlgButtonChecked(window(), button) != BST_CHECKED) continue;
        model->units = {scale(), static_cast<std::uint32_t>(button - ID_UNITS)};
        initialScale = itemText(window(), ID_SCALE, longestNumber);
        setUnits(model->units);
        return;
    }
}

}   // namespace belvor
