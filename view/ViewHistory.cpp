#include "view/ViewHistory.h"

#include <algorithm>
#include <utility>

namespace belvor {
namespace {

void remember(std::deque<ViewParameters>& views, const ViewParameters& view)
{
    if (views.size() == ViewHistory::depth) views.pop_front();
    views.push_back(view);
}

}   // namespace

bool ViewHistory::show(const ViewParameters& next) { return show(next, 0); }

bool ViewHistory::show(const ViewParameters& next, std::uint32_t number)
{
    if (next == now || !next.finite()) return false;
    const ViewParameters shown = next;   // NOLINT(*-copy-initialization): `next` may be the view before
    if (number == 0 || number != gesture) {
        before = now;
        remember(undoable, now);
    }
    redoable.clear();
    now = shown;
    gesture = number;
    return true;
}

bool ViewHistory::step(Views& from, Views& to)
{
    // A gesture that came back to its beginning left a view that is shown already.
    while (!from.empty() && from.back() == now) from.pop_back();
    if (from.empty()) return false;
    remember(to, now);
    before = std::exchange(now, from.back());
    from.pop_back();
    gesture = 0;
    return true;
}

bool ViewHistory::leadsOn(const Views& views) const noexcept
{
    return std::any_of(views.begin(), views.end(), [&](const ViewParameters& view) { return view != now; });
}

void ViewHistory::begin(const ViewParameters& first)
{
    now = first;
    gesture = 0;
    now.imageSaved = false;
    before = now;
    undoable.clear();
    redoable.clear();
}

template <class Action>
void ViewHistory::forEach(Action action)
{
    action(now);
    action(before);
    for (Views* const views : {&undoable, &redoable})
        for (ViewParameters& record : *views) action(record);
}

void ViewHistory::mapViews(const std::function<ViewParameters(const ViewParameters&)>& map)
{
    gesture = 0;
    forEach([&](ViewParameters& record) {
        record = map(record);
        record.imageSaved = false;
    });
}

void ViewHistory::markAllUnsaved() noexcept
{
    forEach([](ViewParameters& record) { record.imageSaved = false; });
}

void ViewHistory::mark(const ViewParameters& view, bool saved) noexcept
{
    forEach([&](ViewParameters& record) {
        if (record == view) record.imageSaved = saved;
    });
}

}   // namespace belvor
