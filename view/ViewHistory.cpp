#include "view/ViewHistory.h"

namespace belvor {

bool ViewHistory::show(const ViewParameters& next) { return show(next, 0); }

bool ViewHistory::show(const ViewParameters& next, std::uint32_t number)
{
    if (next == now || !next.finite()) return false;
    const ViewParameters shown = next;   // NOLINT(*-copy-initialization): `next` may be the view before
    if (number == 0 || number != gesture) before = now;
    now = shown;
    gesture = number;
    return true;
}

void ViewHistory::begin(const ViewParameters& first)
{
    now = first;
    gesture = 0;
    now.imageSaved = false;
    before = now;
}

void ViewHistory::mark(const ViewParameters& view, bool saved) noexcept
{
    for (ViewParameters* const record : {&now, &before})
        if (*record == view) record->imageSaved = saved;
}

}   // namespace belvor
