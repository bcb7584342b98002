#pragma once

#include "platform/win32/Windows.h"
#include "ui/dialogs/ViewFields.h"

#include <optional>

namespace belvor {

/// What the user typed into the View Parameters dialog.
struct TypedView {
    ViewFields fields;
    ViewFields::Typed typed;
    bool parallel;

    /// `current` with it. Equal to `current` when nothing was changed.
    ViewParameters applied(const ViewParameters& current) const
    {
        return fields.applied(current, typed, parallel);
    }
};

/// Runs the dialog over the main window until the user closes it; none when it is cancelled.
/// Messages are dispatched meanwhile, and another model may be loaded: apply the answer to
/// the view that is current afterwards, not to one kept from before. `lightBrush` gives the
/// brush of a light's colour by number, from 0. Throws Win32Error.
std::optional<TypedView> askViewParameters(HWND owner, const ViewFields& fields, HBRUSH (*lightBrush)(int));

}   // namespace belvor
