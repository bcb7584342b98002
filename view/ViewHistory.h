#pragma once

#include "view/ViewParameters.h"

namespace belvor {

/// The view that is shown and the one before it.
class ViewHistory {
public:
    const ViewParameters& current() const noexcept { return now; }
    const ViewParameters& previous() const noexcept { return before; }

    /// Shows `next`. False, and nothing has changed, when it is the view that is shown
    /// already or one that cannot be shown.
    bool show(const ViewParameters& next);
    /// Shows the first view of a new model: there is none before it, and it is not saved.
    void begin(const ViewParameters& first);
    /// The picture of the current view is in the image file.
    void markSaved() noexcept { now.imageSaved = true; }

private:
    ViewParameters now = freshView(), before;
};

}   // namespace belvor
