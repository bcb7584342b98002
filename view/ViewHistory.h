#pragma once

#include "view/ViewParameters.h"

#include <cstdint>

namespace belvor {

/// The view that is shown and the one before it.
class ViewHistory {
public:
    const ViewParameters& current() const noexcept { return now; }
    const ViewParameters& previous() const noexcept { return before; }

    /// Shows `next`. False, and nothing has changed, when it is the view that is shown
    /// already or one that cannot be shown.
    bool show(const ViewParameters& next);
    /// The same for a step of gesture `number`, which is not 0: all steps that follow each other
    /// make one change, so the view before it is that before its first step.
    bool show(const ViewParameters& next, std::uint32_t number);
    /// Shows the first view of a new model: there is none before it, and it is not saved.
    void begin(const ViewParameters& first);
    /// The picture of `view` is in the image file.
    void markSaved(const ViewParameters& view) noexcept { mark(view, true); }
    /// It is not, after all.
    void markUnsaved(const ViewParameters& view) noexcept { mark(view, false); }

private:
    void mark(const ViewParameters& view, bool saved) noexcept;

    ViewParameters now = freshView(), before;
    std::uint32_t gesture = 0;   // that made the latest change; 0 for none
};

}   // namespace belvor
