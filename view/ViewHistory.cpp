#include "view/ViewHistory.h"

namespace belvor {

bool ViewHistory::show(const ViewParameters& next)
{
    if (next == now || !next.finite()) return false;
    const ViewParameters shown = next;   // NOLINT(*-copy-initialization): `next` may be the view before
    before = now;
    now = shown;
    return true;
}

void ViewHistory::begin(const ViewParameters& first)
{
    now = first;
    now.imageSaved = false;
    before = now;
}

}   // namespace belvor
