#pragma once

#include "view/ViewParameters.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>

namespace belvor {

/// The view that is shown, the one before it, and those that undo and redo lead to.
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

    static constexpr std::size_t depth = 100;
    /// Shows the view before the latest change that has not been undone; false when there is none.
    /// For previous() this is a change like others.
    bool undo() { return step(undoable, redoable); }
    /// Shows the view that was undone last; false when there is none, or another change came since.
    bool redo() { return step(redoable, undoable); }
    bool canUndo() const noexcept { return leadsOn(undoable); }
    bool canRedo() const noexcept { return leadsOn(redoable); }

    /// Shows the first view of a new model: there is none before it, and it is not saved.
    void begin(const ViewParameters& first);
    /// The model was read again: every view becomes what `map` makes of it, and none is saved.
    void mapViews(const std::function<ViewParameters(const ViewParameters&)>& map);
    /// The picture of `view` is in the image file.
    void markSaved(const ViewParameters& view) noexcept { mark(view, true); }
    /// It is not, after all.
    void markUnsaved(const ViewParameters& view) noexcept { mark(view, false); }
    /// No view is in the image file as it would be drawn now.
    void markAllUnsaved() noexcept;

private:
    using Views = std::deque<ViewParameters>;

    bool step(Views& from, Views& to);
    bool leadsOn(const Views& views) const noexcept;
    void mark(const ViewParameters& view, bool saved) noexcept;
    template <class Action>
    void forEach(Action action);

    ViewParameters now = freshView(), before;
    Views undoable, redoable;    // the last one is the next to show
    std::uint32_t gesture = 0;   // that made the latest change; 0 for none
};

}   // namespace belvor
