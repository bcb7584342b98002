#include "app/Dialogs.h"

#include "session/LoadRemark.h"

namespace belvor {
namespace {

ModelFacts factsOf(const Session& session)
{
    ModelFacts facts{session.modelPath(),    {}, session.model()->units(), session.place().centre,
                     session.place().radius, {}};
    session.model()->statistics(facts.counts);
    facts.account = accountTable(session.loading().account());
    return facts;
}

}   // namespace

void Dialogs::showProperties()
{
    std::optional<ModelFacts> facts;
    if (session.model()) facts = factsOf(session);
    properties.open(window, facts, [this](const Units& units) { session.setUnits(units); });
}

void Dialogs::modelChanged()
{
    if (properties.window()) properties.modelChanged(factsOf(session));
}

}   // namespace belvor
