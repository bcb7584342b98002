#pragma once

#include "platform/Handle.h"
#include "render/Frame.h"
#include "render/Outlines.h"

#include <optional>

namespace belvor {

/// Which lines a picture shows over the surfaces.
struct ShownLines {
    bool curves = false;   ///< The lines and curves of the model.
    bool edges = false;    ///< The outlines of its surfaces.
    bool any() const noexcept { return curves || edges; }
    friend bool operator==(const ShownLines&, const ShownLines&) noexcept = default;
};

/// What the renders of one model with lines keep from one to the next: its outlines are found once.
/// Used by the render thread only.
class LineDrawing : public TSHandlable {
public:
    /// Draws `model`, always the same one, as Frame::render does. `trace`, if any, takes the parts of the
    /// lines that show; they stay until the next render.
    void render(const Model& model, const Camera& camera, const LightSet& lighting, Buffer& buffer,
                Reporter& progress, const ShownLines& lines, LineTrace* trace);

private:
    Frame frame;
    std::optional<Outlines> outlines;
};

}   // namespace belvor
