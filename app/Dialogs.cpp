#include "app/Dialogs.h"

#include "platform/win32/Modal.h"
#include "ui/dialogs/ViewParametersDialog.h"
#include "ui/panels/Markers.h"

namespace belvor {
namespace {

ModelFacts factsOf(const Belvor& belvor)
{
    ModelFacts facts{
        belvor.modelPath(), {}, belvor.model()->units(), belvor.place().centre, belvor.place().radius};
    belvor.model()->statistics(facts.counts);
    return facts;
}

}   // namespace

void Dialogs::showProperties()
{
    std::optional<ModelFacts> facts;
    if (belvor.model()) facts = factsOf(belvor);
    properties.open(window, facts, [this](const Units& units) {
        if (belvor.model()) belvor.model()->setUnits(units);
    });
}

void Dialogs::modelChanged()
{
    if (properties.window()) properties.modelChanged(factsOf(belvor));
}

void Dialogs::askView()
{
    if (!belvor.model()) return;
    const ViewFields fields(belvor.view(), belvor.place(), belvor.model()->units());
    const auto typed = [&] {
        const Modal modal(window);
        return askViewParameters(window, fields, lightBrush);
    }();
    if (typed) belvor.setView(typed->applied(belvor.view()));
}

}   // namespace belvor
