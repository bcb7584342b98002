#pragma once

#include "calcore/Transform.h"
#include "scene/Camera.h"
#include "view/PanelRecords.h"
#include "view/ViewParameters.h"

#include <cstddef>

namespace belvor {

// What the user asks for in a panel or the drawing area, as a new view record. Only what
// was moved is recomputed: a request that moves nothing, cannot be met, would make a
// number infinite or put the eye on the look-at point answers the view as it was, bit for
// bit. A changed view is not saved yet.

/// Whether `next` moves the eye and the look-at point onto each other, but for rounding: then
/// there is no line of sight, and nothing in the panels could turn or move the eye away again.
bool losesSight(const ViewParameters& view, const ViewParameters& next) noexcept;

/// The eye and the look-at point dragged in the plan or elevation panel; the coordinate that
/// the panel does not show is kept.
ViewParameters moveMarkers(const ViewParameters& view, Thumbnail panel, const ViewMarkers& asked);

/// The eye or the look-at point moved along the line of sight. In parallel projection both
/// follow the look-at point.
ViewParameters moveAlongSight(const ViewParameters& view, const EyeSlideRecord& asked);

/// The eye turned about the look-at point at its distance, or a light given a new direction.
ViewParameters turn(const ViewParameters& view, const SphereMarker& asked);

/// Light `index` switched off.
ViewParameters removeLight(const ViewParameters& view, std::size_t index);

/// The look-at point moved to what is seen at a pixel of the drawing area, at the distance
/// it has. `camera` is the one that the drawing area was last drawn with.
ViewParameters lookAtPixel(const ViewParameters& view, const Camera& camera,
                           const UniformTransform<3>& viewToModel, int x, int y);

/// The field made `factor` times as wide.
ViewParameters zoomBy(const ViewParameters& view, double factor);

/// The same view of a model that now lies at `to` and was at `from`: eye, look-at point and the width of a
/// parallel field keep their places in the model.
ViewParameters movedTo(const ViewParameters& view, const ModelPlace& from, const ModelPlace& to);

/// The intensity that a slider stands for: slider 0 is the sky, 1 the ground, 2 the first
/// parallel light. Positions are clamped to 0…21. The position that shows the present
/// intensity changes nothing. A slider beyond the last light adds lights
/// that are off, up to nine of them in all; further sliders are ignored.
ViewParameters setIntensity(const ViewParameters& view, std::size_t slider, int position);

}   // namespace belvor
